#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "gdi/PixelBitmap.h"
#include "support/Picture.h"
#include "support/com/ComPtr.h"

struct IPicture;

namespace kavrelon {

/// A picture that can be drawn on a device context.
class GdiPicture final : public Picture {
  public:
    /// Reads a BMP, GIF, JPEG, PNG, ICO or placeable WMF file; the content decides which it is, not the name.
    /// An animation counts as its first image, an icon as its largest. Null when the file is missing, is not
    /// a complete picture, or is too large, or its picture is.
    static std::shared_ptr<GdiPicture> load(const std::wstring& path);
    /// A picture object of the automation libraries, kept for as long as this one lives. Null for a null or
    /// empty object.
    static std::shared_ptr<GdiPicture> from(IPicture* picture);

    /// The picture as a `GdiPicture`; null for one of another platform.
    static const GdiPicture* of(const Picture& picture) { return dynamic_cast<const GdiPicture*>(&picture); }

    Size size() const override { return size_; }
    bool opaque() const override { return opaque_; }
    /// Draws it scaled to `place`, over the present content where it is transparent. Restores the state of
    /// `target`.
    void draw(HDC target, const RECT& place) const noexcept;

  private:
    explicit GdiPicture(PixelBitmap pixels);
    GdiPicture(ComPtr<IPicture> object, Size size);

    void drawObject(HDC target, const RECT& place) const noexcept;
    bool renderTo(PixelBitmap& pixels) const;
    /// Empty for an object that could not be rendered to pixels.
    const PixelBitmap& scaledTo(Size wanted) const noexcept;

    // Exactly one of the two is set.
    PixelBitmap pixels_;
    ComPtr<IPicture> object_;
    Size size_;
    bool opaque_ = false;
    // The pixels at the size last drawn: a picture is drawn again whenever something under it changes, mostly
    // at the same size.
    mutable PixelBitmap scaled_;
};

}  // namespace kavrelon
