#include "htmllabel/layout/Layout.h"

#include <algorithm>
#include <optional>

#include "htmllabel/layout/DisplayList.h"
#include "htmllabel/layout/ElementValues.h"
#include "htmllabel/layout/Flow.h"
#include "htmllabel/layout/FlowBuilder.h"
#include "htmllabel/layout/FlowPlacer.h"

// How a page is laid out
//
// What does not depend on the page's width is done once: `FlowBuilder` walks over the records and writes a
// `Flow`, a list of texts, pictures, blocks and tables in which every word is measured and every table knows
// how narrow and how wide it can be. `FlowPlacer` then walks over the flow for each width and puts everything
// in its place in a `DisplayList`, which draws it as often as it is painted.

namespace kavrelon {
namespace {

constexpr int kMostMargin = 1000;

}  // namespace

struct Layout::State {
    std::optional<Flow> flow;
    DisplayList list;
    Size size;
    int margin = 0;
    Colour background = kButtonFaceColour;
    const Picture* pagePicture = nullptr;

    void drawPagePicture(Canvas& canvas, const Rect& part) const;
};

Layout::Layout() : state_(std::make_unique<State>()) {}
Layout::~Layout() = default;

void Layout::measure(const HTMLDocument& document, const LayoutDefaults& defaults, PictureSource& pictures,
                     Canvas& canvas) {
    state_->list.clear(0);
    state_->size = {};
    const PixelScale scale(canvas.pixelsPerInch());
    state_->margin = scale(clampPixels(defaults.DefaultPadding, kMostMargin));
    state_->pagePicture =
        document.mstrBackground().empty() ? nullptr : pictures.picture(document.mstrBackground());
    state_->flow.emplace(scale);
    FlowBuilder(document, defaults, pictures, canvas, *state_->flow).build();
}

void Layout::placeUnmarked(const HTMLDocument& document, int width, int height) {
    if (!state_->flow) return;
    const Flow& flow = *state_->flow;
    const int margin = state_->margin;
    state_->background = document.mlngBodyBgColor();
    DisplayList& list = state_->list;
    list.clear(flow.marks.size());
    const int room = std::max(clampPixels(width) - 2 * margin, 0);
    const int pageHeight = std::max(clampPixels(height) - 2 * margin, 0);
    const int taken = FlowPlacer(flow, list, pageHeight).place(room, state_->background);
    list.resolve({margin, margin});
    const Size extent = list.extent();
    state_->size = {std::max(width, extent.width + margin), std::max(taken + margin, extent.height) + margin};
}

void Layout::place(HTMLDocument& document, int width, int height) {
    if (!state_->flow) return;
    placeUnmarked(document, width, height);
    const auto& marks = state_->flow->marks;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        document.setHitBox(marks[i], state_->list.markPlace(static_cast<std::uint32_t>(i)));
    }
}

Size Layout::size() const {
    return state_->size;
}

void Layout::State::drawPagePicture(Canvas& canvas, const Rect& part) const {
    if (pagePicture == nullptr || !flow) return;
    Size tile = flow->scale(pagePicture->size());
    if (tile.width <= 0 || tile.height <= 0) return;
    // A picture one pixel wide or high looks the same when it is stretched, and takes one call then.
    if (tile.width == 1) tile.width = std::max(part.right, 1);
    if (tile.height == 1) tile.height = std::max(part.bottom, 1);
    for (int y = part.top - part.top % tile.height; y < part.bottom; y += tile.height) {
        for (int x = part.left - part.left % tile.width; x < part.right; x += tile.width) {
            canvas.drawPicture(*pagePicture, {x, y, x + tile.width, y + tile.height});
        }
    }
}

void Layout::draw(Canvas& canvas, const Rect& part) const {
    canvas.fill(part, state_->background);
    state_->drawPagePicture(canvas, part);
    if (state_->flow) state_->list.draw(canvas, state_->flow->styles, part);
}

std::vector<TextRun> Layout::runs() const {
    return state_->list.runs();
}

}  // namespace kavrelon
