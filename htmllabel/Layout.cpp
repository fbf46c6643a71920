#include "htmllabel/Layout.h"

namespace kavrelon {

struct Layout::State {
    Size size;
};

Layout::Layout() : state_(std::make_unique<State>()) {}
Layout::~Layout() = default;

void Layout::measure(const HTMLDocument& /*document*/, const LayoutDefaults& /*defaults*/,
                     PictureSource& /*pictures*/, Canvas& /*canvas*/) {}

void Layout::place(HTMLDocument& /*document*/, int width) {
    state_->size = {width, 0};
}

Size Layout::size() const {
    return state_->size;
}

void Layout::draw(Canvas& /*canvas*/, const Rect& /*part*/) const {}

std::vector<TextRun> Layout::runs() const {
    return {};
}

}  // namespace kavrelon
