#pragma once

#include <chrono>
#include <cstddef>
#include <optional>

namespace kavrelon {

/// Decides when the terminal is to paint. In a flood, while more waits than a block, it works without
/// painting, and the screen is shown at most 30 times a second and once more when the flood is over.
class PaintPacer {
  public:
    using Clock = std::chrono::steady_clock;
    enum class Step {
        None,
        Hold,     // paint no longer
        Show,     // show the screen as it is now, and paint no more than before
        Release,  // show the screen, and paint again
    };

    /// More than this is a flood. Small enough for the window to answer while it is painted.
    static constexpr std::size_t kBlock = 4096;
    static constexpr std::chrono::milliseconds kInterval{33};
    /// The longest time between two turns of the user.
    static constexpr std::chrono::milliseconds kTurn{20};

    /// This much had arrived when the connection was asked. Until it is asked again the flood goes on, or
    /// does not.
    void arrived(std::size_t bytes) { flood_ = bytes > kBlock; }
    /// What is to be done before the next block.
    Step next(Clock::time_point now);
    /// The screen has been shown, from one time to another.
    void shown(Clock::time_point from, Clock::time_point to);
    bool holds() const { return holds_; }
    /// While painting is held, when `next` is to be asked although nothing arrives.
    std::optional<Clock::time_point> due() const;

  private:
    bool flood_ = false;
    bool holds_ = false;
    Clock::time_point due_;
};

}  // namespace kavrelon
