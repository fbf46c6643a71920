#include "htmllabel/com/LabelOleObject.h"

#include <olectl.h>

#include <algorithm>
#include <cwchar>

#include "kavrelon.h"

namespace kavrelon {

STDMETHODIMP LabelOleObject::SetClientSite(IOleClientSite* site) {
    return call<IOleObject>(this, "SetClientSite", [&] {
        // A control that moves to another site leaves its form.
        if (site != parts().site.client()) parts().activation.deactivate();
        parts().site.set(site);
    });
}

STDMETHODIMP LabelOleObject::GetClientSite(IOleClientSite** site) {
    if (site == nullptr) return E_POINTER;
    *site = ComPtr<IOleClientSite>(parts().site.client()).detach();
    return S_OK;
}

STDMETHODIMP LabelOleObject::SetHostNames(LPCOLESTR, LPCOLESTR) {
    return S_OK;
}

STDMETHODIMP LabelOleObject::Close(DWORD saveOption) {
    return call<IOleObject>(this, "Close", [&] {
        const ComPtr<IOleClientSite> site(parts().site.client());
        parts().activation.deactivate();
        if (saveOption != OLECLOSE_NOSAVE && parts().isDirty && site) site->SaveObject();
        if (const auto holder = parts().adviseHolder) holder->SendOnClose();
    });
}

STDMETHODIMP LabelOleObject::SetMoniker(DWORD, IMoniker*) {
    return E_NOTIMPL;
}

STDMETHODIMP LabelOleObject::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker != nullptr) *moniker = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP LabelOleObject::InitFromData(IDataObject*, BOOL, DWORD) {
    return E_NOTIMPL;
}

STDMETHODIMP LabelOleObject::GetClipboardData(DWORD, IDataObject** data) {
    if (data != nullptr) *data = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP LabelOleObject::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) {
    return call<IOleObject>(this, "DoVerb", [&] { return doVerb(verb); });
}

HRESULT LabelOleObject::doVerb(LONG verb) {
    LabelActivation& activation = parts().activation;
    switch (verb) {
        case OLEIVERB_SHOW:
        case OLEIVERB_INPLACEACTIVATE:
            activation.activate();
            return S_OK;
        case OLEIVERB_PRIMARY:
        case OLEIVERB_UIACTIVATE:
            activation.activateUi();
            return S_OK;
        case OLEIVERB_HIDE:
            activation.hide();
            return S_OK;
        case OLEIVERB_DISCARDUNDOSTATE:
            return S_OK;
        default:
            // An unknown positive verb counts as the primary one.
            if (verb < 0) return E_NOTIMPL;
            activation.activateUi();
            return OLEOBJ_S_INVALIDVERB;
    }
}

// There are none: a label can only be shown.
STDMETHODIMP LabelOleObject::EnumVerbs(IEnumOLEVERB** enumerator) {
    if (enumerator == nullptr) return E_POINTER;
    *enumerator = nullptr;
    return OLEOBJ_E_NOVERBS;
}

STDMETHODIMP LabelOleObject::Update() {
    return S_OK;
}

STDMETHODIMP LabelOleObject::IsUpToDate() {
    return S_OK;
}

STDMETHODIMP LabelOleObject::GetUserClassID(CLSID* clsid) {
    if (clsid == nullptr) return E_POINTER;
    *clsid = CLSID_HTMLLabel;
    return S_OK;
}

STDMETHODIMP LabelOleObject::GetUserType(DWORD, LPOLESTR* name) {
    static constexpr wchar_t kName[] = L"HTML Label";
    if (name == nullptr) return E_POINTER;
    *name = static_cast<LPOLESTR>(CoTaskMemAlloc(sizeof kName));
    if (*name == nullptr) return E_OUTOFMEMORY;
    std::wmemcpy(*name, kName, sizeof kName / sizeof *kName);
    return S_OK;
}

STDMETHODIMP LabelOleObject::SetExtent(DWORD aspect, SIZEL* size) {
    if (size == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    const SIZEL extent{std::max(size->cx, 0L), std::max(size->cy, 0L)};
    return call<IOleObject>(this, "SetExtent", [&] {
        const SIZEL before = std::exchange(parts().extent, extent);
        if (before.cx == extent.cx && before.cy == extent.cy) return;
        parts().isDirty = true;
        parts().activation.requestSize(toPixels(extent));
        parts().view.changed();
    });
}

STDMETHODIMP LabelOleObject::GetExtent(DWORD aspect, SIZEL* size) {
    if (size == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *size = parts().extent;
    return S_OK;
}

STDMETHODIMP LabelOleObject::Advise(IAdviseSink* sink, DWORD* cookie) {
    ComPtr<IOleAdviseHolder>& holder = parts().adviseHolder;
    if (!holder) {
        const HRESULT created = CreateOleAdviseHolder(holder.put());
        if (FAILED(created)) return created;
    }
    return holder->Advise(sink, cookie);
}

STDMETHODIMP LabelOleObject::Unadvise(DWORD cookie) {
    const ComPtr<IOleAdviseHolder> holder = parts().adviseHolder;
    return holder ? holder->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

STDMETHODIMP LabelOleObject::EnumAdvise(IEnumSTATDATA** enumerator) {
    if (enumerator == nullptr) return E_POINTER;
    *enumerator = nullptr;
    const ComPtr<IOleAdviseHolder> holder = parts().adviseHolder;
    return holder ? holder->EnumAdvise(enumerator) : S_OK;
}

STDMETHODIMP LabelOleObject::GetMiscStatus(DWORD aspect, DWORD* status) {
    if (status == nullptr) return E_POINTER;
    *status = aspect == DVASPECT_CONTENT ? kMiscStatus : 0;
    return aspect == DVASPECT_CONTENT ? S_OK : DV_E_DVASPECT;
}

STDMETHODIMP LabelOleObject::SetColorScheme(LOGPALETTE*) {
    return E_NOTIMPL;
}

STDMETHODIMP LabelOleObject::GetControlInfo(CONTROLINFO* info) {
    if (info == nullptr) return E_POINTER;
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = 0;
    return S_OK;
}

STDMETHODIMP LabelOleObject::OnMnemonic(MSG*) {
    return S_OK;
}

STDMETHODIMP LabelOleObject::OnAmbientPropertyChange(DISPID) {
    return call<IOleControl>(this, "OnAmbientPropertyChange", [&] {
        parts().site.refreshAmbients();
        parts().activation.ambientsChanged();
    });
}

STDMETHODIMP LabelOleObject::FreezeEvents(BOOL freeze) {
    if (freeze != FALSE) {
        parts().events.freeze();
    } else {
        parts().events.thaw();
    }
    return S_OK;
}

}  // namespace kavrelon
