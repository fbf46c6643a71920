#include "terminal/screen/ScreenBuffer.h"

#include <algorithm>

namespace kavrelon {
namespace {

const ScreenLine kUntouched{};

}  // namespace

void ScreenBuffer::setBlankLine(CellAttr attr) {
    std::fill(BlankLine_.Cells.begin() + 1, BlankLine_.Cells.end(), Cell{' ', attr});
    for (Row& row : rows_) row.extent = kStoredCells;
}

void ScreenBuffer::PutCell(int column, int row, Cell cell) {
    if (column < -1 || column >= kMaxScreen || row < -1 || row >= kMaxScreen) {
        raise(RuntimeErrorNumber::SubscriptOutOfRange);
    }
    Row& target = writableRow(row + 1);
    const int element = column + 1;
    target.line->Cells[static_cast<std::size_t>(element)] = cell;
    target.extent = std::max(target.extent, element + 1);
}

void ScreenBuffer::fill(int first, int last, int row, Cell cell) {
    if (first > last) return;
    PutCell(first, row, cell);
    const int stored = std::min(last, kMaxScreen - 1);
    Row& target = writableRow(row + 1);
    const auto cells = target.line->Cells.begin() + 1;
    std::fill(cells + first, cells + stored + 1, cell);
    target.extent = std::max(target.extent, stored + 2);
    if (stored < last) raise(RuntimeErrorNumber::SubscriptOutOfRange);
}

const ScreenLine& ScreenBuffer::record(int index) const {
    if (index < 0 || index >= kStoredCells) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    const Row& row = rows_[slotOf(index)];
    return row.line ? *row.line : kUntouched;
}

void ScreenBuffer::blank(Row& row) {
    std::copy_n(BlankLine_.Cells.begin(), row.extent, row.line->Cells.begin());
    row.extent = 0;
}

void ScreenBuffer::reserveRows(int first, int last) {
    for (int row = std::max(first, 0); row <= std::min(last, kMaxScreen - 1); ++row) writableRow(row + 1);
}

void ScreenBuffer::blankRows(int first, int last) {
    first = std::max(first, 0);
    last = std::min(last, kMaxScreen - 1);
    reserveRows(first, last);
    for (int row = first; row <= last; ++row) blank(writableRow(row + 1));
}

void ScreenBuffer::allocate(Row& row) {
    row.line = std::make_unique<ScreenLine>();
}

bool ScreenBuffer::setRing(int lines) {
    lines = std::clamp(lines, 0, kMaxScreen);
    if (lines == 0 || lines == ringSize_) return lines != 0;
    const auto first = rows_.begin() + 1;
    std::rotate(first, first + ringStart_, first + ringSize_);
    ringStart_ = 0;
    ringSize_ = lines;
    return true;
}

}  // namespace kavrelon
