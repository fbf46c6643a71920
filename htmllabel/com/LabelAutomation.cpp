#include "htmllabel/com/LabelAutomation.h"

#include <olectl.h>

#include "support/RuntimeError.h"
#include "support/com/ComText.h"
#include "support/com/Variant.h"

namespace kavrelon {
namespace {

/// The numbers of the control's own properties, as the type library gives them.
enum Property : DISPID {
    kDefaultFontName = 2,
    kDefaultFontSize = 3,
    kEnableTooltips = 4,
    kDocumentHTML = 5,
    kEnableScroll = 6,
    kEnableAnchors = 7,
    kDocumentTitle = 8,
    kUnderlineLinks = 9,
    kDefaultPadding = 10,
    kDefaultSpacing = 11,
};

BSTR toAutomation(const std::string& text) {
    return toBstr(text).detach();
}
VARIANT_BOOL toAutomation(bool flag) {
    return flag ? VARIANT_TRUE : VARIANT_FALSE;
}
template <class Number>
Number toAutomation(Number number) {
    return number;
}

short choice(short value) {
    if (value != 0 && value != 1) raise(RuntimeErrorNumber::InvalidPropertyValue);
    return value;
}

}  // namespace

template <class Value, class Read>
HRESULT LabelAutomation::get(const char* property, Value* value, Read&& read) {
    return call<::IHTMLLabel>(this, property, [&] { out(value) = toAutomation(read(*parts().label)); });
}

template <class Write>
HRESULT LabelAutomation::put(const char* property, DISPID id, Write&& write) {
    return call<::IHTMLLabel>(this, property, [&] {
        if (!parts().events.mayChange(id)) raise(RuntimeErrorNumber::SetNotPermitted);
        write(*parts().label);
        parts().changed(id);
    });
}

STDMETHODIMP LabelAutomation::get_Version(BSTR* Value) {
    return get("Version", Value, [](const HTMLLabel&) { return std::string(HTMLLabel::Version); });
}

STDMETHODIMP LabelAutomation::get_DefaultFontName(BSTR* Value) {
    return get("DefaultFontName", Value, [](const HTMLLabel& label) { return label.DefaultFontName(); });
}
STDMETHODIMP LabelAutomation::put_DefaultFontName(BSTR Value) {
    return put("DefaultFontName", kDefaultFontName,
               [=](HTMLLabel& label) { label.DefaultFontName(toAnsi(bstrView(Value))); });
}

STDMETHODIMP LabelAutomation::get_DefaultFontSize(float* Value) {
    return get("DefaultFontSize", Value, [](const HTMLLabel& label) { return label.DefaultFontSize(); });
}
STDMETHODIMP LabelAutomation::put_DefaultFontSize(float Value) {
    return put("DefaultFontSize", kDefaultFontSize, [=](HTMLLabel& label) { label.DefaultFontSize(Value); });
}

STDMETHODIMP LabelAutomation::get_BackColor(OLE_COLOR* Value) {
    return get("BackColor", Value, [](const HTMLLabel& label) { return label.BackColor(); });
}
STDMETHODIMP LabelAutomation::put_BackColor(OLE_COLOR Value) {
    return put("BackColor", DISPID_BACKCOLOR, [=](HTMLLabel& label) { label.BackColor(Value); });
}

STDMETHODIMP LabelAutomation::get_Appearance(short* Value) {
    return get("Appearance", Value, [](const HTMLLabel& label) { return label.Appearance(); });
}
STDMETHODIMP LabelAutomation::put_Appearance(short Value) {
    return put("Appearance", DISPID_APPEARANCE, [=](HTMLLabel& label) { label.Appearance(choice(Value)); });
}

STDMETHODIMP LabelAutomation::get_BorderStyle(short* Value) {
    return get("BorderStyle", Value, [](const HTMLLabel& label) { return label.BorderStyle(); });
}
STDMETHODIMP LabelAutomation::put_BorderStyle(short Value) {
    return put("BorderStyle", DISPID_BORDERSTYLE,
               [=](HTMLLabel& label) { label.BorderStyle(choice(Value)); });
}

STDMETHODIMP LabelAutomation::get_EnableTooltips(VARIANT_BOOL* Value) {
    return get("EnableTooltips", Value, [](const HTMLLabel& label) { return label.EnableTooltips(); });
}
STDMETHODIMP LabelAutomation::put_EnableTooltips(VARIANT_BOOL Value) {
    return put("EnableTooltips", kEnableTooltips,
               [=](HTMLLabel& label) { label.EnableTooltips(Value != VARIANT_FALSE); });
}

STDMETHODIMP LabelAutomation::get_DocumentHTML(BSTR* Value) {
    return get("DocumentHTML", Value, [](const HTMLLabel& label) { return label.DocumentHTML(); });
}
// The document is not saved: a new one leaves nothing to be saved.
STDMETHODIMP LabelAutomation::put_DocumentHTML(BSTR Value) {
    return call<::IHTMLLabel>(this, "DocumentHTML", [&] {
        if (!parts().events.mayChange(kDocumentHTML)) raise(RuntimeErrorNumber::SetNotPermitted);
        parts().label->DocumentHTML(toAnsi(bstrView(Value)));
        parts().events.changed(kDocumentHTML);
        parts().events.changed(kDocumentTitle);
        parts().view.changed();
    });
}

STDMETHODIMP LabelAutomation::get_EnableScroll(VARIANT_BOOL* Value) {
    return get("EnableScroll", Value, [](const HTMLLabel& label) { return label.EnableScroll(); });
}
STDMETHODIMP LabelAutomation::put_EnableScroll(VARIANT_BOOL Value) {
    return put("EnableScroll", kEnableScroll,
               [=](HTMLLabel& label) { label.EnableScroll(Value != VARIANT_FALSE); });
}

STDMETHODIMP LabelAutomation::get_EnableAnchors(VARIANT_BOOL* Value) {
    return get("EnableAnchors", Value, [](const HTMLLabel& label) { return label.EnableAnchors(); });
}
STDMETHODIMP LabelAutomation::put_EnableAnchors(VARIANT_BOOL Value) {
    return put("EnableAnchors", kEnableAnchors,
               [=](HTMLLabel& label) { label.EnableAnchors(Value != VARIANT_FALSE); });
}

STDMETHODIMP LabelAutomation::get_DocumentTitle(BSTR* Value) {
    return get("DocumentTitle", Value, [](const HTMLLabel& label) { return label.DocumentTitle(); });
}

STDMETHODIMP LabelAutomation::get_UnderlineLinks(VARIANT_BOOL* Value) {
    return get("UnderlineLinks", Value, [](const HTMLLabel& label) { return label.UnderlineLinks(); });
}
STDMETHODIMP LabelAutomation::put_UnderlineLinks(VARIANT_BOOL Value) {
    return put("UnderlineLinks", kUnderlineLinks,
               [=](HTMLLabel& label) { label.UnderlineLinks(Value != VARIANT_FALSE); });
}

STDMETHODIMP LabelAutomation::get_DefaultPadding(short* Value) {
    return get("DefaultPadding", Value, [](const HTMLLabel& label) { return label.DefaultPadding(); });
}
STDMETHODIMP LabelAutomation::put_DefaultPadding(short Value) {
    return put("DefaultPadding", kDefaultPadding, [=](HTMLLabel& label) { label.DefaultPadding(Value); });
}

STDMETHODIMP LabelAutomation::get_DefaultSpacing(short* Value) {
    return get("DefaultSpacing", Value, [](const HTMLLabel& label) { return label.DefaultSpacing(); });
}
STDMETHODIMP LabelAutomation::put_DefaultSpacing(short Value) {
    return put("DefaultSpacing", kDefaultSpacing, [=](HTMLLabel& label) { label.DefaultSpacing(Value); });
}

// Late-bound programs know colours as signed numbers, system colours being negative; scripts know no others.
STDMETHODIMP LabelAutomation::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    Variant colour;
    DISPPARAMS given = parameters != nullptr ? *parameters : DISPPARAMS{};
    if (id == DISPID_BACKCOLOR && given.cArgs == 1 && given.rgvarg != nullptr &&
        SUCCEEDED(changeType(colour, *given.rgvarg, VT_I4))) {
        colour.vt = VT_UI4;
        given.rgvarg = &colour;
        parameters = &given;
    }
    const HRESULT invoked =
        DualInterface::Invoke(id, iid, locale, flags, parameters, result, exception, badArgument);
    if (SUCCEEDED(invoked) && result != nullptr && result->vt == VT_UI4) result->vt = VT_I4;
    return invoked;
}

}  // namespace kavrelon
