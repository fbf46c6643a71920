#pragma once

#include <string_view>

namespace kavrelon {

// Letters, digits and spaces of protocols and file formats: ASCII alone, whatever the user's locale.

constexpr bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether a character is one that shows nothing but may have a meaning to who shows it.
constexpr bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

constexpr char asciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

/// Whether `text` equals `upperCase`, which must be in capitals, in any mix of cases.
constexpr bool equalsInUpperCase(std::string_view text, std::string_view upperCase) {
    if (text.size() != upperCase.size()) return false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (asciiUpper(text[at]) != upperCase[at]) return false;
    }
    return true;
}

/// The text without those of `characters` (one character, or a text of several) that are at both ends.
constexpr std::string_view trim(std::string_view text, auto characters) {
    const auto first = text.find_first_not_of(characters);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(characters) + 1 - first);
}

/// The text without the spaces (only character 32) at both ends.
constexpr std::string_view trimSpaces(std::string_view text) {
    return trim(text, ' ');
}

}  // namespace kavrelon
