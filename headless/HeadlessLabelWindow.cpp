#include "headless/HeadlessLabelWindow.h"

namespace kavrelon {

void HeadlessLabelWindow::callParent(const std::string& procedure,
                                     const std::vector<std::string>& arguments) {
    if (onCall_) onCall_(procedure, arguments);
}

void HeadlessLabelWindow::setScrollBar(ScrollBar bar, const ScrollState& state) {
    (bar == ScrollBar::vscScroll ? shown_.vscScroll : shown_.hscScroll) = state;
}

void HeadlessLabelWindow::repaintViewPort() {
    ++shown_.paints;
    const auto label = label_.lock();
    if (label == nullptr) return;
    canvas_.focus.reset();
    const Rect viewPort = shown_.placement.picViewPort;
    label->picViewPort_Paint(canvas_, {viewPort.width(), viewPort.height()});
    shown_.focus = canvas_.focus;
}

void HeadlessLabelWindow::processMessages() {
    // A copy, as the handler may be replaced while it runs.
    if (const auto handler = onMessages_) handler();
}

}  // namespace kavrelon
