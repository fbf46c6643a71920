#pragma once

#include <string>

#include "support/SystemColours.h"

namespace kavrelon {

/// What a document takes from the control that shows it.
struct DocumentDefaults {
    std::string DefaultFontName = "Arial";
    float DefaultFontSize = 10;  // points
    Colour BackColor = kButtonFaceColour;
    bool EnableAnchors = false;
};

}  // namespace kavrelon
