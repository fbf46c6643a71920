#pragma once

#include <windows.h>

#include <oleauto.h>

#include <exception>
#include <type_traits>
#include <utility>

#include "support/com/ComPtr.h"

namespace kavrelon {

/// A failure with an HRESULT of its own: a bad argument, or the failure of an object that was called, which
/// goes on to our caller as it came, error object included.
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

/// Throws a ComError when the call that gave `result` failed. With the object and the interface that were
/// called, it takes along the error object that the call left, where that interface leaves any.
void throwIfFailed(HRESULT result, IUnknown* object = nullptr, REFIID iid = IID_NULL);

/// Which member of which interface was called, for the error object.
struct ComMember {
    const char* className;
    const char* name;
    const IID& iid;
};

/// Turns the exception in flight into an HRESULT and this thread's error object. A RuntimeError becomes
/// 0x800A0000 + its number, exhausted memory E_OUTOFMEMORY, a ComError what it carries, all else E_FAIL.
HRESULT reportException(const ComMember& member) noexcept;

/// Runs the work of a member that is called from outside, and gives its result where it has one. No exception
/// leaves it; a success leaves no error object behind, neither ours nor one of a call that failed on the way
/// and did not matter.
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

/// Where a result goes; a caller without a place for it has made an error.
template <class Value>
Value& out(Value* place) {
    if (place == nullptr) throw ComError(E_POINTER);
    return *place;
}

}  // namespace kavrelon
