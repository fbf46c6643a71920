#include "terminal/ScreenBuffer.h"

#include <algorithm>

namespace kavrelon {
namespace {

const ScreenLine kUntouched{};

}  // namespace

void ScreenBuffer::setBlankLine(CellAttr attr) {
    std::fill(blankLine_.Chars.begin() + 1, blankLine_.Chars.end(), std::uint8_t{' '});
    std::fill(blankLine_.Attrs.begin() + 1, blankLine_.Attrs.end(), attr);
    for (Row& row : rows_) row.extent = kStoredCells;
}

std::size_t ScreenBuffer::slotOf(int index) const {
    if (index < 1 || index > ringSize_) return static_cast<std::size_t>(index);
    const int turned = index + ringStart_;
    return static_cast<std::size_t>(turned > ringSize_ ? turned - ringSize_ : turned);
}

ScreenBuffer::Row& ScreenBuffer::writableRow(int index) {
    Row& row = rows_[slotOf(index)];
    if (!row.line) row.line = std::make_unique<ScreenLine>();
    return row;
}

void ScreenBuffer::put(int column, int row, std::uint8_t ch, CellAttr attr) {
    if (column < -1 || column >= kMaxScreen || row < -1 || row >= kMaxScreen) {
        raise(RuntimeErrorNumber::SubscriptOutOfRange);
    }
    Row& target = writableRow(row + 1);
    const auto element = static_cast<std::size_t>(column + 1);
    target.line->Chars[element] = ch;
    target.line->Attrs[element] = attr;
    target.extent = std::max(target.extent, column + 2);
}

void ScreenBuffer::fill(int first, int last, int row, std::uint8_t ch, CellAttr attr) {
    if (first > last) return;
    const int stored = std::min(last, kMaxScreen - 1);
    put(first, row, ch, attr);
    Row& target = writableRow(row + 1);
    const auto from = static_cast<std::size_t>(first + 1);
    const auto to = static_cast<std::size_t>(stored + 2);
    std::fill(&target.line->Chars[from], target.line->Chars.data() + to, ch);
    std::fill(&target.line->Attrs[from], target.line->Attrs.data() + to, attr);
    target.extent = std::max(target.extent, stored + 2);
    if (stored < last) raise(RuntimeErrorNumber::SubscriptOutOfRange);
}

const ScreenLine& ScreenBuffer::record(int index) const {
    if (index < 0 || index >= kStoredCells) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    const Row& row = rows_[slotOf(index)];
    return row.line ? *row.line : kUntouched;
}

void ScreenBuffer::blank(Row& row) {
    std::copy_n(blankLine_.Chars.begin(), row.extent, row.line->Chars.begin());
    std::copy_n(blankLine_.Attrs.begin(), row.extent, row.line->Attrs.begin());
    row.extent = 0;
}

void ScreenBuffer::blankRow(int row) {
    blankRows(row, row);
}

void ScreenBuffer::blankRows(int first, int last) {
    first = std::max(first, 0);
    last = std::min(last, kMaxScreen - 1);
    for (int row = first; row <= last; ++row) blank(writableRow(row + 1));
}

void ScreenBuffer::setRing(int size) {
    const auto first = rows_.begin() + 1;
    std::rotate(first, first + ringStart_, first + ringSize_);
    ringStart_ = 0;
    ringSize_ = size;
}

void ScreenBuffer::scrollUp(int lines) {
    lines = std::clamp(lines, 0, kMaxScreen);
    if (lines == 0) return;
    if (lines != ringSize_) setRing(lines);
    if (++ringStart_ == ringSize_) ringStart_ = 0;
    blank(writableRow(lines));
}

ScreenLine& ScreenBuffer::rowForWriting(int row) {
    return *writableRow(row + 1).line;
}

void ScreenBuffer::noteWritten(int row, int column) {
    Row& target = rows_[slotOf(row + 1)];
    target.extent = std::max(target.extent, column + 1);
}

}  // namespace kavrelon
