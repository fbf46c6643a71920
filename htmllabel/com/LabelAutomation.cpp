#include "htmllabel/com/LabelAutomation.h"

#include "support/com/Variant.h"

namespace kavrelon {

STDMETHODIMP LabelAutomation::get_Version(BSTR* Value) {
    return call<::IHTMLLabel>(this, "Version", [&] {
        BSTR& place = out(Value);
        place = toAutomation(std::string(HTMLLabel::Version));
    });
}

// The document is not saved, so a new one leaves nothing to save. Its title and text change with it.
STDMETHODIMP LabelAutomation::put_DocumentHTML(BSTR Value) {
    return call<::IHTMLLabel>(this, kDocumentHTML.name, [&] {
        change(kDocumentHTML, Value);
        parts().events.changed(kDocumentHTML.id);
        parts().events.changed(kDocumentTitle.id);
        parts().events.changed(kText.id);
        parts().view.changed();
    });
}

// Late-bound programs expect colours as signed numbers, with negative ones for system colours; scripts have
// no unsigned ones.
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
