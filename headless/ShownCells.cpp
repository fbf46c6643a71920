#include "headless/ShownCells.h"

#include <algorithm>
#include <cstddef>

#include "terminal/screen/ScreenLine.h"

namespace kavrelon {

ShownCell* ShownCells::at(int column, int row) {
    if (column < 0 || column > kMaxScreen || row < 0 || row > kMaxScreen) return nullptr;
    const auto x = static_cast<std::size_t>(column);
    const auto y = static_cast<std::size_t>(row);
    if (y >= rows_.size()) rows_.resize(y + 1);
    if (x >= rows_[y].size()) rows_[y].resize(x + 1);
    return &rows_[y][x];
}

ShownCell ShownCells::shown(int column, int row) const {
    const auto x = static_cast<std::size_t>(column);
    const auto y = static_cast<std::size_t>(row);
    return y < rows_.size() && x < rows_[y].size() ? rows_[y][x] : ShownCell{};
}

void ShownCells::scrollUp(int lines) {
    if (rows_.empty()) return;
    const auto last = std::min(static_cast<std::size_t>(std::max(lines, 1)), rows_.size());
    const auto end = rows_.begin() + static_cast<std::ptrdiff_t>(last);
    std::rotate(rows_.begin(), rows_.begin() + 1, end);
    (end - 1)->clear();
}

}  // namespace kavrelon
