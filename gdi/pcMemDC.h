#pragma once

#include <windows.h>

#include <string_view>

#include "gdi/FontDescription.h"

struct IPicture;

namespace kavrelon {

/// An off-screen drawing surface: a memory device context compatible with a window's, a bitmap that only
/// grows, and at most one font. Sizes and places are pixels.
///
/// No member raises an error: when the platform fails there is no surface (`IsMemDC` is false), and what
/// needs one does nothing. All handles belong to the object.
class pcMemDC {
  public:
    pcMemDC() = default;
    ~pcMemDC() { destroy(); }
    pcMemDC(const pcMemDC&) = delete;
    pcMemDC& operator=(const pcMemDC&) = delete;

    bool IsMemDC() const { return mhDC != nullptr; }
    /// The memory context, for drawing with platform calls; null without a surface.
    HDC hDc() const { return mhDC; }

    /// The window with whose screen the surface is compatible; set before the size. It must not be a window
    /// with a context of its own, since making a surface deletes the context that the window hands out.
    HWND hWnd() const { return mhWnd; }
    void hWnd(HWND window) { mhWnd = window; }

    /// A larger value makes the surface anew, losing its content and font, as soon as both sizes are known; a
    /// value that is not larger does nothing, so that work in varying sizes does not make it again and again.
    LONG Width() const { return mlWidth; }
    void Width(LONG value);
    LONG Height() const { return mlHeight; }
    void Height(LONG value);

    /// Copies a part of the surface to another context; a source size below 1 means the whole of it.
    void Draw(HDC target, LONG xSrc = 0, LONG ySrc = 0, LONG WidthSrc = 0, LONG HeightSrc = 0, LONG xDst = 0,
              LONG yDst = 0) const;
    /// Grows the surface to a picture's size and copies the picture to its top left corner. The picture stays
    /// the caller's; one that is no bitmap is ignored.
    void CreateFromPicture(HBITMAP sPic);
    void CreateFromPicture(IPicture* sPic);
    /// Replaces the bitmap by a blank one and copies it to `target`.
    void Cls(HDC target);

    void SetFont(const FontDescription& oFont);
    /// The size of a text (of the ANSI code page) in the font, one pixel more than it covers.
    LONG TextWidth(std::string_view Value) const;
    LONG TextHeight(std::string_view Value) const;

  private:
    void resize(LONG width, LONG height);
    void create(LONG width, LONG height);
    void makeBitmap(HDC like, LONG width, LONG height);
    void destroy();
    void releaseBitmap();
    void releaseFont(HDC context);
    RECT textExtent(std::string_view text) const;

    HFONT mhFont = nullptr;
    HGDIOBJ mhFontOld = nullptr;
    HWND mhWnd = nullptr;
    HDC mhDC = nullptr;
    HBITMAP mhBmp = nullptr;
    HGDIOBJ mhBmpOld = nullptr;
    LONG mlWidth = 0;
    LONG mlHeight = 0;
};

}  // namespace kavrelon
