#include "gdi/PixelBitmap.h"

namespace kavrelon {
namespace {

/// Whether a picture of the right size is, or may later become, stretched: a metafile can be played at any
/// size.
bool isScaled(HDC target) {
    const DWORD type = GetObjectType(target);
    return GetMapMode(target) != MM_TEXT || (type != OBJ_DC && type != OBJ_MEMDC);
}

}  // namespace

PixelBitmap::PixelBitmap(Size size) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = -size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap_ == nullptr) return;
    first_ = static_cast<Pixel*>(bits);
    size_ = size;
}

std::span<Pixel> PixelBitmap::pixels() const {
    return {first_, static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height)};
}

void PixelBitmap::draw(HDC target, const RECT& place, bool opaque) const noexcept {
    const OwnedContext source(CreateCompatibleDC(target));
    const Selected selected(source.get(), bitmap_.get());
    if (!selected) return;
    const int width = static_cast<int>(place.right - place.left);
    const int height = static_cast<int>(place.bottom - place.top);
    // Pixels that the context's scale drops are mixed in. That takes too long for a picture far larger than
    // its window. The platform wants the origin to be set after the mode.
    const int mode = SetStretchBltMode(target, isScaled(target) ? HALFTONE : COLORONCOLOR);
    POINT origin{};
    SetBrushOrgEx(target, 0, 0, &origin);
    if (opaque) {
        StretchBlt(target, place.left, place.top, width, height, source.get(), 0, 0, size_.width,
                   size_.height, SRCCOPY);
    } else {
        constexpr BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        AlphaBlend(target, place.left, place.top, width, height, source.get(), 0, 0, size_.width,
                   size_.height, blend);
    }
    SetStretchBltMode(target, mode);
    SetBrushOrgEx(target, static_cast<int>(origin.x), static_cast<int>(origin.y), nullptr);
}

}  // namespace kavrelon
