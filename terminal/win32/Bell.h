#pragma once

namespace kavrelon {

/// Sounds a tone without waiting for its end. What comes while it sounds, or sooner than `BellLimit` allows,
/// is dropped.
void soundBell(int frequencyHertz, int milliseconds) noexcept;

}  // namespace kavrelon
