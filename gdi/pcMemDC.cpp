#include "gdi/pcMemDC.h"

#include <ocidl.h>
#include <olectl.h>

#include <utility>

#include "gdi/GdiHandles.h"
#include "gdi/LogFont.h"
#include "support/Conversions.h"

namespace kavrelon {
namespace {

constexpr int kPointsPerInch = 72;

LOGFONTA describe(const FontDescription& font, HDC context) {
    const int points = roundHalfToEven(font.Size);
    const int height = MulDiv(points, GetDeviceCaps(context, LOGPIXELSY), kPointsPerInch);
    return logFont(font.Name, -height,
                   {.bold = font.Bold,
                    .italic = font.Italic,
                    .underline = font.Underline,
                    .strikethrough = font.Strikethrough});
}

/// A window's context of the screen, for the length of a scope. It is returned with DeleteDC; where the
/// platform refuses that, it is released, since otherwise one context more would be lost each time.
class LentContext {
  public:
    explicit LentContext(HWND window) : window_(window), context_(GetDC(window)) {}
    ~LentContext() {
        if (context_ != nullptr && !DeleteDC(context_)) ReleaseDC(window_, context_);
    }
    LentContext(const LentContext&) = delete;
    LentContext& operator=(const LentContext&) = delete;

    HDC get() const { return context_; }

  private:
    HWND window_;
    HDC context_;
};

}  // namespace

void pcMemDC::Width(LONG value) {
    if (value > mlWidth) resize(value, mlHeight);
}

void pcMemDC::Height(LONG value) {
    if (value > mlHeight) resize(mlWidth, value);
}

void pcMemDC::resize(LONG width, LONG height) {
    if (width > 0 && height > 0) {
        create(width, height);
    } else {
        mlWidth = width;
        mlHeight = height;
    }
}

void pcMemDC::create(LONG width, LONG height) {
    destroy();
    const LentContext screen(mhWnd);
    if (screen.get() == nullptr) return;
    mhDC = CreateCompatibleDC(screen.get());
    if (mhDC != nullptr) makeBitmap(screen.get(), width, height);
    if (mhBmpOld == nullptr) {
        destroy();
        return;
    }
    mlWidth = width;
    mlHeight = height;
}

void pcMemDC::makeBitmap(HDC like, LONG width, LONG height) {
    mhBmp = CreateCompatibleBitmap(like, width, height);
    if (mhBmp != nullptr) mhBmpOld = SelectObject(mhDC, mhBmp);
}

void pcMemDC::releaseBitmap() {
    if (mhBmpOld != nullptr) SelectObject(mhDC, std::exchange(mhBmpOld, nullptr));
    if (mhBmp != nullptr) DeleteObject(std::exchange(mhBmp, nullptr));
}

void pcMemDC::releaseFont(HDC context) {
    if (mhFontOld != nullptr) SelectObject(context, std::exchange(mhFontOld, nullptr));
    if (mhFont != nullptr) DeleteObject(std::exchange(mhFont, nullptr));
}

void pcMemDC::destroy() {
    releaseBitmap();
    const HDC context = std::exchange(mhDC, nullptr);
    if (context != nullptr) DeleteDC(context);
    mlWidth = 0;
    mlHeight = 0;
    // Last: once its context is gone, nothing uses the font.
    releaseFont(context);
}

void pcMemDC::Draw(HDC target, LONG xSrc, LONG ySrc, LONG WidthSrc, LONG HeightSrc, LONG xDst,
                   LONG yDst) const {
    if (!IsMemDC()) return;
    const LONG width = WidthSrc < 1 ? mlWidth : WidthSrc;
    const LONG height = HeightSrc < 1 ? mlHeight : HeightSrc;
    BitBlt(target, xDst, yDst, width, height, mhDC, xSrc, ySrc, SRCCOPY);
}

void pcMemDC::CreateFromPicture(HBITMAP sPic) {
    BITMAP picture{};
    if (GetObjectA(sPic, sizeof picture, &picture) == 0) return;
    Width(picture.bmWidth);
    Height(picture.bmHeight);
    const OwnedContext screen(CreateDCA("DISPLAY", nullptr, nullptr, nullptr));
    const OwnedContext source(CreateCompatibleDC(screen.get()));
    const Selected selected(source.get(), sPic);
    if (selected) BitBlt(mhDC, 0, 0, picture.bmWidth, picture.bmHeight, source.get(), 0, 0, SRCCOPY);
}

void pcMemDC::CreateFromPicture(IPicture* sPic) {
    SHORT type = PICTYPE_NONE;
    OLE_HANDLE handle = 0;
    if (sPic == nullptr || FAILED(sPic->get_Type(&type)) || type != PICTYPE_BITMAP) return;
    if (SUCCEEDED(sPic->get_Handle(&handle))) CreateFromPicture(reinterpret_cast<HBITMAP>(ULONG_PTR{handle}));
}

void pcMemDC::Cls(HDC target) {
    if (!IsMemDC()) return;
    releaseBitmap();
    // Compatible with the screen rather than with the memory context, which is monochrome while it has no
    // bitmap.
    makeBitmap(LentContext(mhWnd).get(), mlWidth, mlHeight);
    if (mhBmpOld == nullptr) {
        destroy();
        return;
    }
    Draw(target);
}

void pcMemDC::SetFont(const FontDescription& oFont) {
    if (!IsMemDC()) return;
    releaseFont(mhDC);
    const LOGFONTA font = describe(oFont, mhDC);
    mhFont = CreateFontIndirectA(&font);
    if (mhFont != nullptr) mhFontOld = SelectObject(mhDC, mhFont);
}

RECT pcMemDC::textExtent(std::string_view text) const {
    RECT extent{};
    DrawTextA(mhDC, text.data(), static_cast<int>(text.size()), &extent, DT_CALCRECT);
    return extent;
}

LONG pcMemDC::TextWidth(std::string_view Value) const {
    const RECT extent = textExtent(Value);
    return extent.right - extent.left + 1;
}

LONG pcMemDC::TextHeight(std::string_view Value) const {
    const RECT extent = textExtent(Value);
    return extent.bottom - extent.top + 1;
}

}  // namespace kavrelon
