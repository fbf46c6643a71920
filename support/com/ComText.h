#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>
#include <utility>

#include "support/win32/WideText.h"

namespace kavrelon {

/// Owns an automation string. It may be null, which is the empty text, and may contain NULs.
class Bstr {
  public:
    Bstr() = default;
    /// Throws std::bad_alloc when there is no memory for the text.
    explicit Bstr(std::wstring_view text);
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr(const Bstr&) = delete;
    ~Bstr() { SysFreeString(text_); }
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }

    BSTR get() const noexcept { return text_; }
    std::wstring_view view() const noexcept;
    /// For an out parameter: takes over the string that a call stores here. The old one is freed.
    BSTR* put() noexcept;
    /// Gives the string to the caller.
    [[nodiscard]] BSTR detach() noexcept { return std::exchange(text_, nullptr); }

  private:
    BSTR text_ = nullptr;
};

/// The text of a string that somebody else owns; null is the empty text.
inline std::wstring_view bstrView(BSTR text) noexcept {
    return text != nullptr ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
}

/// The inverse of `toAnsi`.
Bstr toBstr(std::string_view ansi);

}  // namespace kavrelon
