#include "htmllabel/HTMLLabel.h"

#include <algorithm>
#include <cmath>

#include "htmllabel/layout/ElementValues.h"
#include "support/Keys.h"

namespace kavrelon {

namespace {

constexpr int kMinimised = 1;
constexpr int kLinesPerNotch = 3;

// A bar for a page of `extent` pixels of which the view port shows `shown`, from `offset` on.
ScrollState scrollBarFor(bool enabled, int extent, int shown, int line, int offset) {
    ScrollState bar;
    bar.Max = std::max(extent - shown, 0);
    bar.visible = enabled && bar.Max > 0;
    bar.Value = enabled ? std::clamp(offset, bar.Min, bar.Max) : 0;
    bar.SmallChange = std::max(line, 1);
    bar.LargeChange = std::max(shown, 1);
    return bar;
}

// Where a bar has to stand for the view port to show the stretch, its start above all.
int valueShowing(const ScrollState& bar, int first, int last, int shown) {
    return std::clamp(std::min(std::max(bar.Value, last - shown), first), bar.Min, bar.Max);
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

// Fits the bars to the page and the parts to the bars. One round is enough: the width of the view port hangs
// on neither bar, and its height on the horizontal one only.
void HTMLLabel::fitParts(Point offset) {
    const Size page = layout_ != nullptr ? layout_->size() : Size{};
    Canvas& canvas = window_->canvas();
    const TextFont font{.face = DefaultFontName(), .points = clampPoints(DefaultFontSize())};
    const int line = canvas.metrics(canvas.font(font)).height();

    const int width = placeLabelParts(outline()).viewPort.width();
    hscScroll_ = scrollBarFor(EnableScroll(), page.width, width, line, offset.x);
    const int height = placeLabelParts(outline()).viewPort.height();
    vscScroll_ = scrollBarFor(EnableScroll(), page.height, height, line, offset.y);
    placement_ = placeLabelParts(outline());

    window_->place(placement_);
    window_->setScrollBar(ScrollBar::Horizontal, hscScroll_);
    window_->setScrollBar(ScrollBar::Vertical, vscScroll_);
}

void HTMLLabel::UserControl_Resize() noexcept {
    handle([this] {
        if (window_ == nullptr) return;
        // The guards are for resizes that should leave the parts where they are; before the first there is
        // nothing to leave.
        if (outerSize_ != Size{}) {
            const auto windowState = window_->parentWindowState();
            if (!windowState || *windowState == kMinimised || !window_->userMode()) return;
        }
        outerSize_ = window_->sizeInTwips();
        const bool scrolls = vscScroll_.Value != 0 || hscScroll_.Value != 0;
        fitParts({});
        if (scrolls) repaint();
    });
}

void HTMLLabel::scrollHome() {
    vscScroll_.Value = 0;
    hscScroll_.Value = 0;
    if (window_ == nullptr) return;
    window_->setScrollBar(ScrollBar::Horizontal, hscScroll_);
    window_->setScrollBar(ScrollBar::Vertical, vscScroll_);
}

// As the bars do: a value out of range is rejected, and a new one is a change that repaints.
void HTMLLabel::scrollTo(ScrollBar bar, int value) {
    ScrollState& state = bar == ScrollBar::Vertical ? vscScroll_ : hscScroll_;
    if (value < state.Min || value > state.Max || value == state.Value) return;
    state.Value = value;
    if (window_ == nullptr) return;
    window_->setScrollBar(bar, state);
    if (window_->userMode() && document_.count() > 0) window_->repaintViewPort();
}

void HTMLLabel::scrollIntoView(const Rect& box) {
    if (!EnableScroll()) return;
    const int across = valueShowing(hscScroll_, box.left, box.right, placement_.viewPort.width());
    const int down = valueShowing(vscScroll_, box.top, box.bottom, placement_.viewPort.height());
    scrollTo(ScrollBar::Horizontal, across);
    scrollTo(ScrollBar::Vertical, down);
}

void HTMLLabel::vscScroll_Change(int value) noexcept {
    handle([this, value] { scrollTo(ScrollBar::Vertical, value); });
}

void HTMLLabel::hscScroll_Change(int value) noexcept {
    handle([this, value] { scrollTo(ScrollBar::Horizontal, value); });
}

bool HTMLLabel::picViewPort_MouseWheel(double notches) noexcept {
    if (!EnableScroll() || vscScroll_.Max == 0) return false;
    handle([this, notches] {
        wheelRest_ -= notches * kLinesPerNotch * vscScroll_.SmallChange;
        const double whole = std::trunc(wheelRest_);
        wheelRest_ -= whole;
        const double value = vscScroll_.Value + whole;
        scrollTo(ScrollBar::Vertical,
                 static_cast<int>(std::clamp<double>(value, vscScroll_.Min, vscScroll_.Max)));
    });
    return true;
}

// Single steps are not clamped: one that would leave the range is rejected by the bar.
bool HTMLLabel::scrollByKey(std::int16_t KeyCode, std::int16_t Shift) {
    if (!EnableScroll()) return false;
    const ScrollState& bar = vscScroll_;
    const bool ctrl = (Shift & shifts::kCtrl) != 0;
    int value = 0;
    switch (KeyCode) {
        case keys::kUp:
            value = bar.Value - bar.SmallChange;
            break;
        case keys::kDown:
            value = bar.Value + bar.SmallChange;
            break;
        case keys::kPageUp:
            value = std::max(bar.Value - bar.LargeChange, bar.Min);
            break;
        case keys::kPageDown:
            value = std::min(bar.Value + bar.LargeChange, bar.Max);
            break;
        case keys::kHome:
            if (!ctrl) return false;
            value = bar.Min;
            break;
        case keys::kEnd:
            if (!ctrl) return false;
            value = bar.Max;
            break;
        default:
            return false;
    }
    scrollTo(ScrollBar::Vertical, value);
    return true;
}

}  // namespace kavrelon
