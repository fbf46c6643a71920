#include "headless/HeadlessLabelWindow.h"

#include <map>

namespace kavrelon {

void HeadlessLabelWindow::callParent(const std::string& procedure,
                                     const std::vector<std::string>& arguments) {
    if (onCall_) onCall_(procedure, arguments);
}

void HeadlessLabelWindow::setScrollBar(ScrollBar bar, const ScrollState& state) {
    (bar == ScrollBar::vscScroll ? shown_.vscScroll : shown_.hscScroll) = state;
}

std::vector<std::string> HeadlessLabelWindow::textLines() {
    repaintViewPort();
    std::map<int, std::multimap<int, const RecordingCanvas::Text*>> byBaseline;
    for (const RecordingCanvas::Text& text : canvas_.texts) {
        const int baseline = text.place.top + canvas_.metrics(canvas_.font(text.font)).ascent;
        byBaseline[baseline].emplace(text.place.left, &text);
    }
    std::vector<std::string> lines;
    for (const auto& [baseline, texts] : byBaseline) {
        std::string line;
        int end = texts.begin()->first;
        for (const auto& [left, text] : texts) {
            if (left > end) line += ' ';
            line += text->text;
            end = text->place.right;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

void HeadlessLabelWindow::repaintViewPort() {
    ++shown_.paints;
    const auto label = label_.lock();
    if (label == nullptr) return;
    const auto alive = weak_from_this().lock();
    canvas_.clear();
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
