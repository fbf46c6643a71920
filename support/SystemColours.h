#pragma once

#include "support/Geometry.h"

namespace kavrelon {

// A colour can also stand for one of the system's own, which the user chooses: bit 31 is set then, and the
// low byte is the system's number for it.

/// The system colour of this number (0 to 255), as the platform counts them.
constexpr Colour systemColour(unsigned number) {
    return 0x80000000U | number;
}

constexpr bool isSystemColour(Colour colour) {
    return (colour & 0x80000000U) != 0;
}

/// Whether a value is a colour at all: a mixture of red, green and blue, or one of the system's that exists.
constexpr bool isColour(Colour value) {
    constexpr Colour kWhite = 0xFFFFFF;
    constexpr unsigned kLastSystemColour = 30;
    return value <= kWhite || (value >= systemColour(0) && value <= systemColour(kLastSystemColour));
}

/// The number of a system colour.
constexpr int systemColourNumber(Colour colour) {
    return static_cast<int>(colour & 0xFF);
}

/// The ground of text windows and of tooltips.
inline constexpr Colour kWindowColour = systemColour(5);
inline constexpr Colour kToolTipColour = systemColour(24);
inline constexpr Colour kButtonFaceColour = systemColour(15);
/// The dark edges of what looks raised or sunken.
inline constexpr Colour kShadowColour = systemColour(16);
/// Their light edges.
inline constexpr Colour kHighlightColour = systemColour(20);

}  // namespace kavrelon
