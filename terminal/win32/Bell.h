#pragma once

namespace kavrelon {

/// Sounds a tone without waiting for its end. A request within a second of the last tone's start is dropped:
/// a flood of bells must neither pile up nor drive the user out of the room.
void soundBell(int frequencyHertz, int milliseconds) noexcept;

}  // namespace kavrelon
