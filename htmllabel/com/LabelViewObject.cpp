#include "htmllabel/com/LabelViewObject.h"

namespace kavrelon {
namespace {

/// The index that stands for all of an object, the only one that there is.
constexpr LONG kWhole = -1;

}  // namespace

STDMETHODIMP LabelViewObject::Draw(DWORD aspect, LONG index, void*, DVTARGETDEVICE*, HDC, HDC target,
                                   LPCRECTL bounds, LPCRECTL metafileWindow,
                                   BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (index != kWhole) return DV_E_LINDEX;
    if (target == nullptr || bounds == nullptr) return E_INVALIDARG;
    return call<IViewObjectEx>(this, "Draw", [&] {
        LabelView::draw(*parts().label, toPixels(parts().extent), target, *bounds, metafileWindow);
    });
}

STDMETHODIMP LabelViewObject::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors) {
    if (colors == nullptr) return E_POINTER;
    *colors = nullptr;
    return S_FALSE;
}

STDMETHODIMP LabelViewObject::Freeze(DWORD, LONG, void*, DWORD*) {
    return E_NOTIMPL;
}

STDMETHODIMP LabelViewObject::Unfreeze(DWORD) {
    return E_NOTIMPL;
}

STDMETHODIMP LabelViewObject::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return call<IViewObjectEx>(this, "SetAdvise", [&] { parts().view.setAdvise(aspects, flags, sink); });
}

STDMETHODIMP LabelViewObject::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    return parts().view.getAdvise(aspects, flags, sink);
}

STDMETHODIMP LabelViewObject::GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE*, LPSIZEL size) {
    if (size == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (index != kWhole) return DV_E_LINDEX;
    *size = parts().extent;
    return S_OK;
}

STDMETHODIMP LabelViewObject::GetRect(DWORD aspect, LPRECTL place) {
    if (place == nullptr) return E_POINTER;
    *place = {};
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *place = {0, 0, parts().extent.cx, parts().extent.cy};
    return S_OK;
}

STDMETHODIMP LabelViewObject::GetViewStatus(DWORD* status) {
    if (status == nullptr) return E_POINTER;
    *status = VIEWSTATUS_OPAQUE;
    return S_OK;
}

STDMETHODIMP LabelViewObject::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG, DWORD* result) {
    if (bounds == nullptr || result == nullptr) return E_POINTER;
    *result = HITRESULT_OUTSIDE;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (PtInRect(bounds, point) != FALSE) *result = HITRESULT_HIT;
    return S_OK;
}

STDMETHODIMP LabelViewObject::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT place, LONG, DWORD* result) {
    if (bounds == nullptr || place == nullptr || result == nullptr) return E_POINTER;
    *result = HITRESULT_OUTSIDE;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    RECT common{};
    if (IntersectRect(&common, bounds, place) != FALSE) *result = HITRESULT_HIT;
    return S_OK;
}

STDMETHODIMP LabelViewObject::GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) {
    return E_NOTIMPL;
}

}  // namespace kavrelon
