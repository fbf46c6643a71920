#pragma once

#include <cstdint>
#include <string_view>

#include "support/Geometry.h"

namespace kavrelon {

/// A piece of text of one element on one line.
struct TextRun {
    std::int16_t element = 0;
    Rect place;  // pixels of the page
    std::string_view text;
};

}  // namespace kavrelon
