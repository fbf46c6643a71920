#pragma once

#include <cstdint>
#include <string>

#include "support/SystemColours.h"

namespace kavrelon {

/// The label's properties that a container saves, in the order and with the names in which they are saved.
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

    /// Whether a value is one of the two of `Appearance` or of `BorderStyle`.
    static bool isChoice(std::int16_t value);
    /// Whether text can have this size, in points. The upper limit is the platform's.
    static bool isFontSize(float value);
    /// Whether a value is one of `DefaultPadding` or `DefaultSpacing`.
    static bool isDistance(std::int16_t value);
    /// Whether all values can be kept. What is read from outside may hold anything.
    bool isValid() const;

    /// The values of properties that are missing in a container's saved set.
    static HTMLLabelProperties whenNotSaved() { return {}; }
    /// The values of a new control, before a container has set anything: no border, and another font.
    static HTMLLabelProperties atCreation() {
        HTMLLabelProperties properties;
        properties.BorderStyle = 0;
        properties.EnableTooltips = false;
        properties.DefaultFontName = "Arial";
        return properties;
    }
};

}  // namespace kavrelon
