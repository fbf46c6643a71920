#include "samplehost/com/ControlSite.h"

#include <olectl.h>

#include <utility>

#include "samplehost/com/DispatchObject.h"
#include "support/com/ComText.h"

namespace kavrelon {

STDMETHODIMP ControlFrame::GetWindow(HWND* window) {
    if (window == nullptr) return E_POINTER;
    *window = form_;
    return S_OK;
}

STDMETHODIMP ControlFrame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    active_ = ComPtr<IOleInPlaceActiveObject>(object);
    return S_OK;
}

ControlSite::ControlSite(HWND form, const ComPtr<IDispatch>& parent) : form_(form) {
    *frame_.put() = new ControlFrame(form);
    if (!parent) return;
    // The control as the form's scripts see it: an object whose "Parent" is the form.
    *extender_.put() = new DispatchObject(
        [parent](DISPID, DISPPARAMS&, VARIANT* result) {
            out(result).vt = VT_DISPATCH;
            result->pdispVal = ComPtr<IDispatch>(parent).detach();
            return S_OK;
        },
        {L"Parent"});
}

STDMETHODIMP ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker != nullptr) *moniker = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP ControlSite::GetContainer(IOleContainer** container) {
    if (container != nullptr) *container = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP ControlSite::GetWindow(HWND* window) {
    return frame_->GetWindow(window);
}

STDMETHODIMP ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                           LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
    if (frame == nullptr || document == nullptr || position == nullptr || clip == nullptr ||
        info == nullptr) {
        return E_POINTER;
    }
    *frame = ComPtr<ControlFrame>(frame_).detach();
    *document = nullptr;
    *position = place;
    *clip = place;
    info->fMDIApp = FALSE;
    info->hwndFrame = form_;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

STDMETHODIMP ControlSite::OnInPlaceDeactivate() {
    if (onDeactivate) onDeactivate();
    return S_OK;
}

STDMETHODIMP ControlSite::OnPosRectChange(LPCRECT wanted) {
    if (wanted == nullptr) return E_POINTER;
    if (onPlaceWanted) onPlaceWanted(*wanted);
    return S_OK;
}

STDMETHODIMP ControlSite::GetExtendedControl(IDispatch** extender) {
    if (extender == nullptr) return E_POINTER;
    *extender = ComPtr<IDispatch>(extender_).detach();
    return *extender != nullptr ? S_OK : E_NOTIMPL;
}

STDMETHODIMP ControlSite::TranslateAccelerator(MSG* message, DWORD) {
    return message != nullptr && onKey && onKey(*message) ? S_OK : S_FALSE;
}

STDMETHODIMP ControlSite::OnFocus(BOOL hasFocus) {
    if (onFocus) onFocus(hasFocus != FALSE);
    return S_OK;
}

// Controls ask for ambient properties by their numbers.
STDMETHODIMP ControlSite::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return DISP_E_UNKNOWNNAME;
}

STDMETHODIMP ControlSite::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                 UINT*) {
    if (result == nullptr) return E_POINTER;
    VariantInit(result);
    switch (id) {
        case DISPID_AMBIENT_USERMODE:
            result->vt = VT_BOOL;
            result->boolVal = userMode ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        case DISPID_AMBIENT_UIDEAD:
            result->vt = VT_BOOL;
            result->boolVal = VARIANT_FALSE;
            return S_OK;
        case DISPID_AMBIENT_DISPLAYNAME:
            result->bstrVal = SysAllocString(L"HTMLLabel1");
            result->vt = VT_BSTR;
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

}  // namespace kavrelon
