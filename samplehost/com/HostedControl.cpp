#include "samplehost/com/HostedControl.h"

#include <olectl.h>

#include <utility>

#include "samplehost/com/ComFailure.h"

namespace kavrelon {
namespace {

SIZEL toHimetric(const RECT& place) {
    constexpr int kHimetricPerInch = 2540;
    const HDC screen = GetDC(nullptr);
    const SIZEL size{MulDiv(static_cast<int>(place.right - place.left), kHimetricPerInch,
                            GetDeviceCaps(screen, LOGPIXELSX)),
                     MulDiv(static_cast<int>(place.bottom - place.top), kHimetricPerInch,
                            GetDeviceCaps(screen, LOGPIXELSY))};
    ReleaseDC(nullptr, screen);
    return size;
}

void initialise(IUnknown* control, IPropertyBag* saved) {
    const ComPtr<IUnknown> object(control);
    if (saved != nullptr) {
        const auto persistence = object.query<IPersistPropertyBag>();
        check(persistence ? persistence->Load(saved, nullptr) : E_NOINTERFACE,
              "The control's properties could not be read");
    } else if (const auto persistence = object.query<IPersistStreamInit>()) {
        check(persistence->InitNew(), "The control could not be initialised");
    }
}

}  // namespace

HostedControl::HostedControl(ComPtr<IUnknown> control, HWND form, IDispatch* parent, IPropertyBag* saved)
    : control_(std::move(control)) {
    *site_.put() = new ControlSite(form, ComPtr<IDispatch>(parent));
    site_->onPlaceWanted = [this](const RECT& wanted) { move(wanted); };
    const auto object = query<IOleObject>();
    check(object ? object->SetClientSite(site_.get()) : E_NOINTERFACE, "The control could not be taken in");
    initialise(control_.get(), saved);
}

HostedControl::~HostedControl() {
    close();
}

HWND HostedControl::window() const {
    HWND window = nullptr;
    if (const auto inPlace = query<IOleInPlaceObject>()) inPlace->GetWindow(&window);
    return window;
}

void HostedControl::show(const RECT& place) {
    move(place);
    check(query<IOleObject>()->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.get(), 0, nullptr, &place),
          "The control could not be shown");
}

void HostedControl::move(const RECT& place) {
    site_->place = place;
    SIZEL size = toHimetric(place);
    query<IOleObject>()->SetExtent(DVASPECT_CONTENT, &size);
    if (window() != nullptr) query<IOleInPlaceObject>()->SetObjectRects(&place, &place);
}

void HostedControl::takeFocus() {
    check(query<IOleObject>()->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site_.get(), 0, nullptr, &site_->place),
          "The control could not be given the keyboard");
}

bool HostedControl::translate(MSG& message) {
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (!isKey || !site_) return false;
    const ComPtr<IOleInPlaceActiveObject> active(site_->frame().activeObject());
    return active && active->TranslateAccelerator(&message) == S_OK;
}

void HostedControl::connect(IDispatch& sink) {
    GUID events{};
    const auto classInfo = query<IProvideClassInfo2>();
    const auto points = query<IConnectionPointContainer>();
    check(classInfo && points ? classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events) : E_NOINTERFACE,
          "The control has no events");
    check(points->FindConnectionPoint(events, events_.put()), "The control's events were not found");
    check(events_->Advise(&sink, &cookie_), "The control's events could not be received");
}

void HostedControl::close() {
    const ComPtr<IUnknown> control = std::exchange(control_, {});
    if (!control) return;
    if (events_) events_->Unadvise(cookie_);
    events_ = {};
    const auto object = control.query<IOleObject>();
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
    site_->onPlaceWanted = nullptr;
}

}  // namespace kavrelon
