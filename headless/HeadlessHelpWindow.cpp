#include "headless/HeadlessHelpWindow.h"

#include <algorithm>
#include <utility>

#include "support/Conversions.h"

namespace kavrelon {

HeadlessHelpWindow::HeadlessHelpWindow(HeadlessDesktop& desktop, std::weak_ptr<HelpWindowEvents> events)
    : desktop_(desktop), events_(std::move(events)) {
    desktop_.helpWindows.push_back(this);
}

HeadlessHelpWindow::~HeadlessHelpWindow() {
    close();
}

void HeadlessHelpWindow::close() noexcept {
    if (std::erase(desktop_.helpWindows, this) != 0) desktop_.onMessages();
}

void HeadlessHelpWindow::setVisible(bool visible) {
    if (std::exchange(visible_, visible) != visible) desktop_.onMessages();
}

HeadlessHelpWindow* windowOf(const HeadlessDesktop& desktop, const HelpWindowEvents& box) {
    const auto found = std::ranges::find_if(desktop.helpWindows, [&box](const HeadlessHelpWindow* window) {
        return window->events().get() == &box;
    });
    return found == desktop.helpWindows.end() ? nullptr : *found;
}

LabelWindow* HeadlessHelpWindow::addLabel(const std::shared_ptr<HTMLLabel>& label) {
    label_ = label;
    labelWindow_ = std::make_shared<HeadlessLabelWindow>();
    // A text is worth laying out once the box has an owner, and so a place.
    labelWindow_->surroundings() = {.twips = {}, .visible = false};
    labelWindow_->paintFor(label);
    return labelWindow_.get();
}

void HeadlessHelpWindow::sizeLabel(Size twips) {
    const auto label = label_.lock();
    if (label == nullptr || std::exchange(labelWindow_->surroundings().twips, twips) == twips) return;
    label->UserControl_Resize();
}

void HeadlessHelpWindow::setOwner(WindowId owner) {
    owner_ = owner;
    if (labelWindow_ != nullptr) labelWindow_->surroundings().visible = true;
}

void HeadlessHelpWindow::Move(double left, double top, double width, double height) {
    const auto pixels = [](double twips) { return roundHalfToEven(twips / kTwipsPerPixel); };
    const Size before{rectangle_.width(), rectangle_.height()};
    rectangle_ = {pixels(left), pixels(top), pixels(left) + pixels(width), pixels(top) + pixels(height)};
    desktop_.onMessages();
    const auto target = events();
    if (target && before != Size{rectangle_.width(), rectangle_.height()}) target->Form_Resize();
}

void HeadlessHelpWindow::drawFocusRectangle(const Rect& block) {
    const auto drawn = std::find(outlines_.begin(), outlines_.end(), block);
    if (drawn == outlines_.end()) {
        outlines_.push_back(block);
    } else {
        outlines_.erase(drawn);
    }
}

}  // namespace kavrelon
