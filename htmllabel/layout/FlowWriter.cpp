#include "htmllabel/layout/FlowWriter.h"

#include <algorithm>
#include <cstring>

namespace kavrelon {
namespace {

constexpr std::string_view kHardSpace = "&nbsp;";

/// The text that the words of one element are parts of.
std::string_view wholeText(std::span<const std::string_view> words) {
    const char* const begin = words.front().data();
    const char* const end = words.back().data() + words.back().size();
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// Copies a word with its hard spaces as spaces. Returns the end of the copy.
char* copyDrawable(std::string_view word, char* to) {
    while (true) {
        const std::size_t length = std::min(word.find(kHardSpace), word.size());
        to = std::copy_n(word.data(), length, to);
        if (length == word.size()) return to;
        *to++ = ' ';
        word.remove_prefix(length + kHardSpace.size());
    }
}

}  // namespace

template <class List, class Value>
void FlowWriter::item(FlowKind kind, List& list, const Value& value) {
    item(kind, static_cast<std::uint32_t>(list.size()));
    list.push_back(value);
}

int FlowWriter::takeGap(bool space, int spaceWidth) {
    const int gap = (space || spaceBefore_) && gap_ <= 0 ? spaceWidth : gap_;
    gap_ = -1;
    spaceBefore_ = false;
    return gap;
}

std::string_view FlowWriter::drawable(std::string_view text) {
    if (text.find(kHardSpace) == std::string_view::npos) return text;
    char* const begin = std::pmr::polymorphic_allocator<>(&flow_.store).allocate_object<char>(text.size());
    return {begin, static_cast<std::size_t>(copyDrawable(text, begin) - begin)};
}

// Hard spaces are drawn as spaces but never end a line, so words with them are not divided, only copied.
std::span<const std::string_view> FlowWriter::drawable(std::span<const std::string_view> words) {
    const std::string_view text = wholeText(words);
    if (text.find(kHardSpace) == std::string_view::npos) return words;
    std::pmr::polymorphic_allocator<> store(&flow_.store);
    char* to = store.allocate_object<char>(text.size());
    auto* const copies = store.allocate_object<std::string_view>(words.size());
    for (std::size_t i = 0; i < words.size(); ++i) {
        char* const begin = to;
        to = copyDrawable(words[i], to);
        copies[i] = {begin, static_cast<std::size_t>(to - begin)};
        if (i + 1 < words.size()) *to++ = ' ';
    }
    return {copies, words.size()};
}

void FlowWriter::text(const HTMLElement& element, std::uint32_t style, std::uint32_t mark) {
    if (element.strWords.empty()) return;
    const TextStyle& look = flow_.styles[style];
    const auto words = drawable(element.strWords);
    FlowText text{words.data(),
                  static_cast<std::uint32_t>(words.size()),
                  static_cast<std::uint32_t>(flow_.wordWidths.size()),
                  style,
                  mark,
                  takeGap(words.front().empty() || !element.blnNoSpaceBefore, look.spaceWidth),
                  element.intIndex};
    for (const std::string_view word : words) {
        flow_.wordWidths.push_back(word.empty() ? 0 : canvas_.textWidth(look.font, word));
    }
    item(FlowKind::Text, flow_.texts, text);
    forEachWord(text, flow_, [this](std::string_view, int width, int gap) { widths().word(gap, width); });
    if (words.back().empty()) gap_ = look.spaceWidth;
}

void FlowWriter::picture(FlowPicture picture) {
    // A line may end before and after a picture.
    picture.gapBefore = std::max(takeGap(false, flow_.styles[picture.style].spaceWidth), 0);
    gap_ = 0;
    item(FlowKind::Picture, flow_.pictures, picture);
    widths().word(picture.gapBefore, picture.outerWidth());
}

void FlowWriter::lineBreak(std::uint32_t style) {
    item(FlowKind::Break, style);
    widths().endLine();
    widths().emptyLine();
    takeGap(false, 0);
}

std::uint32_t FlowWriter::mark(std::int16_t element) {
    item(FlowKind::Mark, flow_.marks, element);
    return static_cast<std::uint32_t>(flow_.marks.size() - 1);
}

void FlowWriter::boundary(int gap) {
    const BlockState& state = blocks_.top();
    FlowBlock block{gap, state.left, state.right, state.align};
    if (!flow_.items.empty() && flow_.items.back().kind == FlowKind::Block) {
        block.gap = std::max(gap, flow_.blocks.back().gap);
        flow_.blocks.back() = block;
    } else {
        item(FlowKind::Block, flow_.blocks, block);
    }
    widths().endLine();
    widths().indent(state.left + state.right);
    takeGap(false, 0);
}

void FlowWriter::rule(const FlowRule& rule, int gap) {
    boundary(gap);
    item(FlowKind::Rule, flow_.rules, rule);
    widths().word(0, rule.width.pixels);
    boundary(gap);
}

void FlowWriter::marker(const FlowMarker& marker) {
    boundary(0);
    item(FlowKind::Marker, flow_.markers, marker);
    widths().marker(marker.outerWidth());
}

void FlowWriter::endItem() {
    item(FlowKind::Marker, kNone);
}

void FlowWriter::openCell(std::uint32_t cell, Align align) {
    item(FlowKind::CellStart, cell);
    blocks_.enterScope({align});
    widths_.emplace_back();
    takeGap(false, 0);
}

void FlowWriter::closeCell(std::uint32_t cell) {
    widths().endLine();
    flow_.cells[cell].min = widths().min();
    flow_.cells[cell].max = widths().max();
    flow_.cells[cell].isEmpty = widths().isEmpty();
    widths_.pop_back();
    blocks_.leaveScope();
    item(FlowKind::CellEnd, cell);
}

void FlowWriter::openTable(std::uint32_t table, int gap) {
    boundary(gap);
    item(FlowKind::TableStart, table);
}

void FlowWriter::closeTable(std::uint32_t table, int gap) {
    item(FlowKind::TableEnd, table);
    widths().block(flow_.tables[table].min, flow_.tables[table].max);
    boundary(gap);
}

}  // namespace kavrelon
