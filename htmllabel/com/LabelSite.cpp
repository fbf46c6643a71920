#include "htmllabel/com/LabelSite.h"

#include <ocidl.h>
#include <olectl.h>

#include "support/com/ComText.h"
#include "support/com/LateCall.h"
#include "support/com/Variant.h"

namespace kavrelon {
namespace {

/// Reads an ambient property of the container as this type; false when there is no such property.
bool readAmbient(IOleClientSite* client, DISPID id, VARTYPE type, Variant& value) noexcept {
    const auto ambients = ComPtr<IOleClientSite>(client).query<IDispatch>();
    if (!ambients) return false;
    DISPPARAMS none{};
    return SUCCEEDED(ambients->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value,
                                      nullptr, nullptr)) &&
           SUCCEEDED(changeType(value, value, type));
}

}  // namespace

void LabelSite::set(IOleClientSite* client) {
    client_ = ComPtr<IOleClientSite>(client);
    refreshAmbients();
}

void LabelSite::refreshAmbients() noexcept {
    runs_ = ambientFlag(DISPID_AMBIENT_USERMODE, true) && !ambientFlag(DISPID_AMBIENT_UIDEAD, false);
}

std::wstring LabelSite::displayName() const {
    Variant name;
    if (!readAmbient(client_.get(), DISPID_AMBIENT_DISPLAYNAME, VT_BSTR, name)) return {};
    return std::wstring(bstrView(name.bstrVal));
}

bool LabelSite::ambientFlag(DISPID id, bool otherwise) const noexcept {
    Variant flag;
    return readAmbient(client_.get(), id, VT_BOOL, flag) ? flag.boolVal != VARIANT_FALSE : otherwise;
}

// An extended control names its form. Without an extended control, the container may be the form itself.
ComPtr<IDispatch> LabelSite::form() const noexcept {
    ComPtr<IDispatch> extender;
    const auto site = query<IOleControlSite>();
    if (site && SUCCEEDED(site->GetExtendedControl(extender.put())) && extender) {
        try {
            Variant parent;
            callByName(*extender, L"Parent", DISPATCH_PROPERTYGET, {}, &parent);
            if (parent.vt == VT_DISPATCH) return ComPtr<IDispatch>(parent.pdispVal);
        } catch (...) {
            // An extender without a form.
        }
    }
    ComPtr<IOleContainer> container;
    if (client_) client_->GetContainer(container.put());
    return container.query<IDispatch>();
}

std::optional<int> LabelSite::formWindowState() const noexcept {
    const ComPtr<IDispatch> form = this->form();
    if (!form) return 0;
    try {
        Variant state;
        callByName(*form, L"WindowState", DISPATCH_PROPERTYGET, {}, &state);
        if (SUCCEEDED(changeType(state, state, VT_I4))) return state.lVal;
    } catch (...) {
        // A form of another kind.
    }
    return std::nullopt;
}

void LabelSite::callForm(const std::string& procedure,
                         const std::vector<std::string>& arguments) const noexcept {
    try {
        const ComPtr<IDispatch> form = this->form();
        if (!form) return;
        Arguments passed;
        for (const std::string& argument : arguments) passed.add(argument);
        callByName(*form, std::wstring(toBstr(procedure).view()).c_str(), DISPATCH_METHOD, std::move(passed));
    } catch (...) {
        // The user followed a link that the form does not know: nothing happens.
    }
}

}  // namespace kavrelon
