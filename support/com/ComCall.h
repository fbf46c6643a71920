#pragma once

#include <windows.h>

#include <oleauto.h>

#include <exception>
#include <type_traits>
#include <utility>

#include "support/com/ComPtr.h"

namespace kavrelon {

/// A failure with its own HRESULT: a bad argument, or a failed call of another object, which is passed on to
/// our caller unchanged, with its error object.
class ComError : public std::exception {
  public:
    explicit ComError(HRESULT result, ComPtr<IErrorInfo> info = {}) noexcept
        : result_(result), info_(std::move(info)) {}

    HRESULT result() const noexcept { return result_; }
    IErrorInfo* info() const noexcept { return info_.get(); }
    const char* what() const noexcept override { return "COM call failed"; }

  private:
    HRESULT result_;
    ComPtr<IErrorInfo> info_;
};

/// Throws a ComError when `result` is a failure. Given the object and the interface that were called, the
/// ComError carries the error object that the call left, if that interface supports error objects.
void throwIfFailed(HRESULT result, IUnknown* object = nullptr, REFIID iid = IID_NULL);

/// Which member of which interface was called, for the error object.
struct ComMember {
    const char* className;
    const char* name;
    const IID& iid;
};

/// The HRESULT that automation clients expect of a run-time error: 0x800A0000 + its number.
constexpr HRESULT runtimeErrorResult(int number) {
    return static_cast<HRESULT>(0x800A0000U | static_cast<unsigned>(number));
}

/// Turns the exception in flight into an HRESULT and this thread's error object: a RuntimeError into its
/// `runtimeErrorResult`, std::bad_alloc into E_OUTOFMEMORY, a ComError into what it carries, others into
/// E_FAIL.
HRESULT reportException(const ComMember& member) noexcept;

/// Makes the failure of a member that was called late the exception of that call, with the text of the
/// member's error object.
HRESULT passOn(HRESULT failure, EXCEPINFO* exception) noexcept;

/// Runs the work of a member that is called from outside. Returns the work's HRESULT, or S_OK when it has
/// none. No exception leaves it. A success leaves no error object, not even that of an inner call whose
/// failure did not matter.
template <class Work>
HRESULT comCall(const ComMember& member, Work&& work) noexcept {
    HRESULT result = S_OK;
    try {
        if constexpr (std::is_same_v<std::invoke_result_t<Work>, HRESULT>) {
            result = std::forward<Work>(work)();
        } else {
            std::forward<Work>(work)();
        }
    } catch (...) {
        return reportException(member);
    }
    SetErrorInfo(0, nullptr);
    return result;
}

/// The variable that a caller's out parameter points to. Throws a ComError with E_POINTER when it is null.
template <class Value>
Value& out(Value* place) {
    if (place == nullptr) throw ComError(E_POINTER);
    return *place;
}

}  // namespace kavrelon
