#include "support/com/ComCall.h"

#include <new>
#include <string>

#include "support/RuntimeError.h"
#include "support/com/ComText.h"

namespace kavrelon {
namespace {

void setErrorInfo(const ComMember& member, const std::string& source, const std::string& text) {
    ComPtr<ICreateErrorInfo> info;
    if (FAILED(CreateErrorInfo(info.put()))) return;
    info->SetGUID(member.iid);
    info->SetSource(toBstr(source.empty() ? member.className : source).get());
    info->SetDescription(toBstr(text + " (" + member.name + ")").get());
    if (const auto errorInfo = info.query<IErrorInfo>()) SetErrorInfo(0, errorInfo.get());
}

HRESULT report(const ComMember& member) {
    try {
        throw;
    } catch (const ComError& error) {
        SetErrorInfo(0, error.info());
        return error.result();
    } catch (const RuntimeError& error) {
        setErrorInfo(member, error.source(), error.what());
        return runtimeErrorResult(static_cast<int>(error.number()));
    } catch (const std::bad_alloc&) {
        SetErrorInfo(0, nullptr);
        return E_OUTOFMEMORY;
    } catch (const std::exception& error) {
        setErrorInfo(member, {}, error.what());
        return E_FAIL;
    } catch (...) {
        setErrorInfo(member, {}, "Unknown error");
        return E_FAIL;
    }
}

}  // namespace

void throwIfFailed(HRESULT result, IUnknown* object, REFIID iid) {
    if (SUCCEEDED(result)) return;
    ComPtr<IErrorInfo> info;
    const auto supporter = ComPtr<IUnknown>(object).query<ISupportErrorInfo>();
    if (supporter && supporter->InterfaceSupportsErrorInfo(iid) == S_OK) GetErrorInfo(0, info.put());
    throw ComError(result, std::move(info));
}

HRESULT reportException(const ComMember& member) noexcept {
    try {
        return report(member);
    } catch (...) {
        return E_OUTOFMEMORY;  // there was no memory for the error object
    }
}

HRESULT passOn(HRESULT failure, EXCEPINFO* exception) noexcept {
    if (exception == nullptr) return DISP_E_EXCEPTION;
    *exception = EXCEPINFO{};
    exception->scode = failure;
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) == S_OK) {
        info->GetSource(&exception->bstrSource);
        info->GetDescription(&exception->bstrDescription);
    }
    return DISP_E_EXCEPTION;
}

}  // namespace kavrelon
