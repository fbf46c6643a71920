#pragma once

#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "htmllabel/layout/Canvas.h"

namespace kavrelon {

/// Stands for "none" wherever an index into one of a flow's lists is kept.
inline constexpr std::uint32_t kNone = 0xFFFFFFFF;
/// Numbers that a document gives are cut to this many pixels, so that no sum of them overflows.
inline constexpr int kMostPixels = 32767;

enum class Align : std::uint8_t { Left, Center, Right };

/// A width as documents ask for it: pixels, a fraction of what there is, or neither.
struct Extent {
    int pixels = 0;
    float fraction = 0;
};

/// All that a piece of text needs to be placed and drawn.
struct TextStyle {
    FontId font = 0;
    Colour colour = 0;
    int ascent = 0;
    int descent = 0;
    int spaceWidth = 0;
    int rise = 0;  // of the text's baseline above its line's
    bool underline = false;

    int height() const { return ascent + descent; }
    bool operator==(const TextStyle&) const = default;
};

/// A text element: its words, of which an empty one is a gap.
struct FlowText {
    const std::string_view* words = nullptr;
    std::uint32_t count = 0;
    std::uint32_t firstWidth = 0;  // in `Flow::wordWidths`
    std::uint32_t style = 0;
    std::uint32_t mark = kNone;  // the link that it belongs to
    int gapBefore = -1;          // -1: it hangs on what stands before it
    std::int16_t element = 0;
};

struct FlowPicture {
    const Picture* picture = nullptr;  // null: a frame with the alternative text
    std::string_view alternative;
    Size size;
    int spaceX = 0;
    int spaceY = 0;
    int border = 0;
    std::uint32_t style = 0;
    std::uint32_t mark = kNone;
    int gapBefore = 0;
    std::int16_t element = 0;
    bool middle = false;  // centred on the baseline
    bool floats = false;  // at the right edge, with the text beside it

    int outerWidth() const { return size.width + 2 * (border + spaceX); }
    int outerHeight() const { return size.height + 2 * (border + spaceY); }
};

/// How lines are set from a block's start or end on.
struct FlowBlock {
    int gap = 0;  // to what stands above, unless that asks for more
    int left = 0;
    int right = 0;
    Align align = Align::Left;
};

struct FlowRule {
    Extent width;
    Align align = Align::Center;
};

/// What stands before a list item: a bullet, or a number.
struct FlowMarker {
    std::string_view number;
    Bullet bullet = Bullet::Disc;
    int width = 0;
    int gap = 0;  // the least between it and the text
    std::uint32_t style = 0;
    std::int16_t element = 0;

    int outerWidth() const { return width + gap; }
};

struct FlowColumn {
    int min = 0;
    int max = 0;
    int pixels = 0;      // asked for; 0: nothing
    float fraction = 0;  // of the table, asked for; 0: nothing
};

struct FlowCell {
    std::uint32_t next = kNone;  // in its table
    std::uint32_t row = 0;
    std::uint32_t column = 0;
    std::uint32_t span = 1;
    Extent width;
    int height = 0;  // the least, of the cell or its row
    int min = 0;     // of its content, unbreakable
    int max = 0;     // of its content, on lines of any length
    Colour background = 0;
    bool hasBackground = false;
    bool isEmpty = true;
    Align align = Align::Left;
    std::int32_t verticalAlign = 3;
};

struct FlowTable {
    std::uint32_t firstCell = kNone;
    std::uint32_t lastCell = kNone;
    std::uint32_t firstColumn = 0;
    std::uint32_t columnCount = 0;
    std::uint32_t rowCount = 0;
    Extent width;
    int height = 0;
    int border = 0;
    int padding = 0;
    int spacing = 0;
    int min = 0;
    int max = 0;
    Colour background = 0;
    bool hasBackground = false;
    Align align = Align::Left;

    /// Between a cell's edge and its content.
    int inset() const { return padding + (border > 0 ? 1 : 0); }
    /// What is no cell, across.
    int outside() const { return 2 * border + spacing * (static_cast<int>(columnCount) + 1); }
};

enum class FlowKind : std::uint8_t {
    Text,
    Picture,
    Mark,   // the place of a link or named element: index in `marks`
    Break,  // index of the style that an empty line has
    Block,
    Rule,
    Marker,  // kNone: ends the item before
    TableStart,
    CellStart,
    CellEnd,
    TableEnd,
};

struct FlowItem {
    FlowKind kind = FlowKind::Text;
    std::uint32_t index = 0;
};

/// A document made ready to be set at any width: what is to be set, in order, with everything measured.
///
/// The texts belong to the document, and those that had to be changed to the flow's own store.
struct Flow {
    std::vector<FlowItem> items;
    std::vector<FlowText> texts;
    std::vector<std::int32_t> wordWidths;
    std::vector<FlowPicture> pictures;
    std::vector<FlowBlock> blocks;
    std::vector<FlowRule> rules;
    std::vector<FlowMarker> markers;
    std::vector<FlowTable> tables;
    std::vector<FlowCell> cells;
    std::vector<FlowColumn> columns;
    std::vector<TextStyle> styles;
    std::vector<std::int16_t> marks;  // the elements whose places are wanted
    std::pmr::monotonic_buffer_resource store;
};

/// Calls `use(word, width, gap)` for each word that is drawn. `gap` is the width of the space before it, -1
/// when it hangs on what stands before it.
template <class Use>
void forEachWord(const FlowText& text, const Flow& flow, const Use& use) {
    const int space = flow.styles[text.style].spaceWidth;
    int gap = text.gapBefore;
    for (std::uint32_t i = 0; i < text.count; ++i) {
        if (i > 0 && gap < 0) gap = space;
        if (text.words[i].empty()) continue;
        use(text.words[i], flow.wordWidths[text.firstWidth + i], gap);
        gap = -1;
    }
}

}  // namespace kavrelon
