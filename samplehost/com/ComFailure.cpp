#include "samplehost/com/ComFailure.h"

#include <oleauto.h>

#include "samplehost/com/SystemMessage.h"
#include "support/com/ComPtr.h"
#include "support/com/ComText.h"

namespace kavrelon {

namespace {

/// "source: description" of the thread's error object; empty when there is none.
std::string reportedText() {
    ComPtr<IErrorInfo> info;
    // This call also removes the error object, so that it cannot be taken for that of a later call.
    if (GetErrorInfo(0, info.put()) != S_OK) return {};
    Bstr source;
    Bstr description;
    info->GetSource(source.put());
    info->GetDescription(description.put());
    const std::string from = toAnsi(source.view());
    return from.empty() ? toAnsi(description.view()) : from + ": " + toAnsi(description.view());
}

}  // namespace

std::string failureText(HRESULT result) {
    std::string reason = reportedText();
    if (reason.empty()) reason = systemMessage(static_cast<DWORD>(result));
    const std::string code = errorCode(static_cast<DWORD>(result));
    return reason.ends_with(code) ? reason : reason + " (" + code + ')';
}

void check(HRESULT result, const std::string& what) {
    if (FAILED(result)) throw ComFailure(what + ": " + failureText(result) + '.');
}

}  // namespace kavrelon
