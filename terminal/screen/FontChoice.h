#pragma once

#include <cstdint>

namespace kavrelon {

/// Character sets of fonts, with the platform's numbers.
namespace charsets {
inline constexpr std::uint8_t kAnsi = 0;
inline constexpr std::uint8_t kDefault = 1;
inline constexpr std::uint8_t kSymbol = 2;
inline constexpr std::uint8_t kOem = 255;
}  // namespace charsets

/// A font to draw text with.
struct FontChoice {
    const char* name;
    std::uint8_t charset;
};

}  // namespace kavrelon
