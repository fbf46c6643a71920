#include "htmllabel/HTMLLabelProperties.h"

#include <cmath>

namespace kavrelon {

bool HTMLLabelProperties::isChoice(std::int16_t value) {
    return value == 0 || value == 1;
}

bool HTMLLabelProperties::isValid() const {
    constexpr float kLargestFont = 2160;
    constexpr std::size_t kLongestName = 255;
    return isChoice(Appearance) && isChoice(BorderStyle) && std::isfinite(DefaultFontSize) &&
           DefaultFontSize >= 1 && DefaultFontSize <= kLargestFont &&
           DefaultFontName.size() <= kLongestName && DefaultPadding >= 0 && DefaultSpacing >= 0;
}

}  // namespace kavrelon
