#pragma once

#include <cstdint>
#include <string>

#include "support/SystemColours.h"

namespace kavrelon {

/// What a document says of its page as a whole.
struct PageValues {
    /// The last BODY or NOFRAMES element; 0 when there is none.
    std::int16_t mintBodyIndex = 0;
    Colour mlngBodyBgColor = kButtonFaceColour;
    Colour mlngTextColor = 0;
    Colour mlngLinkColor = 0xFF0000;
    /// The source of the page's picture; empty for none.
    std::string mstrBackground;
};

}  // namespace kavrelon
