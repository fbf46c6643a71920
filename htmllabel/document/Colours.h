#pragma once

#include <string_view>

#include "support/Geometry.h"

namespace kavrelon {

/// The colour of an attribute's value: hexadecimal digits with or without "#", or a colour name. The first
/// two digits are red, the two from the third on green, the last two blue; what is missing is 0.
Colour mlngParseColor(std::string_view value);

/// One of the sixteen named colours, in any case; black for other names.
Colour mlngColorFromName(std::string_view name);

}  // namespace kavrelon
