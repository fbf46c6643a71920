#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/layout/ContentWidths.h"
#include "htmllabel/layout/Flow.h"
#include "htmllabel/layout/TagStack.h"

namespace kavrelon {

/// How the blocks around the current place set their lines.
struct BlockState {
    Align align = Align::Left;
    int left = 0;
    int right = 0;
    std::uint32_t list = kNone;
};

/// Writes a flow's lines and blocks, decides where there are spaces, and measures on the way.
class FlowWriter {
  public:
    FlowWriter(Flow& flow, Canvas& canvas) : flow_(flow), canvas_(canvas) {}

    void text(const HTMLElement& element, std::uint32_t style, std::uint32_t mark);
    void picture(FlowPicture picture);
    /// A text with its hard spaces as spaces, which lives as long as the flow (or the text given).
    std::string_view drawable(std::string_view text);
    /// `clear` as in `FlowKind::Clear`, 0 for nothing.
    void lineBreak(std::uint32_t style, unsigned clear = 0);
    /// There is white space before a tag: a line may end before the next word. `underline` is the style in
    /// force when that underlines, else `kNone`.
    void spaceBeforeTag(std::uint32_t underline);
    /// The place of a link or a named element. Returns its number.
    std::uint32_t mark(std::int16_t element);

    /// The open blocks of the current page or cell.
    TagStack<BlockState>& blocks() { return blocks_; }
    /// Ends the line. What follows is set as the innermost block says, at least `gap` pixels below.
    void boundary(int gap);
    void rule(const FlowRule& rule, int gap);
    void marker(const FlowMarker& marker);
    /// A list ends. Its last item shows its marker even without content.
    void endItem();

    /// Between `openCell` and `closeCell`, everything written is content of this cell.
    void openCell(std::uint32_t cell);
    void closeCell(std::uint32_t cell);
    void openTable(std::uint32_t table);
    void closeTable(std::uint32_t table);
    /// To be called when everything has been written.
    void finish();

  private:
    void item(FlowKind kind, std::uint32_t index) { flow_.items.push_back({kind, index}); }
    template <class List, class Value>
    void item(FlowKind kind, List& list, const Value& value);
    int takeGap(bool space, int spaceWidth);
    std::uint32_t gapStyle(bool space, std::uint32_t style) const;
    void divide(std::span<const std::string_view> words, FlowText& text);
    ContentWidths& widths() { return widths_.back(); }

    Flow& flow_;
    Canvas& canvas_;
    TagStack<BlockState> blocks_{BlockState()};
    // Of the text that is being divided.
    std::vector<std::string_view> pieces_;
    std::vector<std::uint16_t> hardSpaces_;
    std::vector<ContentWidths> widths_ = std::vector<ContentWidths>(1);  // of the page and the open cells
    int gap_ = -1;                                                       // before what comes next
    bool spaceBefore_ = false;
    bool endsHard_ = false;           // a hard space is the last that was written
    std::uint32_t gapStyle_ = kNone;  // the style that underlines the space before a tag
};

}  // namespace kavrelon
