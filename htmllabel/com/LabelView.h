#pragma once

#include <windows.h>

#include <oleidl.h>

#include "htmllabel/HTMLLabel.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// The label as a picture, and the sink that is told of changes.
class LabelView {
  public:
    /// Draws the label without a window, from the top of its document: `page` pixels of the screen, scaled to
    /// `bounds` of the target. `metafileWindow` is the coordinate system of a metafile; null for other
    /// targets.
    static void draw(HTMLLabel& label, Size page, HDC target, const RECTL& bounds,
                     const RECTL* metafileWindow);

    void setAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink);
    HRESULT getAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const noexcept;
    void changed();

  private:
    ComPtr<IAdviseSink> sink_;
    DWORD aspects_ = 0;
    DWORD flags_ = 0;
};

/// Convert HIMETRIC (0.01 mm) to pixels and back, at the screen's resolution.
Size toPixels(SIZEL himetric);
SIZEL toHimetric(Size pixels);

}  // namespace kavrelon
