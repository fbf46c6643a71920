#pragma once

#include <string>
#include <string_view>

namespace kavrelon {

// Text is single-byte inside, in the system's ANSI code page, and wide outside. These are the only
// conversions.

/// Converts a text of the ANSI code page for the platform's wide calls.
std::wstring toWide(std::string_view ansi);
/// The same for menus and messages that show what others have written: characters that are not seen
/// themselves but change how those around them are shown, such as marks of writing direction, become a
/// visible one.
std::wstring toShownWide(std::string_view ansi);

/// Number of bytes of a text in the ANSI code page.
int ansiLength(std::wstring_view text) noexcept;
/// Converts a text to the ANSI code page. `out` has room for `length` bytes, which is its `ansiLength`. A
/// character that the page does not have becomes one "?", never a similar one, also when it takes two units
/// of the text.
void toAnsi(std::wstring_view text, char* out, int length) noexcept;
std::string toAnsi(std::wstring_view text);

constexpr bool isHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace kavrelon
