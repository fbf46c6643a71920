#pragma once

#include <cstdint>

namespace kavrelon {

/// A platform colour: red in the low byte, then green, then blue (0x0000FF is pure red).
using Colour = std::uint32_t;

/// A point in pixels, relative to its container's top left corner.
struct Point {
    int x = 0;
    int y = 0;
    bool operator==(const Point&) const = default;
};

/// A size in pixels.
struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

/// A block of pixels; column `right` and row `bottom` are the first outside it.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool operator==(const Rect&) const = default;
};

}  // namespace kavrelon
