#include "htmllabel/com/LabelEvents.h"

#include <olectl.h>

#include "gdi/GdiPicture.h"
#include "kavrelon.h"
#include "support/com/Variant.h"

namespace kavrelon {
namespace {

constexpr DISPID kHyperlinkClick = 1;
constexpr DISPID kLoadImage = 2;

/// The picture in a handler's answer; null when there is none. The handler may have left a reference to
/// another variant.
ComPtr<IPicture> pictureIn(const VARIANT& given) {
    if (!isReadable(given)) return {};
    const VARIANT& answer = given.vt == (VT_VARIANT | VT_BYREF) ? *given.pvarVal : given;
    IUnknown* object = nullptr;
    if (answer.vt == VT_DISPATCH || answer.vt == VT_UNKNOWN) object = answer.punkVal;
    if (answer.vt == (VT_DISPATCH | VT_BYREF) || answer.vt == (VT_UNKNOWN | VT_BYREF)) {
        object = *answer.ppunkVal;
    }
    return ComPtr<IUnknown>(object).query<IPicture>();
}

}  // namespace

LabelEvents::LabelEvents(IConnectionPointContainer& object, const LabelSite& site)
    : object_(object),
      site_(site),
      events_(object, DIID_DHTMLLabelEvents, true),
      propertyNotices_(object, IID_IPropertyNotifySink, false) {}

// A handler may close the control and release it: the object stays alive until the last sink returns.
template <class... Values>
void LabelEvents::fire(DISPID event, const Values&... values) noexcept {
    if (freezes_ > 0 || !site_.runs()) return;
    try {
        const ComPtr<IUnknown> self(&object_);
        Arguments arguments(values...);
        DISPPARAMS parameters = arguments.parameters();
        for (const ComPtr<IUnknown>& sink : events_.sinks()) {
            auto* const handler = static_cast<IDispatch*>(sink.get());
            handler->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                            nullptr, nullptr);
        }
    } catch (...) {
        // Out of memory: the event is lost.
    }
}

bool LabelEvents::mayChange(DISPID property) const {
    for (const ComPtr<IUnknown>& sink : propertyNotices_.sinks()) {
        if (static_cast<IPropertyNotifySink*>(sink.get())->OnRequestEdit(property) == S_FALSE) return false;
    }
    return true;
}

void LabelEvents::changed(DISPID property) const {
    for (const ComPtr<IUnknown>& sink : propertyNotices_.sinks()) {
        static_cast<IPropertyNotifySink*>(sink.get())->OnChanged(property);
    }
}

void LabelEvents::HyperlinkClick(const std::string& Href) noexcept {
    fire(kHyperlinkClick, Href);
}

std::shared_ptr<const Picture> LabelEvents::LoadImage(const std::string& Source) noexcept {
    Variant answer;
    fire(kLoadImage, Source, static_cast<VARIANT*>(&answer));
    try {
        return GdiPicture::from(pictureIn(answer).get());
    } catch (...) {
        return nullptr;
    }
}

void LabelEvents::MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept {
    fire(DISPID_MOUSEDOWN, Button, Shift, X, Y);
}

void LabelEvents::MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept {
    fire(DISPID_MOUSEMOVE, Button, Shift, X, Y);
}

void LabelEvents::MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept {
    fire(DISPID_MOUSEUP, Button, Shift, X, Y);
}

}  // namespace kavrelon
