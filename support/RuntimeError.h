#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace kavrelon {

/// The run-time errors that members of this system report, by the numbers that automation clients know.
enum class RuntimeErrorNumber : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    FileNotFound = 53,
    PathFileAccess = 75,
    ObjectNotSet = 91,
    InvalidPropertyValue = 380,
    SetNotPermitted = 387,
    NoSuchMember = 438,
};

/// The text of an error ("Subscript out of range", ...), a constant; never null.
const char* runtimeErrorText(RuntimeErrorNumber number) noexcept;

/// An error for the caller of the library. At the COM boundary it becomes HRESULT 0x800A0000 + number, with
/// an IErrorInfo that carries its text and its source.
class RuntimeError : public std::exception {
  public:
    /// `source` names the routine that failed, where that helps the caller ("IniFile::ReadIni"); empty means
    /// the member that was called.
    explicit RuntimeError(RuntimeErrorNumber number, std::string source = {})
        : number_(number), source_(std::move(source)) {}

    RuntimeErrorNumber number() const noexcept { return number_; }
    const std::string& source() const noexcept { return source_; }
    const char* what() const noexcept override { return runtimeErrorText(number_); }

  private:
    RuntimeErrorNumber number_;
    std::string source_;
};

/// Throws a RuntimeError. Kept out of line so that callers stay small.
[[noreturn]] void raise(RuntimeErrorNumber number, std::string_view source = {});

/// Runs one step and drops its error. A routine that carries on with the next statement after an error wraps
/// each statement by itself, so that a failing one never skips those after it.
template <class Step>
void carryOn(Step&& step) noexcept {
    try {
        std::forward<Step>(step)();
    } catch (...) {  // NOLINT(bugprone-empty-catch): dropping the error is this helper's work
    }
}

}  // namespace kavrelon
