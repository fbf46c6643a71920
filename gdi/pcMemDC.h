#pragma once

#include <windows.h>

#include <string_view>

#include "gdi/FontDescription.h"

struct IPicture;

namespace kavrelon {

/// An off-screen drawing surface: a memory device context compatible with a window's, a bitmap that only
/// grows, and at most one font. Sizes and positions are in pixels.
///
/// No member throws: when the platform fails there is no surface (`IsMemDC` is false), and members that need
/// one do nothing. The object owns all its handles.
class pcMemDC {
  public:
    pcMemDC() = default;
    ~pcMemDC() { destroy(); }
    pcMemDC(const pcMemDC&) = delete;
    pcMemDC& operator=(const pcMemDC&) = delete;

    bool IsMemDC() const { return mhDC != nullptr; }
    /// The memory context, for drawing with platform calls; null without a surface.
    HDC hDc() const { return mhDC; }

    /// The window whose screen the surface is compatible with; set it before the size. It must not be a
    /// window with its own context (CS_OWNDC), since creating a surface deletes the context that GetDC
    /// returns.
    HWND hWnd() const { return mhWnd; }
    void hWnd(HWND window) { mhWnd = window; }

    /// A larger value creates a new surface, without the content and font of the old one, as soon as both
    /// sizes are known. Any other value does nothing, so that varying sizes do not recreate the surface each
    /// time.
    LONG Width() const { return mlWidth; }
    void Width(LONG value);
    LONG Height() const { return mlHeight; }
    void Height(LONG value);

    /// Copies a part of the surface to another context; a source size below 1 means the whole surface.
    void Draw(HDC target, LONG xSrc = 0, LONG ySrc = 0, LONG WidthSrc = 0, LONG HeightSrc = 0, LONG xDst = 0,
              LONG yDst = 0) const;
    /// Grows the surface to a picture's size and copies the picture to its top left corner. The caller keeps
    /// the picture; one that is no bitmap is ignored.
    void CreateFromPicture(HBITMAP sPic);
    void CreateFromPicture(IPicture* sPic);
    /// Replaces the bitmap by a blank one and copies it to `target`.
    void Cls(HDC target);

    void SetFont(const FontDescription& oFont);
    /// The size of a text (in the ANSI code page) in the font, plus one pixel.
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
