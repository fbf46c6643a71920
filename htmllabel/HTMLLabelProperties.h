#pragma once

#include <cstdint>
#include <string>

#include "support/SystemColours.h"

namespace kavrelon {

/// The label's properties that a container saves, in the order of saving and under the names of saving.
struct HTMLLabelProperties {
    std::int16_t Appearance = 1;   // 1 is three-dimensional
    std::int16_t BorderStyle = 1;  // 0 is none
    Colour BackColor = kButtonFaceColour;
    bool EnableAnchors = false;
    bool EnableScroll = false;
    bool EnableTooltips = true;
    std::string DefaultFontName = "MS Sans Serif";
    float DefaultFontSize = 10;  // points
    bool UnderlineLinks = true;
    std::int16_t DefaultPadding = 4;  // pixels
    std::int16_t DefaultSpacing = 4;  // pixels
    bool operator==(const HTMLLabelProperties&) const = default;

    /// What a property is that a container's saved set lacks.
    static HTMLLabelProperties whenNotSaved() { return {}; }
    /// What a control starts with that no container has given anything yet: the surface has no border, and
    /// the font is another one.
    static HTMLLabelProperties atCreation() {
        HTMLLabelProperties properties;
        properties.BorderStyle = 0;
        properties.EnableTooltips = false;
        properties.DefaultFontName = "Arial";
        return properties;
    }
};

}  // namespace kavrelon
