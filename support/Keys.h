#pragma once

#include <cstdint>

namespace kavrelon {

/// The shift state of a key or mouse event, as bits.
namespace shifts {
inline constexpr std::int16_t kShift = 1;
inline constexpr std::int16_t kCtrl = 2;
inline constexpr std::int16_t kAlt = 4;
}  // namespace shifts

/// The mouse buttons of an event, as bits.
namespace buttons {
inline constexpr std::int16_t kLeft = 1;
inline constexpr std::int16_t kRight = 2;
inline constexpr std::int16_t kMiddle = 4;
}  // namespace buttons

/// Key codes, with the platform's numbers.
namespace keys {
/// Pause calls itself Cancel while Ctrl is held.
inline constexpr std::int16_t kCancel = 3;
inline constexpr std::int16_t kTab = 9;
inline constexpr std::int16_t kEnter = 13;
inline constexpr std::int16_t kCtrl = 17;
inline constexpr std::int16_t kAlt = 18;
inline constexpr std::int16_t kPause = 19;
inline constexpr std::int16_t kPageUp = 33;
inline constexpr std::int16_t kPageDown = 34;
inline constexpr std::int16_t kEnd = 35;
inline constexpr std::int16_t kHome = 36;
inline constexpr std::int16_t kLeft = 37;
inline constexpr std::int16_t kUp = 38;
inline constexpr std::int16_t kRight = 39;
inline constexpr std::int16_t kDown = 40;
inline constexpr std::int16_t kInsert = 45;
inline constexpr std::int16_t kDelete = 46;
inline constexpr std::int16_t kF1 = 112;
inline constexpr std::int16_t kF12 = 123;
}  // namespace keys

}  // namespace kavrelon
