#include "headless/HeadlessWindow.h"

#include <algorithm>
#include <utility>

#include "headless/HeadlessPicture.h"

namespace kavrelon {

HeadlessWindow::HeadlessWindow(HeadlessDesktop& desktop, std::weak_ptr<TermWindowEvents> events)
    : desktop_(desktop), id_(++desktop.lastId), events_(std::move(events)) {
    desktop_.terminalWindows.push_back(this);
}

HeadlessWindow::~HeadlessWindow() {
    close();
}

void HeadlessWindow::close() noexcept {
    if (std::erase(desktop_.terminalWindows, this) == 0) return;
    if (desktop_.active == this) desktop_.active = nullptr;
    desktop_.onMessages();
}

bool HeadlessWindow::sendMessages() {
    desktop_.onMessages();
    return std::ranges::find(desktop_.terminalWindows, this) != desktop_.terminalWindows.end();
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
        if (ShownCell* cell = target_->at(column++, row)) *cell = {ch, pen_, false};
    }
}

void HeadlessWindow::setPen(const Pen& pen) {
    ++penCalls_;
    pen_ = pen;
}

void HeadlessWindow::drawPicture(const Picture& picture, const Rect&, const Rect& clip) {
    const char letter = static_cast<const HeadlessPicture&>(picture).letter();
    forEachCell(clip, [&](int column, int row) {
        ShownCell* cell = target_->at(column, row);
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
    // Nothing is ever drawn there but the mark of a cursor in the pending column.
    const int column = grid_.width() / kCell.width;
    for (int row = 0; row < grid_.height() / kCell.height; ++row) {
        if (cells_.shown(column, row) != ShownCell{}) *cells_.at(column, row) = {};
    }
}

void HeadlessWindow::setGrid(const Rect& grid, Size) {
    grid_ = grid;
}

void HeadlessWindow::scrollGrid(const Rect& block) {
    cells_.scrollUp(block.height() / kCell.height);
}

Size HeadlessWindow::innerSize() const {
    return state_ == WindowState::Minimised ? Size{} : inner_;
}

bool HeadlessWindow::keepBlock(const Rect& block) {
    if (!memory_) return false;
    forEachCell(block, [this](int column, int row) {
        if (ShownCell* cell = memory_->at(column, row)) *cell = cells_.shown(column, row);
    });
    return true;
}

void HeadlessWindow::scrollMemory(const Rect& block) {
    if (memory_) memory_->scrollUp(block.height() / kCell.height);
}

void HeadlessWindow::showMemory() {
    if (memory_) cells_ = *memory_;
}

bool HeadlessWindow::beginMemory() {
    target_ = &memory_.emplace();
    return true;
}

bool HeadlessWindow::clearMemory() {
    cells_ = memory_.emplace();
    return true;
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

void HeadlessWindow::resize(Size inner) {
    inner_ = inner;
    sendResize();
}

Rect HeadlessWindow::rectangle() const {
    return {corner_.x, corner_.y, corner_.x + inner_.width, corner_.y + inner_.height};
}

void HeadlessWindow::show() {
    if (visible_) return;
    visible_ = true;
    if (!sendMessages()) return;
    sendMove();
    makeActive();
    sendResize();
}

void HeadlessWindow::setState(WindowState state) {
    const auto kept = events();  // a user who minimises the window does not hold on to it
    if (state == std::exchange(state_, state)) return;
    if (!visible_ || !sendMessages()) return;
    sendMove();
    sendResize();
}

void HeadlessWindow::setStyleBits(std::uint32_t bits) {
    styleBits_ = bits;
    sendMessages();
}

void HeadlessWindow::makeActive() {
    if (!sendMessages()) return;
    HeadlessWindow* const before = std::exchange(desktop_.active, this);
    if (before == this) return;
    const auto target = events();
    if (before != nullptr) {
        if (const auto last = before->events()) last->Form_Deactivate();
    }
    if (target) target->Form_Activate();
}

void HeadlessWindow::beep(Tone tone) {
    const ToneSound& sound = kToneSounds[static_cast<std::size_t>(tone)];
    desktop_.onBeep(sound.frequencyHertz, sound.milliseconds);
}

void HeadlessWindow::reportFailure(const std::string& text) {
    failures_.push_back(text);
    desktop_.onMessage(text);
    sendMessages();
}

bool HeadlessWindow::confirm(const std::string& text) {
    HeadlessDesktop& desktop = desktop_;
    desktop.questions.push_back(text);
    desktop.onQuestion(text);
    desktop.onMessages();
    return desktop.answer;
}

std::optional<std::string> HeadlessWindow::clipboardText(bool) {
    sendMessages();
    if (desktop_.clipboardHeld || desktop_.clipboard.empty()) return std::nullopt;
    return desktop_.clipboard;
}

bool HeadlessWindow::setClipboardText(const std::string& text) {
    if (desktop_.clipboardHeld) return false;
    desktop_.clipboard = text;
    desktop_.onClipboard(text);
    return true;
}

bool HeadlessWindow::clearClipboard() {
    if (desktop_.clipboardHeld) return false;
    desktop_.clipboard.clear();
    return true;
}

}  // namespace kavrelon
