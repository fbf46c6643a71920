#pragma once

#include "terminal/TermWindow.h"

namespace kavrelon {

/// Sounds a tone without waiting for its end. What comes while the same tone sounds, or sooner than
/// `BellLimit` allows it, is dropped: then this is false.
bool soundBell(Tone tone) noexcept;

}  // namespace kavrelon
