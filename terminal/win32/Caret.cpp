#include "terminal/win32/Caret.h"

namespace kavrelon {

void Caret::lostFocus() {
    if (cell_ != Rect{}) DestroyCaret();
    cell_ = {};
    window_ = nullptr;
}

void Caret::place(const Rect& cell) {
    if (window_ == nullptr || cell == cell_) return;
    const bool sameSize = cell.width() == cell_.width() && cell.height() == cell_.height();
    if (!sameSize && !CreateCaret(window_, nullptr, cell.width(), cell.height())) return;
    if (SetCaretPos(cell.left, cell.top)) cell_ = cell;
}

}  // namespace kavrelon
