#pragma once

#include <cstdint>
#include <optional>

namespace kavrelon {

/// Lets the bell ring at most once a second: a flood of bells must neither pile up nor drive the user out of
/// the room.
class BellLimit {
  public:
    static constexpr std::uint32_t kQuietMilliseconds = 1000;

    /// Whether the bell may ring at `now`, in milliseconds of a clock that may wrap. If so, its quiet time
    /// begins; a ring that came too early does not prolong it.
    bool mayRing(std::uint32_t now) {
        if (lastRing_ && now - *lastRing_ < kQuietMilliseconds) return false;
        lastRing_ = now;
        return true;
    }

  private:
    std::optional<std::uint32_t> lastRing_;
};

}  // namespace kavrelon
