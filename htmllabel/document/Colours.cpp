#include "htmllabel/document/Colours.h"

#include <algorithm>
#include <string>

#include "htmllabel/document/NameKey.h"

namespace kavrelon {
namespace {

constexpr int kNoDigit = -1;

constexpr int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return kNoDigit;
}

Colour hexNumber(std::string_view digits) {
    Colour value = 0;
    for (const char c : digits) value = value * 16 + static_cast<Colour>(hexDigit(c));
    return value;
}

constexpr Colour rgb(Colour red, Colour green, Colour blue) {
    return red | green << 8 | blue << 16;
}

Colour hexColour(std::string_view digits) {
    const std::string_view green = digits.size() > 2 ? digits.substr(2, 2) : std::string_view();
    const std::string_view blue = digits.substr(digits.size() - std::min<std::size_t>(digits.size(), 2));
    return rgb(hexNumber(digits.substr(0, 2)), hexNumber(green), hexNumber(blue));
}

}  // namespace

Colour mlngParseColor(std::string_view value) {
    std::string plain(value);
    std::erase(plain, '#');
    const bool hexadecimal =
        !plain.empty() && std::ranges::all_of(plain, [](char c) { return hexDigit(c) != kNoDigit; });
    return hexadecimal ? hexColour(plain) : mlngColorFromName(plain);
}

Colour mlngColorFromName(std::string_view name) {
    switch (nameKey(name)) {
        case nameKey("maroon"):
            return rgb(0x80, 0, 0);
        case nameKey("green"):
            return rgb(0, 0x80, 0);
        case nameKey("navy"):
            return rgb(0, 0, 0x80);
        case nameKey("silver"):
            return rgb(0xC0, 0xC0, 0xC0);
        case nameKey("red"):
            return rgb(0xFF, 0, 0);
        case nameKey("lime"):
            return rgb(0, 0xFF, 0);
        case nameKey("blue"):
            return rgb(0, 0, 0xFF);
        case nameKey("gray"):
            return rgb(0x80, 0x80, 0x80);
        case nameKey("purple"):
            return rgb(0x80, 0, 0x80);
        case nameKey("olive"):
            return rgb(0x80, 0x80, 0);
        case nameKey("teal"):
            return rgb(0, 0x80, 0x80);
        case nameKey("white"):
            return rgb(0xFF, 0xFF, 0xFF);
        case nameKey("fuchsia"):
            return rgb(0xFF, 0, 0xFF);
        case nameKey("yellow"):
            return rgb(0xFF, 0xFF, 0);
        case nameKey("aqua"):
            return rgb(0, 0xFF, 0xFF);
        default:
            return 0;
    }
}

}  // namespace kavrelon
