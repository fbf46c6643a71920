#include "headless/HeadlessWindow.h"

#include <algorithm>
#include <utility>

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

long HeadlessLauncher::shellExecute(const std::string& program, const std::string& parameters,
                                    const std::string& directory, int) {
    shellStarts.push_back({program, parameters, directory});
    return shellResult;
}

long HeadlessLauncher::startProgram(const std::string& commandLine, int) {
    plainStarts.push_back(commandLine);
    return task;
}

bool HeadlessPrinters::print(const std::string& printer, const std::vector<std::string>& lines, int) {
    printedOn = printer;
    page = lines;
    whilePrinting();
    return takesPages;
}

HeadlessPlatform::HeadlessPlatform(ProfileFile& profiles) : profiles_(profiles) {
    desktop.rectangleOf = [this](WindowId id) {
        const HeadlessWindow* window = windowOf(id);
        return window == nullptr ? Rect{} : window->rectangle();
    };
    desktop.isShown = [this](WindowId id) {
        const HeadlessWindow* window = windowOf(id);
        return window != nullptr && window->visible() && window->state() != WindowState::Minimised;
    };
}

HeadlessWindow* HeadlessPlatform::windowOf(const TermWindowEvents& events) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(), [&](const HeadlessWindow* window) {
        return window->events().get() == &events;
    });
    return found == windows_.end() ? nullptr : *found;
}

std::unique_ptr<TermWindow> HeadlessPlatform::createWindow(std::weak_ptr<TermWindowEvents> events) {
    auto window = std::make_unique<HeadlessWindow>(*this, std::move(events));
    windows_.push_back(window.get());
    return window;
}

std::unique_ptr<HelpWindow> HeadlessPlatform::createHelpWindow(std::weak_ptr<HelpWindowEvents> events) {
    return std::make_unique<HeadlessHelpWindow>(desktop, std::move(events));
}

const HeadlessWindow* HeadlessPlatform::windowOf(WindowId id) const {
    const auto found = std::ranges::find(windows_, id, &HeadlessWindow::id);
    return found == windows_.end() ? nullptr : *found;
}

std::shared_ptr<const Picture> HeadlessPlatform::loadPicture(const std::string& path) {
    picturesLookedFor.push_back(path);
    const auto found = pictureFiles.find(path);
    return found == pictureFiles.end() ? nullptr : std::make_shared<HeadlessPicture>(found->second);
}

void HeadlessPlatform::processMessages() {
    while (!pendingMessages.empty()) {
        const auto message = std::move(pendingMessages.front());
        pendingMessages.pop_front();
        message();
    }
}

void HeadlessPlatform::activate(HeadlessWindow& window) {
    HeadlessWindow* before = std::exchange(active_, &window);
    if (before == &window) return;
    if (before != nullptr) {
        if (const auto target = before->events()) target->Form_Deactivate();
    }
    if (const auto target = window.events()) target->Form_Activate();
}

void HeadlessPlatform::forget(const HeadlessWindow& window) {
    std::erase(windows_, &window);
    if (active_ == &window) active_ = nullptr;
}

}  // namespace kavrelon
