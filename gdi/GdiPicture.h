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
    /// Reads a BMP, GIF, JPEG, PNG, ICO or placeable WMF file; what it is its content tells, not its name. An
    /// animation counts as its first image, an icon as its largest. Null when there is no such file, when it
    /// is no whole picture, and when it or its picture is too large to be meant.
    static std::shared_ptr<GdiPicture> load(const std::wstring& path);
    /// A picture object of the automation libraries, kept for as long as this one lives; null for none and
    /// for an empty one.
    static std::shared_ptr<GdiPicture> from(IPicture* picture);

    /// The picture as one that can be drawn here; null for another platform's.
    static const GdiPicture* of(const Picture& picture) { return dynamic_cast<const GdiPicture*>(&picture); }

    Size size() const override { return size_; }
    bool opaque() const override { return opaque_; }
    /// Draws it scaled to `place`, on what is there already where it is transparent. `target` is left as it
    /// was.
    void draw(HDC target, const RECT& place) const noexcept;

  private:
    explicit GdiPicture(PixelBitmap pixels);
    GdiPicture(ComPtr<IPicture> object, Size size);

    void drawObject(HDC target, const RECT& place) const noexcept;
    bool renderTo(PixelBitmap& pixels) const;
    /// Empty for an object that could not be made pixels of.
    const PixelBitmap& scaledTo(Size wanted) const noexcept;

    // One of the two is there.
    PixelBitmap pixels_;
    ComPtr<IPicture> object_;
    Size size_;
    bool opaque_ = false;
    // As last drawn: pictures stay where they are, and are drawn again whenever something under them changes.
    mutable PixelBitmap scaled_;
};

}  // namespace kavrelon
