#include "support/WebAddress.h"

#include <algorithm>

#include "support/AsciiText.h"

namespace kavrelon {

WebAddress webAddressOf(std::string_view text) noexcept {
    const auto begins = [text](std::string_view scheme) {
        return text.size() > scheme.size() && equalsInUpperCase(text.substr(0, scheme.size()), scheme);
    };
    const auto isPlain = [](char c) { return c > ' ' && c < '\x7F' && c != '"' && c != '\'' && c != '\\'; };
    if (!std::ranges::all_of(text, isPlain)) return WebAddress::None;
    if (begins("HTTP://") || begins("HTTPS://")) return WebAddress::Page;
    return begins("FTP://") || begins("MAILTO:") ? WebAddress::Other : WebAddress::None;
}

}  // namespace kavrelon
