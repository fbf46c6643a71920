#include "support/com/LateCall.h"

#include <dispex.h>

#include <string>

#include "support/RuntimeError.h"
#include "support/com/ComCall.h"
#include "support/com/ComText.h"

namespace kavrelon {
namespace {

/// What a failed call reports. Owns the texts in it.
class ExceptionDetails : public EXCEPINFO {
  public:
    ExceptionDetails() noexcept : EXCEPINFO{} {}
    ExceptionDetails(const ExceptionDetails&) = delete;
    ExceptionDetails& operator=(const ExceptionDetails&) = delete;
    ~ExceptionDetails() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }

    ComError error() noexcept {
        if (pfnDeferredFillIn != nullptr) pfnDeferredFillIn(this);
        const HRESULT result = scode != 0 ? scode : runtimeErrorResult(wCode);
        ComPtr<ICreateErrorInfo> info;
        if (FAILED(CreateErrorInfo(info.put()))) return ComError(result);
        info->SetSource(bstrSource);
        info->SetDescription(bstrDescription);
        return ComError(result, info.query<IErrorInfo>());
    }
};

/// Error 438. It names the member, since the caller's caller may not know which one was called.
class NoSuchMember : public RuntimeError {
  public:
    explicit NoSuchMember(const wchar_t* name)
        : RuntimeError(RuntimeErrorNumber::NoSuchMember),
          text_(std::string(RuntimeError::what()) + ": " + toAnsi(name)) {}

    const char* what() const noexcept override { return text_.c_str(); }

  private:
    std::string text_;
};

}  // namespace

Arguments::~Arguments() {
    for (VARIANT& argument : reversed_) VariantClear(&argument);
}

void Arguments::add(std::string_view text) {
    Bstr string = toBstr(text);
    addNext(VT_BSTR).bstrVal = string.detach();
}

void Arguments::add(short value) {
    addNext(VT_I2).iVal = value;
}

void Arguments::add(float value) {
    addNext(VT_R4).fltVal = value;
}

void Arguments::add(VARIANT* reference) {
    addNext(VT_VARIANT | VT_BYREF).pvarVal = reference;
}

// A call expects its arguments in reverse order.
VARIANT& Arguments::addNext(VARTYPE type) {
    VARIANT& argument = *reversed_.insert(reversed_.begin(), VARIANT{});
    argument.vt = type;
    return argument;
}

void callByName(IDispatch& object, const wchar_t* name, WORD flags, Arguments&& arguments, VARIANT* result) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    HRESULT found = object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    // The classes of some script engines answer to the second edition of this interface alone.
    ComPtr<IDispatchEx> extended;
    if (found == E_NOTIMPL && SUCCEEDED(object.QueryInterface(IID_PPV_ARGS(extended.put()))))
        found = extended->GetDispID(Bstr(name).get(), fdexNameCaseInsensitive, &id);
    if (found == DISP_E_UNKNOWNNAME) throw NoSuchMember(name);
    throwIfFailed(found);

    DISPPARAMS parameters = arguments.parameters();
    ExceptionDetails details;
    const HRESULT called =
        extended
            ? extended->InvokeEx(id, LOCALE_USER_DEFAULT, flags, &parameters, result, &details, nullptr)
            : object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &details, nullptr);
    if (called == DISP_E_EXCEPTION) throw details.error();
    if (called == DISP_E_MEMBERNOTFOUND) throw NoSuchMember(name);
    throwIfFailed(called);
}

}  // namespace kavrelon
