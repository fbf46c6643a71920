#pragma once

#include <cstdint>

namespace kavrelon {

/// A font to draw text with. `charset` is the platform's number: 255 OEM, 1 default.
struct FontChoice {
    const char* name;
    std::uint8_t charset;
};

}  // namespace kavrelon
