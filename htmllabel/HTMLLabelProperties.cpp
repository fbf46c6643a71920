#include "htmllabel/HTMLLabelProperties.h"

namespace kavrelon {

bool HTMLLabelProperties::isChoice(std::int16_t value) {
    return value == 0 || value == 1;
}

// What is no number is not greater than 0 either.
bool HTMLLabelProperties::isFontSize(float value) {
    constexpr float kLargest = 1638;
    return value > 0 && value <= kLargest;
}

bool HTMLLabelProperties::isDistance(std::int16_t value) {
    return value >= 0;
}

bool HTMLLabelProperties::isValid() const {
    constexpr std::size_t kLongestName = 255;
    return isChoice(Appearance) && isChoice(BorderStyle) && isColour(BackColor) &&
           isFontSize(DefaultFontSize) && DefaultFontName.size() <= kLongestName &&
           isDistance(DefaultPadding) && isDistance(DefaultSpacing);
}

}  // namespace kavrelon
