#pragma once

#include <cstdint>
#include <string>

namespace kavrelon {

/// What a layout takes from the control that shows the document.
struct LayoutDefaults {
    std::string DefaultFontName = "Arial";
    float DefaultFontSize = 10;  // points
    bool UnderlineLinks = true;
    /// The page's margin on all sides, in pixels.
    std::int16_t DefaultPadding = 4;
    /// The space above and below rules and tables, in pixels.
    std::int16_t DefaultSpacing = 4;
};

}  // namespace kavrelon
