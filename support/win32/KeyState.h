#pragma once

#include <cstdint>

namespace kavrelon {

/// Whether a key or mouse button, by the platform's number, was down at the message being handled.
bool isDown(int key);

/// The Shift, Ctrl and Alt keys that were down at the message being handled: the bits of `shifts`.
std::int16_t shiftState();

}  // namespace kavrelon
