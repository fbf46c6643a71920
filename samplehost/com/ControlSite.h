#pragma once

#include <windows.h>

#include <ocidl.h>

#include <functional>

#include "samplehost/com/UntypedDispatch.h"
#include "support/com/ComPtr.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// The frame window of a form, as far as a control needs one: it notes which object gets the form's keys
/// first. A form has one frame and no document windows, so the frame answers for those too.
class ControlFrame final : public Implements<Extending<IOleInPlaceFrame, IOleInPlaceUIWindow, IOleWindow>> {
  public:
    explicit ControlFrame(HWND form) : form_(form) {}

    IOleInPlaceActiveObject* activeObject() const { return active_.get(); }

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

  private:
    HWND form_;
    ComPtr<IOleInPlaceActiveObject> active_;
};

/// A control's connection to its form: the form sets properties and handlers, the control calls back.
class ControlSite final : public Implements<IOleClientSite, Extending<IOleInPlaceSite, IOleWindow>,
                                            IOleControlSite, UntypedDispatch> {
  public:
    /// `form` is the window. `parent` is the form's automation object, which the control finds as its
    /// "Parent"; may be null.
    ControlSite(HWND form, const ComPtr<IDispatch>& parent);

    ControlFrame& frame() { return *frame_; }
    /// The rectangle for the control, in pixels of the form.
    RECT place{};
    /// Whether the form runs; otherwise it is being designed.
    bool userMode = true;
    /// Gets a key that the control leaves to the form; returns true when the form has used it.
    std::function<bool(const MSG& message)> onKey;
    std::function<void(bool hasFocus)> onFocus;
    /// The control's window is gone from the form.
    std::function<void()> onDeactivate;
    /// The control asks for another rectangle.
    std::function<void(const RECT& wanted)> onPlaceWanted;

    // IOleClientSite
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
    STDMETHODIMP GetContainer(IOleContainer** container) override;
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleInPlaceSite
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override;
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT wanted) override;

    // IOleControlSite
    STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
    STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch** extender) override;
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG* message, DWORD modifiers) override;
    STDMETHODIMP OnFocus(BOOL hasFocus) override;
    STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

    // IDispatch: the ambient properties
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  private:
    HWND form_;
    ComPtr<IDispatch> extender_;
    ComPtr<ControlFrame> frame_;
};

}  // namespace kavrelon
