#pragma once

#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "htmllabel/layout/Canvas.h"
#include "htmllabel/layout/PixelScale.h"

namespace kavrelon {

/// "None", where an index into one of a flow's lists is kept.
inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

enum class Align : std::uint8_t { Left, Center, Right };

/// A width or height that a document asks for: pixels, a fraction of what is available, or neither.
struct Extent {
    int pixels = 0;
    float fraction = 0;
};

/// What a piece of text is placed and drawn with.
struct TextStyle {
    FontId font = 0;
    Colour colour = 0;
    int ascent = 0;
    int descent = 0;
    int spaceWidth = 0;
    int rise = 0;  // of the text's baseline above that of its line
    bool underline = false;

    int height() const { return ascent + descent; }
    bool operator==(const TextStyle&) const = default;
};

/// A text element: its words. An empty word is a gap. A word with hard spaces inside is in several pieces.
struct FlowText {
    const std::string_view* words = nullptr;
    const std::uint16_t* hardSpaces = nullptr;  // before each piece; null where there are none
    std::uint32_t count = 0;
    std::uint32_t firstWidth = 0;  // in `Flow::wordWidths`
    std::uint32_t style = 0;
    std::uint32_t mark = kNone;      // the link that it belongs to
    int gapBefore = -1;              // -1: no line may end before it
    bool hardBefore = false;         // but at a hard space, as a last resort
    std::uint32_t gapStyle = kNone;  // of the space before it, where that is underlined and no other text's
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
    bool middle = false;           // centred on the baseline
    Align floats = Align::Center;  // at this side, with the text next to it; centre: on the line

    int outerWidth() const { return size.width + 2 * (border + spaceX); }
    int outerHeight() const { return size.height + 2 * (border + spaceY); }
};

/// How lines are set from here on: a block starts or ends.
struct FlowBlock {
    int gap = 0;  // to what is above, unless that asks for more
    int left = 0;
    int right = 0;
    Align align = Align::Left;
};

struct FlowRule {
    Extent width;
    int height = 0;
    bool shaded = true;
    Align align = Align::Center;
};

/// The marker of a list item: a bullet, or a number.
struct FlowMarker {
    std::string_view number;
    Bullet bullet = Bullet::Disc;
    int width = 0;
    int gap = 0;  // to the text, at least
    std::uint32_t style = 0;
    std::int16_t element = 0;

    int outerWidth() const { return width + gap; }
};

struct FlowColumn {
    int least = 0;  // with lines ended at hard spaces
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
    Extent height;  // at least: its own or its row's
    int least = 0;  // of its content: below this width it sticks out
    int min = 0;    // of its content: below this width lines end at hard spaces
    int max = 0;    // of its content: no line is longer
    Colour background = 0;
    bool hasBackground = false;
    bool isEmpty = true;
    bool keepsLines = false;  // lines end only where blocks and breaks end them
    Align align = Align::Left;
    std::int32_t verticalAlign = 3;
    int deepestIndent = 0;  // of its lines, both sides together
};

struct FlowTable {
    std::uint32_t firstCell = kNone;
    std::uint32_t lastCell = kNone;
    std::uint32_t firstColumn = 0;
    std::uint32_t columnCount = 0;
    std::uint32_t rowCount = 0;
    Extent width;
    Extent height;
    int border = 0;
    int cellEdge = 0;  // the thickness of the cells' frames
    int padding = 0;
    int spacing = 0;
    int least = 0;
    int min = 0;
    int max = 0;
    Colour background = 0;
    bool hasBackground = false;
    bool floats = false;  // at the side that it is aligned to, with the text next to it
    Align align = Align::Left;
    int gap = 0;  // to the text next to it or below it

    /// Between a cell's edge and its content.
    int inset() const { return padding + cellEdge; }
    /// The width of what is between and around the cells.
    int outside() const { return 2 * border + spacing * (static_cast<int>(columnCount) + 1); }
};

enum class FlowKind : std::uint8_t {
    Text,
    Picture,
    Mark,   // the place of a link or named element: index in `marks`
    Break,  // index of the style that an empty line has
    Clear,  // move below what floats: 1 left, 2 right, 3 at both sides
    Block,
    Rule,
    Marker,  // kNone: a list ends
    TableStart,
    CellStart,
    CellEnd,
    TableEnd,
};

struct FlowItem {
    FlowKind kind = FlowKind::Text;
    std::uint32_t index = 0;
};

/// A document made ready to be set at any width: its content in order, with everything measured.
///
/// All sizes are in the canvas's pixels. Texts belong to the document, or to `store` where they had to be
/// changed.
struct Flow {
    explicit Flow(PixelScale canvasScale) : scale(canvasScale) {}

    PixelScale scale;
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
    std::vector<std::int16_t> marks;  // the elements whose places are recorded
    int deepestIndent = 0;            // of the lines outside of tables, both sides together
    std::pmr::monotonic_buffer_resource store;
};

/// Calls `use(word, width, gap, lastResort)` for each word that is drawn. `gap` is the width of the space
/// before the word, -1 where no line may end before it; `lastResort` says that the space is a hard one.
template <class Use>
void forEachWord(const FlowText& text, const Flow& flow, const Use& use) {
    const int space = flow.styles[text.style].spaceWidth;
    int gap = text.gapBefore;
    bool lastResort = text.hardBefore;
    for (std::uint32_t i = 0; i < text.count; ++i) {
        if (i > 0 && gap < 0) gap = space;
        if (text.words[i].empty()) continue;
        if (text.hardSpaces != nullptr && text.hardSpaces[i] > 0) {
            gap = text.hardSpaces[i] * space;
            lastResort = true;
        }
        use(text.words[i], flow.wordWidths[text.firstWidth + i], gap, lastResort);
        gap = -1;
        lastResort = false;
    }
}

}  // namespace kavrelon
