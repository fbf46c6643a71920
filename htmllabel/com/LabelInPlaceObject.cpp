#include "htmllabel/com/LabelInPlaceObject.h"

namespace kavrelon {

STDMETHODIMP LabelInPlaceObject::GetWindow(HWND* window) {
    if (window == nullptr) return E_POINTER;
    *window = parts().activation.window();
    return *window != nullptr ? S_OK : E_FAIL;
}

STDMETHODIMP LabelInPlaceObject::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

STDMETHODIMP LabelInPlaceObject::InPlaceDeactivate() {
    return call<IOleInPlaceObject>(this, "InPlaceDeactivate", [&] { parts().activation.deactivate(); });
}

STDMETHODIMP LabelInPlaceObject::UIDeactivate() {
    return call<IOleInPlaceObject>(this, "UIDeactivate", [&] { parts().activation.deactivateUi(); });
}

STDMETHODIMP LabelInPlaceObject::SetObjectRects(LPCRECT place, LPCRECT clip) {
    if (place == nullptr) return E_POINTER;
    const RECT wanted = *place;
    const RECT seen = clip != nullptr ? *clip : wanted;
    return call<IOleInPlaceObject>(this, "SetObjectRects", [&] { parts().activation.place(wanted, seen); });
}

STDMETHODIMP LabelInPlaceObject::ReactivateAndUndo() {
    return INPLACE_E_NOTUNDOABLE;
}

STDMETHODIMP LabelInPlaceObject::TranslateAccelerator(LPMSG message) {
    if (message == nullptr) return E_POINTER;
    return call<IOleInPlaceActiveObject>(this, "TranslateAccelerator", [&]() -> HRESULT {
        return parts().activation.takesKey(*message) ? S_OK : S_FALSE;
    });
}

STDMETHODIMP LabelInPlaceObject::OnFrameWindowActivate(BOOL) {
    return S_OK;
}

STDMETHODIMP LabelInPlaceObject::OnDocWindowActivate(BOOL) {
    return S_OK;
}

STDMETHODIMP LabelInPlaceObject::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) {
    return S_OK;
}

STDMETHODIMP LabelInPlaceObject::EnableModeless(BOOL) {
    return S_OK;
}

}  // namespace kavrelon
