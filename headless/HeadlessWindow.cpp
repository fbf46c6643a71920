#include "headless/HeadlessWindow.h"

#include <utility>

#include "headless/HeadlessPicture.h"
#include "headless/HeadlessPlatform.h"

namespace kavrelon {

HeadlessWindow::HeadlessWindow(HeadlessPlatform& platform, std::weak_ptr<TermWindowEvents> events)
    : platform_(platform), id_(++platform.lastId_), events_(std::move(events)) {}

HeadlessWindow::~HeadlessWindow() {
    platform_.forget(*this);
}

void HeadlessWindow::tick(TermTimer timer) {
    const auto target = events();
    if (!target || !timerEnabled(timer)) return;
    if (timer == TermTimer::cursor_timer) {
        target->cursor_timer_Timer();
    } else {
        target->tmrBeep_Timer();
    }
}

template <class Visit>
void HeadlessWindow::forEachCell(const Rect& block, Visit visit) {
    for (int y = block.top; y < block.bottom; y += kCell.height) {
        for (int x = block.left; x < block.right; x += kCell.width) {
            visit((x - grid_.left) / kCell.width, (y - grid_.top) / kCell.height);
        }
    }
}

void HeadlessWindow::drawText(Point at, std::span<const std::uint8_t> text) {
    ++drawCalls_;
    const int row = (at.y - grid_.top) / kCell.height;
    int column = (at.x - grid_.left) / kCell.width;
    for (const std::uint8_t ch : text) {
        if (ShownCell* cell = cells_.at(column++, row)) *cell = {ch, pen_, false};
    }
}

void HeadlessWindow::setPen(const Pen& pen) {
    ++penCalls_;
    pen_ = pen;
}

void HeadlessWindow::drawPicture(const Picture& picture, const Rect&, const Rect& clip) {
    const char letter = static_cast<const HeadlessPicture&>(picture).letter();
    forEachCell(clip, [&](int column, int row) {
        ShownCell* cell = cells_.at(column, row);
        if (cell == nullptr) return;
        if (picture.opaque()) *cell = {};
        cell->picture = letter;
    });
}

void HeadlessWindow::invertBlock(const Rect& block) {
    forEachCell(block, [this](int column, int row) {
        if (ShownCell* cell = cells_.at(column, row)) cell->inverted = !cell->inverted;
    });
}

void HeadlessWindow::clear() {
    cells_.clear();
}

void HeadlessWindow::clearOutsideGrid() {
    // Only the mark of a cursor in the pending column ever stands there.
    const int column = grid_.width() / kCell.width;
    for (int row = 0; row < gridLines(); ++row) {
        if (cells_.shown(column, row) != ShownCell{}) *cells_.at(column, row) = {};
    }
}

void HeadlessWindow::setGrid(const Rect& grid, Size) {
    grid_ = grid;
}

void HeadlessWindow::scrollGrid() {
    cells_.scrollUp(gridLines());
}

Size HeadlessWindow::innerSize() const {
    return state_ == WindowState::Minimised ? Size{} : kInner;
}

void HeadlessWindow::keepBlock(const Rect& block) {
    forEachCell(block, [this](int column, int row) {
        if (ShownCell* cell = memory_.at(column, row)) *cell = cells_.shown(column, row);
    });
}

void HeadlessWindow::scrollMemory() {
    memory_.scrollUp(gridLines());
}

void HeadlessWindow::showMemory() {
    cells_ = memory_;
}

void HeadlessWindow::clearMemory() {
    memory_.clear();
    showMemory();
}

void HeadlessWindow::sendResize() {
    if (const auto target = events()) target->Form_Resize();
}

void HeadlessWindow::sendMove() {
    if (const auto target = events()) target->Form_Move();
}

void HeadlessWindow::moveTo(Point corner) {
    corner_ = corner;
    sendMove();
}

Rect HeadlessWindow::rectangle() const {
    return {corner_.x, corner_.y, corner_.x + kInner.width, corner_.y + kInner.height};
}

void HeadlessWindow::show() {
    if (visible_) return;
    visible_ = true;
    sendMove();
    platform_.activate(*this);
    sendResize();
}

void HeadlessWindow::setState(WindowState state) {
    if (state == std::exchange(state_, state)) return;
    if (!visible_) return;
    sendMove();
    sendResize();
}

void HeadlessWindow::makeActive() {
    platform_.activate(*this);
}

void HeadlessWindow::beep(int frequencyHertz, int milliseconds) {
    if (platform_.onBeep) platform_.onBeep(frequencyHertz, milliseconds);
}

std::optional<std::string> HeadlessWindow::clipboardText() {
    if (platform_.clipboardHeld || platform_.clipboard.empty()) return std::nullopt;
    return platform_.clipboard;
}

bool HeadlessWindow::setClipboardText(const std::string& text) {
    if (platform_.clipboardHeld) return false;
    platform_.clipboard = text;
    if (platform_.onClipboard) platform_.onClipboard(text);
    return true;
}

bool HeadlessWindow::clearClipboard() {
    if (platform_.clipboardHeld) return false;
    platform_.clipboard.clear();
    return true;
}

}  // namespace kavrelon
