#pragma once

#include <bitset>
#include <cstdint>

namespace kavrelon {

using ByteSet = std::bitset<256>;

inline constexpr std::uint8_t kEscapeByte = 27;

constexpr bool isControl(std::uint8_t byte) {
    return byte < 32;
}
/// CAN and SUB, which break a sequence off.
constexpr bool isCancel(std::uint8_t byte) {
    return byte == 24 || byte == 26;
}
/// A decimal digit, whatever the user's locale says.
constexpr bool isDigit(std::uint8_t byte) {
    return byte >= '0' && byte <= '9';
}

}  // namespace kavrelon
