#pragma once

#include <cstdint>

namespace kavrelon {

/// Whether a key or mouse button, given by the platform's number, was down at the time of the current
/// message.
bool isDown(int key);

/// The Shift, Ctrl and Alt keys that were down at the time of the current message: bits of `shifts`.
std::int16_t shiftState();

}  // namespace kavrelon
