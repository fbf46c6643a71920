#include "htmllabel/com/LabelActivation.h"

#include <ocidl.h>

#include <utility>

#include "support/com/ComCall.h"
#include "support/win32/KeyState.h"
#include "support/win32/Module.h"

namespace kavrelon {

LabelActivation::LabelActivation(IOleInPlaceActiveObject& object, const LabelSite& site, LabelEvents& events,
                                 std::shared_ptr<HTMLLabel> label)
    : object_(object), site_(site), events_(events), label_(std::move(label)) {
    label_->attach(nullptr, &events_);
}

LabelActivation::~LabelActivation() {
    closeWindow();
    label_->attach(nullptr, nullptr);
}

HWND LabelActivation::window() const noexcept {
    return window_ ? window_->hWnd() : nullptr;
}

void LabelActivation::activate() {
    if (!inPlaceSite_) openWindow();
    if (!window_ || visible_) return;
    visible_ = true;
    window_->show(true);
}

void LabelActivation::openWindow() {
    const auto site = site_.query<IOleInPlaceSite>();
    HWND form = nullptr;
    if (!site || site->CanInPlaceActivate() != S_OK) throw ComError(E_FAIL);
    throwIfFailed(site->GetWindow(&form));
    if (IsWindow(form) == FALSE) throw ComError(OLE_E_INVALIDHWND);
    throwIfFailed(site->OnInPlaceActivate());
    inPlaceSite_ = site;
    RECT place{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    site->GetWindowContext(frame_.put(), document_.put(), &place, &clip, &info);
    try {
        window_ = Win32LabelWindow::create(moduleInstance(), form, place, label_, *this);
        ambientsChanged();
        label_->attach(window_.get(), &events_);
        this->place(place, clip);
    } catch (...) {
        deactivate();
        throw;
    }
    if (const ComPtr<IOleClientSite> client(site_.client()); client) client->ShowObject();
}

void LabelActivation::ambientsChanged() const {
    if (!window_) return;
    // Screen readers call the control by this name as long as its document has no title.
    SetWindowTextW(window(), site_.displayName().c_str());
    // In design mode the designer gets the mouse.
    EnableWindow(window(), site_.runs() ? TRUE : FALSE);
    RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void LabelActivation::closeWindow() noexcept {
    // Drawing without a window may also ask for pictures.
    label_->attach(nullptr, &events_);
    visible_ = false;
    clipped_ = false;
    if (const auto window = std::exchange(window_, nullptr)) window->close();
}

void LabelActivation::activateUi() {
    activate();
    if (window_ && !std::exchange(uiActive_, true)) beginUi();
    if (window_ && uiActive_ && site_.runs() && !hasFocus_) window_->setFocus();
}

void LabelActivation::beginUi() {
    const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
    const HRESULT allowed = site->OnUIActivate();
    if (FAILED(allowed)) uiActive_ = false;
    throwIfFailed(allowed);
    if (!uiActive_) return;
    announceAsActive(&object_);
    if (const ComPtr<IOleInPlaceFrame> frame = frame_) frame->SetBorderSpace(nullptr);
}

void LabelActivation::deactivateUi() {
    if (!std::exchange(uiActive_, false)) return;
    const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
    announceAsActive(nullptr);
    site->OnUIDeactivate(FALSE);
}

void LabelActivation::announceAsActive(IOleInPlaceActiveObject* object) const {
    const ComPtr<IOleInPlaceFrame> frame = frame_;
    const ComPtr<IOleInPlaceUIWindow> document = document_;
    const wchar_t* const name = object != nullptr ? L"HTML Label" : nullptr;
    if (document) document->SetActiveObject(object, name);
    if (frame) frame->SetActiveObject(object, name);
}

void LabelActivation::deactivate() {
    deactivateUi();
    releaseKeyboard();
    const auto site = std::exchange(inPlaceSite_, {});
    if (!site) return;
    if (hasFocus_) focusChanged(false);
    closeWindow();
    frame_ = {};
    document_ = {};
    site->OnInPlaceDeactivate();
}

void LabelActivation::hide() {
    deactivateUi();
    if (!window_ || !std::exchange(visible_, false)) return;
    releaseKeyboard();
    if (window_) window_->show(false);
}

// Neither hiding a window nor destroying it gives the keyboard to another: it would be left in one that is
// not seen, or nowhere.
void LabelActivation::releaseKeyboard() const {
    const HWND own = window();
    const HWND focus = GetFocus();
    if (own != nullptr && (focus == own || IsChild(own, focus) != FALSE)) SetFocus(GetParent(own));
}

void LabelActivation::place(const RECT& place, const RECT& clip) {
    if (!window_) return;
    RECT seen{};
    const bool clipped = IntersectRect(&seen, &place, &clip) != FALSE && !EqualRect(&seen, &place);
    if (clipped || clipped_) {
        OffsetRect(&seen, -place.left, -place.top);
        SetWindowRgn(window_->hWnd(), clipped ? CreateRectRgnIndirect(&seen) : nullptr, TRUE);
        clipped_ = clipped;
    }
    window_->move(place);
}

void LabelActivation::requestSize(Size size) {
    if (!window_) return;
    RECT place{};
    GetWindowRect(window_->hWnd(), &place);
    if (place.right - place.left == size.width && place.bottom - place.top == size.height) return;
    MapWindowPoints(nullptr, GetParent(window_->hWnd()), reinterpret_cast<POINT*>(&place), 2);
    place.right = place.left + size.width;
    place.bottom = place.top + size.height;
    const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
    site->OnPosRectChange(&place);
}

bool LabelActivation::takesKey(MSG& message) {
    if (!window_ || (message.hwnd != window() && !IsChild(window(), message.hwnd))) return false;
    const std::int16_t shift = shiftState();
    const bool isKey = message.message == WM_KEYDOWN && site_.runs();
    if (isKey && label_->picViewPort_KeyDown(static_cast<std::int16_t>(message.wParam), shift)) return true;
    const auto controlSite = site_.query<IOleControlSite>();
    // Containers use the same bits.
    const bool taken =
        controlSite && controlSite->TranslateAccelerator(&message, static_cast<DWORD>(shift)) == S_OK;
    if (isKey && !taken) refusedKey_ = static_cast<LONG>(message.time);
    return taken;
}

// A click gives the control the keyboard without the container's help.
void LabelActivation::focusChanged(bool hasFocus) noexcept {
    if (hasFocus == hasFocus_) return;
    hasFocus_ = hasFocus;
    const ComPtr<IUnknown> self(&object_);
    try {
        if (hasFocus) activateUi();
    } catch (...) {
        // The container does not want this control to be the active one; it still has the focus.
    }
    const auto controlSite = site_.query<IOleControlSite>();
    if (controlSite) controlSite->OnFocus(hasFocus ? TRUE : FALSE);
}

// A label that went on to count as active would have no window to show, and would never make another.
void LabelActivation::labelWindowDestroyed() noexcept {
    const ComPtr<IUnknown> self(&object_);
    try {
        deactivate();
    } catch (...) {
        // The container could not be told everything; the label is inactive all the same.
    }
}

}  // namespace kavrelon
