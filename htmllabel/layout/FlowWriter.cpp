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

void FlowWriter::spaceBeforeTag(std::uint32_t underline) {
    if (!spaceBefore_) gapStyle_ = underline;
    spaceBefore_ = true;
}

/// The style that underlines the space before a text: that of the tags where the space stands. A space at the
/// end of the text before is that text's.
std::uint32_t FlowWriter::gapStyle(bool space, std::uint32_t style) const {
    if (gap_ > 0) return kNone;
    if (spaceBefore_) return gapStyle_;
    return space && flow_.styles[style].underline ? style : kNone;
}

int FlowWriter::takeGap(bool space, int spaceWidth) {
    const int gap = (space || spaceBefore_) && gap_ <= 0 ? spaceWidth : gap_;
    gap_ = -1;
    spaceBefore_ = false;
    endsHard_ = false;
    return gap;
}

std::string_view FlowWriter::drawable(std::string_view text) {
    if (text.find(kHardSpace) == std::string_view::npos) return text;
    char* const begin = std::pmr::polymorphic_allocator<>(&flow_.store).allocate_object<char>(text.size());
    return {begin, static_cast<std::size_t>(copyDrawable(text, begin) - begin)};
}

/// Gives a text its words. Hard spaces are drawn as spaces, and divide a word into pieces; those at its ends
/// belong to the first and the last piece.
void FlowWriter::divide(std::span<const std::string_view> words, FlowText& text) {
    const std::string_view whole = wholeText(words);
    text.words = words.data();
    text.count = static_cast<std::uint32_t>(words.size());
    if (whole.find(kHardSpace) == std::string_view::npos) return;
    pieces_.clear();
    hardSpaces_.clear();
    std::pmr::polymorphic_allocator<> store(&flow_.store);
    char* to = store.allocate_object<char>(whole.size());
    for (const std::string_view source : words) {
        const char* const begin = to;
        to = copyDrawable(source, to);
        std::string_view word(begin, static_cast<std::size_t>(to - begin));
        *to++ = ' ';
        std::size_t hardSpaces = 0;
        for (;;) {
            const std::size_t end = word.find(' ', std::min(word.find_first_not_of(' '), word.size()));
            const std::size_t next = std::min(word.find_first_not_of(' ', end), word.size());
            const bool isLast = next == word.size();
            pieces_.push_back(word.substr(0, isLast ? next : end));
            hardSpaces_.push_back(static_cast<std::uint16_t>(hardSpaces));
            if (isLast) break;
            hardSpaces = next - end;
            word.remove_prefix(next);
        }
    }
    text.count = static_cast<std::uint32_t>(pieces_.size());
    auto* const copies = store.allocate_object<std::string_view>(pieces_.size());
    text.words = std::ranges::copy(pieces_, copies).out - pieces_.size();
    auto* const spaces = store.allocate_object<std::uint16_t>(pieces_.size());
    text.hardSpaces = std::ranges::copy(hardSpaces_, spaces).out - pieces_.size();
}

void FlowWriter::text(const HTMLElement& element, std::uint32_t style, std::uint32_t mark) {
    if (element.strWords.empty()) return;
    const TextStyle& look = flow_.styles[style];
    FlowText text;
    divide(element.strWords, text);
    const bool space = text.words[0].empty();
    text.firstWidth = static_cast<std::uint32_t>(flow_.wordWidths.size());
    text.style = style;
    text.mark = mark;
    text.gapStyle = gapStyle(space, style);
    const TextStyle& gapLook = flow_.styles[text.gapStyle == kNone ? style : text.gapStyle];
    const bool hardBefore = endsHard_ || text.words[0].starts_with(' ');
    text.gapBefore = takeGap(space || !element.blnNoSpaceBefore, gapLook.spaceWidth);
    text.hardBefore = hardBefore && text.gapBefore < 0;
    text.element = element.intIndex;
    const std::span words(text.words, text.count);
    for (const std::string_view word : words) {
        flow_.wordWidths.push_back(word.empty() ? 0 : canvas_.textWidth(look.font, word));
    }
    item(FlowKind::Text, flow_.texts, text);
    forEachWord(text, flow_, [this](std::string_view, int width, int gap, bool lastResort) {
        widths().word(gap, width, lastResort);
    });
    if (words.back().empty()) gap_ = look.spaceWidth;
    endsHard_ = words.back().ends_with(' ');
}

void FlowWriter::picture(FlowPicture picture) {
    // A line may end before and after a picture.
    picture.gapBefore = std::max(takeGap(false, flow_.styles[picture.style].spaceWidth), 0);
    gap_ = 0;
    item(FlowKind::Picture, flow_.pictures, picture);
    widths().word(picture.gapBefore, picture.outerWidth());
}

void FlowWriter::lineBreak(std::uint32_t style, unsigned clear) {
    item(FlowKind::Break, style);
    if (clear != 0) item(FlowKind::Clear, clear);
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

void FlowWriter::openCell(std::uint32_t cell) {
    item(FlowKind::CellStart, cell);
    blocks_.enterScope({flow_.cells[cell].align});
    widths_.emplace_back(flow_.cells[cell].keepsLines);
    takeGap(false, 0);
}

void FlowWriter::closeCell(std::uint32_t cell) {
    widths().endLine();
    FlowCell& closed = flow_.cells[cell];
    closed.least = widths().least();
    closed.min = widths().min();
    closed.max = widths().max();
    closed.isEmpty = widths().isEmpty();
    closed.deepestIndent = widths().deepestIndent();
    widths_.pop_back();
    blocks_.leaveScope();
    item(FlowKind::CellEnd, cell);
}

void FlowWriter::openTable(std::uint32_t table) {
    boundary(flow_.tables[table].gap);
    item(FlowKind::TableStart, table);
}

void FlowWriter::closeTable(std::uint32_t table) {
    item(FlowKind::TableEnd, table);
    const FlowTable& shape = flow_.tables[table];
    if (shape.floats) {
        widths().floating(shape.least, shape.min, shape.max + shape.gap);
        takeGap(false, 0);
    } else {
        widths().block(shape.least, shape.min, shape.max);
        boundary(shape.gap);
    }
}

void FlowWriter::finish() {
    widths().endLine();
    flow_.deepestIndent = widths().deepestIndent();
}

}  // namespace kavrelon
