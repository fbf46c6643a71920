#pragma once

#include <windows.h>

#include <span>

#include "gdi/GdiHandles.h"
#include "support/Pixels.h"

namespace kavrelon {

/// A bitmap whose pixels are in memory, in rows from the top down. An empty one has no pixels.
class PixelBitmap {
  public:
    PixelBitmap() = default;
    /// All pixels are clear. Stays empty when the platform has no memory for it.
    explicit PixelBitmap(Size size);

    explicit operator bool() const { return bitmap_ != nullptr; }
    Size size() const { return size_; }
    std::span<Pixel> pixels() const;
    /// Calls `draw` with a context that draws on the bitmap. False when there is no such context.
    template <class Draw>
    bool paint(Draw draw) const {
        const OwnedContext context(CreateCompatibleDC(nullptr));
        const Selected selected(context.get(), bitmap_.get());
        if (!selected) return false;
        draw(context.get());
        GdiFlush();
        return true;
    }
    /// Draws it stretched to `place`; an `opaque` one needs no blending.
    void draw(HDC target, const RECT& place, bool opaque) const noexcept;

  private:
    Bitmap bitmap_;
    Pixel* first_ = nullptr;
    Size size_;
};

}  // namespace kavrelon
