#pragma once

#include <cstdint>

#include "support/Keys.h"

namespace kavrelon {

/// A key going down, and what the keyboard says at that moment.
struct KeyStroke {
    /// The platform's virtual-key code (`keys`). A handler that uses the key up sets it to 0.
    std::int16_t keyCode = 0;
    /// The keys that are held, as bits of `shifts`.
    std::int16_t Shift = 0;
    /// The right Alt key is held, or is this key. AltGr is this key and Ctrl.
    bool rightAlt = false;
    /// Ctrl is up, although nobody may have been told: what had the keyboard in between, such as a menu, may
    /// have kept the release.
    bool ctrlReleased = false;
};

/// The stroke that the platform's keyboard tells of. The Pause key calls itself Cancel while Ctrl is held.
constexpr KeyStroke strokeOf(std::int16_t keyCode, std::int16_t shift, bool rightAlt) {
    return {.keyCode = keyCode == keys::kCancel ? keys::kPause : keyCode,
            .Shift = shift,
            .rightAlt = rightAlt,
            .ctrlReleased = (shift & shifts::kCtrl) == 0};
}

}  // namespace kavrelon
