#include "terminal/screen/CursorMark.h"

#include "terminal/screen/TermSurface.h"

namespace kavrelon {

void CursorMark::show(TermSurface* surface, const Rect& block) {
    if (drawn_) return;
    block_ = block;
    inverted_ = surface != nullptr;
    if (inverted_) surface->invertBlock(block_);
    drawn_ = true;
}

void CursorMark::takeOff(TermSurface* surface) {
    if (surface != nullptr && inverted_) surface->invertBlock(block_);
    drawn_ = false;
}

}  // namespace kavrelon
