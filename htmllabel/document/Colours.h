#pragma once

#include <string_view>

#include "support/Geometry.h"

namespace kavrelon {

/// The colour of an attribute's value: hexadecimal digits with or without "#", red first, or a colour name.
/// Of digits, red is the first two, green the two from the third on, blue the last two; what is missing is 0.
Colour mlngParseColor(std::string_view value);

/// One of the sixteen named colours, in any case; black for other names.
Colour mlngColorFromName(std::string_view name);

}  // namespace kavrelon
