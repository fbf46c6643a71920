#pragma once

#include <windows.h>

#include <span>

#include "gdi/GdiHandles.h"
#include "support/Pixels.h"

namespace kavrelon {

/// A bitmap whose pixels lie in memory, rows from the top down. An empty one has no pixels.
class PixelBitmap {
  public:
    PixelBitmap() = default;
    /// All pixels clear; stays empty when the platform has no memory for it.
    explicit PixelBitmap(Size size);

    explicit operator bool() const { return bitmap_ != nullptr; }
    Size size() const { return size_; }
    std::span<Pixel> pixels() const;
    /// Has `draw` draw on it, in a context of its own. False when there is none.
    template <class Draw>
    bool paint(Draw draw) const {
        const OwnedContext context(CreateCompatibleDC(nullptr));
        const Selected selected(context.get(), bitmap_.get());
        if (!selected) return false;
        draw(context.get());
        GdiFlush();
        return true;
    }
    /// Draws it stretched to `place`; `opaque` says that it needs no blending.
    void draw(HDC target, const RECT& place, bool opaque) const noexcept;

  private:
    Bitmap bitmap_;
    Pixel* first_ = nullptr;
    Size size_;
};

}  // namespace kavrelon
