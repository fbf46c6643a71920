#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace kavrelon {

/// A COM call that failed; the text says which one, and why.
class ComFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Why a call failed: the text of the thread's error object, or else the system's text for `result`, and the
/// number. Call it before any other COM call, and only for an object that reports errors.
std::string failureText(HRESULT result);

/// Throws ComFailure when `result` is a failure: "`what`: reason."
void check(HRESULT result, const std::string& what);

}  // namespace kavrelon
