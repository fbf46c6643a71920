#include "htmllabel/HTMLLabel.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "htmllabel/layout/ElementValues.h"
#include "support/Keys.h"

namespace kavrelon {

namespace {

constexpr int kMinimised = 1;
constexpr int kLinesPerNotch = 3;

// What a key asks of the vertical bar; nothing when it is no scroll key.
std::optional<ScrollStep> stepOf(std::int16_t KeyCode, std::int16_t Shift) {
    const bool ctrl = (Shift & shifts::kCtrl) != 0;
    switch (KeyCode) {
        case keys::kUp:
            return ScrollStep::LineUp;
        case keys::kDown:
            return ScrollStep::LineDown;
        case keys::kPageUp:
            return ScrollStep::PageUp;
        case keys::kPageDown:
            return ScrollStep::PageDown;
        case keys::kHome:
            return ctrl ? std::optional(ScrollStep::Top) : std::nullopt;
        case keys::kEnd:
            return ctrl ? std::optional(ScrollStep::Bottom) : std::nullopt;
        default:
            return std::nullopt;
    }
}

}  // namespace

LabelOutline HTMLLabel::outline() const {
    return {.twips = outerSize_,
            .twipsPerPixelX = window_->twipsPerPixelX(),
            .twipsPerPixelY = window_->twipsPerPixelY(),
            .barThickness = window_->scrollBarThickness(),
            .EnableScroll = EnableScroll(),
            .Appearance = Appearance(),
            .vscVisible = vscScroll_.visible,
            .hscVisible = hscScroll_.visible};
}

// Of the default font, in pixels.
int HTMLLabel::lineHeight() const {
    Canvas& canvas = window_->canvas();
    const TextFont font{.face = DefaultFontName(), .points = clampPoints(DefaultFontSize())};
    return canvas.metrics(canvas.font(font)).height();
}

// Fits the bars to the page, with lines of this height, and the parts to the bars. One round is enough: the
// width of the view port depends on neither bar, and its height only on the horizontal one.
void HTMLLabel::fitParts(Point offset, int line) {
    const Size page = layout_ != nullptr ? layout_->size() : Size{};
    const int width = placeLabelParts(outline()).picViewPort.width();
    hscScroll_ = ScrollState::forPage(EnableScroll(), page.width, width, line, offset.x);
    const int height = placeLabelParts(outline()).picViewPort.height();
    vscScroll_ = ScrollState::forPage(EnableScroll(), page.height, height, line, offset.y);
    placement_ = placeLabelParts(outline());

    window_->place(placement_);
    window_->setScrollBar(ScrollBar::hscScroll, hscScroll_);
    window_->setScrollBar(ScrollBar::vscScroll, vscScroll_);
}

void HTMLLabel::UserControl_Resize() noexcept {
    handle([this] {
        if (window_ == nullptr) return;
        // These resizes should leave the parts where they are; before the first resize there is nothing to
        // leave.
        if (outerSize_ != Size{}) {
            const auto windowState = window_->parentWindowState();
            if (!windowState || *windowState == kMinimised || !window_->userMode()) return;
        }
        const int line = lineHeight();
        outerSize_ = window_->sizeInTwips();
        const bool scrolls = vscScroll_.Value != 0 || hscScroll_.Value != 0;
        fitParts({}, line);
        if (scrolls) repaint();
    });
}

void HTMLLabel::scrollHome() {
    vscScroll_.Value = 0;
    hscScroll_.Value = 0;
    if (window_ == nullptr) return;
    window_->setScrollBar(ScrollBar::hscScroll, hscScroll_);
    window_->setScrollBar(ScrollBar::vscScroll, vscScroll_);
}

// Like the bars: a value outside the range is rejected, and a new value repaints.
void HTMLLabel::scrollTo(ScrollBar bar, int value) {
    ScrollState& state = bar == ScrollBar::vscScroll ? vscScroll_ : hscScroll_;
    if (value < state.Min || value > state.Max || value == state.Value) return;
    state.Value = value;
    if (window_ == nullptr) return;
    window_->setScrollBar(bar, state);
    if (window_->userMode() && document_.mintElementCount() > 0) window_->repaintViewPort();
}

void HTMLLabel::scrollIntoView(const Rect& box) {
    if (!EnableScroll()) return;
    const int across = hscScroll_.showing(box.left, box.right, placement_.picViewPort.width());
    const int down = vscScroll_.showing(box.top, box.bottom, placement_.picViewPort.height());
    scrollTo(ScrollBar::hscScroll, across);
    scrollTo(ScrollBar::vscScroll, down);
}

void HTMLLabel::vscScroll_Change(int value) noexcept {
    handle([this, value] { scrollTo(ScrollBar::vscScroll, value); });
}

void HTMLLabel::hscScroll_Change(int value) noexcept {
    handle([this, value] { scrollTo(ScrollBar::hscScroll, value); });
}

bool HTMLLabel::picViewPort_MouseWheel(double notches) noexcept {
    if (!EnableScroll() || vscScroll_.Max == 0) return false;
    handle([this, notches] {
        wheelRest_ -= notches * kLinesPerNotch * vscScroll_.SmallChange;
        const double whole = std::trunc(wheelRest_);
        wheelRest_ -= whole;
        const double value = vscScroll_.Value + whole;
        scrollTo(ScrollBar::vscScroll,
                 static_cast<int>(std::clamp<double>(value, vscScroll_.Min, vscScroll_.Max)));
    });
    return true;
}

// Line steps are not limited: the bar rejects one that would leave the range.
bool HTMLLabel::scrollByKey(std::int16_t KeyCode, std::int16_t Shift) {
    if (!EnableScroll()) return false;
    const auto step = stepOf(KeyCode, Shift);
    if (!step) return false;
    const int value = vscScroll_.after(*step);
    const bool single = *step == ScrollStep::LineUp || *step == ScrollStep::LineDown;
    scrollTo(ScrollBar::vscScroll, single ? value : vscScroll_.limited(value));
    return true;
}

}  // namespace kavrelon
