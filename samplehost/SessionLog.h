#pragma once

#include <chrono>
#include <cstdint>
#include <ostream>
#include <span>
#include <string_view>

namespace kavrelon {

/// Logs a session for people to read, with one line for each piece. A piece ends at a line feed:
///
///        0.132 received  "Welcome\r\n"
///        0.132 unmatched "\x1B[?2004h"
///        1.907 sent      "ls\r"
///        2.100 command   "CUTOK 0"
///        2.500 note      connection closed
///
/// The time is in seconds since the log was opened. Everything outside 32 to 126, `"` and `\` is escaped.
class SessionLog {
  public:
    using Clock = std::chrono::steady_clock;
    using Bytes = std::span<const std::uint8_t>;

    /// The stream must outlive the log. It is flushed after every call, so that the log survives a crash.
    explicit SessionLog(std::ostream& out, Clock::time_point start = Clock::now());

    void received(Bytes bytes, Clock::time_point now = Clock::now());
    void sent(Bytes bytes, Clock::time_point now = Clock::now());
    /// A text command that the terminal is told.
    void command(Bytes text, Clock::time_point now = Clock::now());
    /// A received sequence that was dropped. Its bytes are also among those passed to `received`.
    void unmatched(Bytes bytes, Clock::time_point now = Clock::now());
    /// An event of the session, in words.
    void note(std::string_view text, Clock::time_point now = Clock::now());

  private:
    void writePieces(std::string_view label, Bytes bytes, Clock::time_point now);
    void writeTime(Clock::time_point now);

    std::ostream& out_;
    Clock::time_point start_;
};

}  // namespace kavrelon
