#pragma once

#include <windows.h>

#include <oleidl.h>

#include "htmllabel/HTMLLabel.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// The label as a picture, and who wants to know when it has changed.
class LabelView {
  public:
    /// Draws the label as it is without a window, with the top of its document: `page` pixels of the screen,
    /// scaled to `bounds` of the target. `metafileWindow` is what the container has made the coordinates of
    /// a metafile, null for other targets.
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

/// The screen's resolution, which sizes without a window are taken at: HIMETRIC (0.01 mm) to pixels and back.
Size toPixels(SIZEL himetric);
SIZEL toHimetric(Size pixels);

}  // namespace kavrelon
