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

/// What the blocks around the current place ask for.
struct BlockState {
    Align align = Align::Left;
    int left = 0;
    int right = 0;
    std::uint32_t list = kNone;
};

/// Writes a flow's lines and blocks, deciding where spaces stand, and measures as it goes.
class FlowWriter {
  public:
    FlowWriter(Flow& flow, Canvas& canvas) : flow_(flow), canvas_(canvas) {}

    void text(const HTMLElement& element, std::uint32_t style, std::uint32_t mark);
    void picture(FlowPicture picture);
    /// A text with its hard spaces as spaces. It lives as long as the flow.
    std::string_view drawable(std::string_view text);
    void lineBreak(std::uint32_t style);
    /// White space stands before a tag: the next word does not hang on the one before.
    void spaceBeforeTag() { spaceBefore_ = true; }
    /// The place of a link or a named element. Its number.
    std::uint32_t mark(std::int16_t element);

    /// The open blocks of the current page or cell.
    TagStack<BlockState>& blocks() { return blocks_; }
    /// Ends the line: what follows is set as the innermost block says, at least `gap` below.
    void boundary(int gap);
    void rule(const FlowRule& rule, int gap);
    void marker(const FlowMarker& marker);
    /// A list ends: a last item without content still shows its marker.
    void endItem();

    /// From `openCell` to `closeCell` all that is written stands in this cell.
    void openCell(std::uint32_t cell, Align align);
    void closeCell(std::uint32_t cell);
    void openTable(std::uint32_t table, int gap);
    void closeTable(std::uint32_t table, int gap);

  private:
    void item(FlowKind kind, std::uint32_t index) { flow_.items.push_back({kind, index}); }
    template <class List, class Value>
    void item(FlowKind kind, List& list, const Value& value);
    int takeGap(bool space, int spaceWidth);
    std::span<const std::string_view> drawable(std::span<const std::string_view> words);
    ContentWidths& widths() { return widths_.back(); }

    Flow& flow_;
    Canvas& canvas_;
    TagStack<BlockState> blocks_{BlockState()};
    std::vector<ContentWidths> widths_{1};  // of the page and the open cells
    int gap_ = -1;                          // that stands before what comes next
    bool spaceBefore_ = false;
};

}  // namespace kavrelon
