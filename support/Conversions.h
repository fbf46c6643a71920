#pragma once

#include <cstdint>
#include <string_view>

namespace kavrelon {

/// The 16-bit number that a text spells. Spaces around it and one sign are accepted, and so is a fraction,
/// which is rounded half to even ("2.5" is 2, "3.5" is 4). Raises TypeMismatch when the text is no decimal
/// number (empty, hexadecimal, with exponent or separators), Overflow when the rounded number does not fit.
std::int16_t toInt16(std::string_view text);

/// The 32-bit number that a text spells, by the same rules.
std::int32_t toInt32(std::string_view text);

/// The number that a text spells, with its fraction. Accepts and raises the same as `toInt16`.
float toSingle(std::string_view text);

/// Whether a text spells a number, of any size.
bool isNumeric(std::string_view text) noexcept;

/// `value` as a 16-bit number; raises Overflow when it does not fit.
std::int16_t narrowToInt16(int value);

/// `value` rounded to a whole number, halves to even. The value must fit an int.
int roundHalfToEven(double value) noexcept;

}  // namespace kavrelon
