#include "terminal/win32/OemCharacters.h"

#include <windows.h>

namespace kavrelon {
namespace {

/// The code page of the line-drawing characters, for systems whose own OEM code page has two-byte characters.
constexpr UINT kLatinUs = 437;

UINT singleByteOemCodePage() {
    CPINFO info{};
    return GetCPInfo(CP_OEMCP, &info) && info.MaxCharSize == 1 ? CP_OEMCP : kLatinUs;
}

OemCharacters makeTable() {
    const UINT codePage = singleByteOemCodePage();
    OemCharacters table;
    table.fill(L' ');
    for (std::size_t byte = 1; byte < table.size(); ++byte) {
        const char text = static_cast<char>(byte);
        wchar_t shown = 0;
        if (MultiByteToWideChar(codePage, MB_USEGLYPHCHARS, &text, 1, &shown, 1) == 1) table[byte] = shown;
    }
    return table;
}

}  // namespace

const OemCharacters& oemCharacters() {
    static const OemCharacters table = makeTable();
    return table;
}

std::wstring shownCharacters(std::string_view text) {
    std::wstring shown;
    shown.reserve(text.size());
    for (const char c : text) {
        const bool lineBreak = c == '\r' || c == '\n';
        shown += lineBreak ? static_cast<wchar_t>(c) : oemCharacters()[static_cast<unsigned char>(c)];
    }
    return shown;
}

}  // namespace kavrelon
