#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace kavrelon {

/// One element of a parsed pattern: a byte (0 to 255), or one of the constants below.
using PatternSymbol = std::uint16_t;

inline constexpr PatternSymbol kTerminatorSymbol = 256;
inline constexpr PatternSymbol kNumberSymbol = 257;
inline constexpr PatternSymbol kTextSymbol = 258;

constexpr bool isField(PatternSymbol symbol) {
    return symbol >= kNumberSymbol;
}

/// Whether a byte ends a private sequence.
constexpr bool isTerminator(std::uint8_t byte) {
    return byte == '\r' || byte == '\n' || byte == 0;
}

/// Whether a byte of the stream is what a literal symbol or the terminator asks for.
constexpr bool symbolTakes(PatternSymbol symbol, std::uint8_t byte) {
    return symbol == kTerminatorSymbol ? isTerminator(byte) : symbol == byte;
}

/// Reads the notation that EscapeTree describes. Throws std::invalid_argument with a reason that completes
/// the sentence "the pattern ...".
std::vector<PatternSymbol> parsePattern(std::string_view text);

}  // namespace kavrelon
