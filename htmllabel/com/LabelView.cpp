#include "htmllabel/com/LabelView.h"

#include <ocidl.h>

#include <utility>

#include "gdi/GdiHandles.h"
#include "htmllabel/win32/GdiCanvas.h"

namespace kavrelon {
namespace {

constexpr int kHimetricPerInch = 2540;

/// Saves a device context's state, and restores it at the end of a scope.
class SavedState {
  public:
    explicit SavedState(HDC context) : context_(context), saved_(SaveDC(context)) {}
    ~SavedState() { RestoreDC(context_, saved_); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

  private:
    HDC context_;
    int saved_;
};

int resolution(int which) {
    const OwnedContext screen(CreateCompatibleDC(nullptr));
    return GetDeviceCaps(screen.get(), which);
}

/// Maps one unit of the target to a pixel of the page.
void mapPage(HDC target, Size page, const RECTL& bounds, const RECTL* metafileWindow) {
    if (metafileWindow != nullptr) {
        // A metafile has only coordinates: those of the container, at another scale.
        const auto scaled = [](LONG value, int length, LONG lengthInBounds) {
            return MulDiv(static_cast<int>(value), length, static_cast<int>(lengthInBounds));
        };
        const LONG width = bounds.right - bounds.left;
        const LONG height = bounds.bottom - bounds.top;
        // The window's right and bottom are its extent.
        SetWindowOrgEx(target, scaled(metafileWindow->left - bounds.left, page.width, width),
                       scaled(metafileWindow->top - bounds.top, page.height, height), nullptr);
        SetWindowExtEx(target, scaled(metafileWindow->right, page.width, width),
                       scaled(metafileWindow->bottom, page.height, height), nullptr);
        return;
    }
    POINT corners[] = {{bounds.left, bounds.top}, {bounds.right, bounds.bottom}};
    LPtoDP(target, corners, 2);
    SetMapMode(target, MM_ANISOTROPIC);
    SetWindowOrgEx(target, 0, 0, nullptr);
    SetWindowExtEx(target, page.width, page.height, nullptr);
    SetViewportOrgEx(target, static_cast<int>(corners[0].x), static_cast<int>(corners[0].y), nullptr);
    SetViewportExtEx(target, static_cast<int>(corners[1].x - corners[0].x),
                     static_cast<int>(corners[1].y - corners[0].y), nullptr);
}

/// Draws the frame of the control's surface, and returns its width.
int drawBorder(const HTMLLabel& label, HDC target, Size page) {
    if (label.BorderStyle() == 0) return 0;
    RECT edge{0, 0, page.width, page.height};
    if (label.Appearance() == 1) {
        DrawEdge(target, &edge, EDGE_SUNKEN, BF_RECT);
        return GetSystemMetrics(SM_CXEDGE);
    }
    FrameRect(target, &edge, GetSysColorBrush(COLOR_WINDOWFRAME));
    return GetSystemMetrics(SM_CXBORDER);
}

}  // namespace

void LabelView::draw(HTMLLabel& label, Size page, HDC target, const RECTL& bounds,
                     const RECTL* metafileWindow) {
    const bool isEmpty = bounds.left == bounds.right || bounds.top == bounds.bottom;
    if (page.width <= 0 || page.height <= 0 || isEmpty) return;
    const SavedState saved(target);
    mapPage(target, page, bounds, metafileWindow);
    const int border = drawBorder(label, target, page);
    const Size inner{page.width - 2 * border, page.height - 2 * border};
    if (inner.width <= 0 || inner.height <= 0) return;
    IntersectClipRect(target, border, border, border + inner.width, border + inner.height);

    GdiCanvas canvas;
    canvas.setOrigin({-border, -border});
    const GdiCanvas::Target drawing(canvas, target);
    label.drawPage(canvas, inner);
}

void LabelView::setAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    sink_ = ComPtr<IAdviseSink>(sink);
    aspects_ = aspects;
    flags_ = flags;
    if (sink != nullptr && (flags & ADVF_PRIMEFIRST) != 0) changed();
}

HRESULT LabelView::getAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const noexcept {
    if (aspects != nullptr) *aspects = aspects_;
    if (flags != nullptr) *flags = flags_;
    if (sink != nullptr) *sink = ComPtr<IAdviseSink>(sink_).detach();
    return S_OK;
}

void LabelView::changed() {
    if ((aspects_ & DVASPECT_CONTENT) == 0) return;
    const ComPtr<IAdviseSink> sink = (flags_ & ADVF_ONLYONCE) != 0 ? std::exchange(sink_, {}) : sink_;
    if (sink) sink->OnViewChange(DVASPECT_CONTENT, -1);
}

Size toPixels(SIZEL himetric) {
    return {MulDiv(static_cast<int>(himetric.cx), resolution(LOGPIXELSX), kHimetricPerInch),
            MulDiv(static_cast<int>(himetric.cy), resolution(LOGPIXELSY), kHimetricPerInch)};
}

SIZEL toHimetric(Size pixels) {
    return {MulDiv(pixels.width, kHimetricPerInch, resolution(LOGPIXELSX)),
            MulDiv(pixels.height, kHimetricPerInch, resolution(LOGPIXELSY))};
}

}  // namespace kavrelon
