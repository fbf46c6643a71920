#include "support/com/ComText.h"

#include <algorithm>
#include <new>

#include "support/win32/WideText.h"

namespace kavrelon {
namespace {

bool isAscii(std::wstring_view text) noexcept {
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c < 0x80; });
}

int convert(std::wstring_view text, char* out, int room) noexcept {
    // UTF-8 as the ANSI code page has every character, and the call refuses flag and default with it.
    const bool hasEverything = GetACP() == CP_UTF8;
    return WideCharToMultiByte(CP_ACP, hasEverything ? 0 : WC_NO_BEST_FIT_CHARS, text.data(),
                               static_cast<int>(text.size()), out, room, hasEverything ? nullptr : "?",
                               nullptr);
}

}  // namespace

Bstr::Bstr(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (text_ == nullptr) throw std::bad_alloc();
}

std::wstring_view Bstr::view() const noexcept {
    return bstrView(text_);
}

BSTR* Bstr::put() noexcept {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
}

// Nearly all texts that cross the boundary are short and ASCII, which is the same in every ANSI code page.
int ansiLength(std::wstring_view text) noexcept {
    return isAscii(text) ? static_cast<int>(text.size()) : convert(text, nullptr, 0);
}

void toAnsi(std::wstring_view text, char* out, int length) noexcept {
    if (isAscii(text)) {
        std::transform(text.begin(), text.end(), out, [](wchar_t c) { return static_cast<char>(c); });
    } else {
        convert(text, out, length);
    }
}

std::string toAnsi(std::wstring_view text) {
    std::string ansi(static_cast<std::size_t>(ansiLength(text)), '\0');
    toAnsi(text, ansi.data(), static_cast<int>(ansi.size()));
    return ansi;
}

Bstr toBstr(std::string_view ansi) {
    return Bstr(toWide(ansi));
}

}  // namespace kavrelon
