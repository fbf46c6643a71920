#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavrelon {

/// What each byte shows as in the system's OEM code page, in UTF-16: the control codes and 127 as their
/// pictures, and no byte as nothing at all (0 is a space).
using OemCharacters = std::array<wchar_t, 256>;

const OemCharacters& oemCharacters();

/// A text of the screen in these characters; its line breaks stay what they are.
std::wstring shownCharacters(std::string_view text);

inline constexpr wchar_t kLightVertical = L'\x2502';
inline constexpr wchar_t kLightHorizontal = L'\x2500';
inline constexpr wchar_t kDoubleCross = L'\x256C';
inline constexpr wchar_t kFullBlock = L'\x2588';

/// Whether a character is a line or block that has to join with its like in the neighbouring cells.
constexpr bool isLineDrawing(wchar_t character) {
    return character >= L'\x2500' && character <= L'\x259F';
}

}  // namespace kavrelon
