#include "support/win32/WideText.h"

#include <windows.h>

#include <algorithm>

namespace kavrelon {
namespace {

bool isAscii(std::wstring_view text) noexcept {
    return std::ranges::all_of(text, [](wchar_t unit) { return unit < 0x80; });
}

bool isSurrogate(wchar_t unit) {
    return isHighSurrogate(unit) || isLowSurrogate(unit);
}

int convertPlain(std::wstring_view text, DWORD flags, const char* substitute, char* out, int room) noexcept {
    if (text.empty()) return 0;
    return WideCharToMultiByte(CP_ACP, flags, text.data(), static_cast<int>(text.size()), out, room,
                               substitute, nullptr);
}

/// Writes the bytes, where there is something to write to, and returns their number.
int convert(std::wstring_view text, char* out, int room) noexcept {
    // UTF-8 as the ANSI code page has every character, and the call refuses flag and substitute with it.
    if (GetACP() == CP_UTF8) return convertPlain(text, 0, nullptr, out, room);
    int length = 0;
    while (!text.empty()) {
        const auto plain = static_cast<std::size_t>(std::ranges::find_if(text, isSurrogate) - text.begin());
        length += convertPlain(text.substr(0, plain), WC_NO_BEST_FIT_CHARS, "?",
                               out == nullptr ? nullptr : out + length, out == nullptr ? 0 : room - length);
        text.remove_prefix(plain);
        if (text.empty()) break;
        // The call would write a substitute for either half of a pair.
        if (out != nullptr) out[length] = '?';
        ++length;
        const bool pair = text.size() > 1 && isHighSurrogate(text[0]) && isLowSurrogate(text[1]);
        text.remove_prefix(pair ? 2 : 1);
    }
    return length;
}

/// Ends of the ranges are part of them.
struct Range {
    wchar_t first, last;
};

/// Controls beyond ASCII, the soft hyphen, joiners, separators, and marks and overrides of writing direction.
constexpr Range kUnseen[] = {{0x80, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},   {0x180E, 0x180E},
                             {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}};
constexpr wchar_t kReplacement = 0xFFFD;

bool isUnseen(wchar_t unit) {
    return std::ranges::any_of(kUnseen,
                               [unit](Range range) { return unit >= range.first && unit <= range.last; });
}

}  // namespace

std::wstring toWide(std::string_view ansi) {
    const int bytes = static_cast<int>(ansi.size());
    const int length = bytes > 0 ? MultiByteToWideChar(CP_ACP, 0, ansi.data(), bytes, nullptr, 0) : 0;
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    if (length > 0) MultiByteToWideChar(CP_ACP, 0, ansi.data(), bytes, wide.data(), length);
    return wide;
}

std::wstring toShownWide(std::string_view ansi) {
    std::wstring shown = toWide(ansi);
    std::ranges::replace_if(shown, isUnseen, kReplacement);
    return shown;
}

// Nearly all texts are short and ASCII, which is the same in every ANSI code page.
int ansiLength(std::wstring_view text) noexcept {
    return isAscii(text) ? static_cast<int>(text.size()) : convert(text, nullptr, 0);
}

void toAnsi(std::wstring_view text, char* out, int length) noexcept {
    if (isAscii(text)) {
        std::ranges::transform(text, out, [](wchar_t unit) { return static_cast<char>(unit); });
    } else {
        convert(text, out, length);
    }
}

std::string toAnsi(std::wstring_view text) {
    std::string ansi(static_cast<std::size_t>(ansiLength(text)), '\0');
    toAnsi(text, ansi.data(), static_cast<int>(ansi.size()));
    return ansi;
}

}  // namespace kavrelon
