#pragma once

#include <cstdint>

namespace kavrelon {

/// A key going down, and what the keyboard says at that moment.
struct KeyStroke {
    /// The platform's virtual-key code (`keys`). A handler that uses the key up sets it to 0.
    std::int16_t keyCode = 0;
    /// The keys that are held, as bits of `shifts`.
    std::int16_t Shift = 0;
    /// The right Alt key is held, or is this key. AltGr is this key and Ctrl.
    bool rightAlt = false;
};

}  // namespace kavrelon
