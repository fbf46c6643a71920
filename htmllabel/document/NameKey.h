#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace kavrelon {

/// The name of a tag, an attribute or a colour as one number, the same for both cases of a letter. Different
/// names have different numbers; what cannot be such a name (empty, longer than 12 characters, or with
/// characters other than letters, digits, "-", "!" and "/") is 0.
///
/// Names are looked up several times for each tag of a document, and a `switch` can take numbers.
constexpr std::uint64_t nameKey(std::string_view name);

namespace detail {

constexpr std::uint64_t kNameDigits = 40;

/// For each byte its digit in a name's number; 0 for bytes that no name has.
constexpr std::array<std::uint8_t, 256> kNameDigit = [] {
    std::array<std::uint8_t, 256> digits{};
    std::uint8_t next = 1;
    for (unsigned char letter = 'A'; letter <= 'Z'; ++letter, ++next) {
        digits[letter] = next;
        digits[letter + ('a' - 'A')] = next;
    }
    for (unsigned char digit = '0'; digit <= '9'; ++digit, ++next) digits[digit] = next;
    for (const char mark : {'-', '!', '/'}) digits[static_cast<unsigned char>(mark)] = next++;
    return digits;
}();

}  // namespace detail

constexpr std::uint64_t nameKey(std::string_view name) {
    constexpr std::size_t kLongestName = 12;
    if (name.size() > kLongestName) return 0;
    std::uint64_t key = 0;
    for (const char c : name) {
        const std::uint64_t digit = detail::kNameDigit[static_cast<unsigned char>(c)];
        if (digit == 0) return 0;
        key = key * detail::kNameDigits + digit;
    }
    return key;
}

}  // namespace kavrelon
