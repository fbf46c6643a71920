#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kavrelon {

/// Writes down what the terminal gets, and when. The file begins with a line of its own; then comes for each
/// piece a line with its time, in milliseconds from the start, and its length, and after that its bytes.
class SessionRecorder {
  public:
    using Clock = std::chrono::steady_clock;

    /// The stream must outlive the recorder.
    explicit SessionRecorder(std::ostream& out, Clock::time_point start = Clock::now());

    void received(std::string_view bytes, Clock::time_point now = Clock::now());

  private:
    std::ostream& out_;
    Clock::time_point start_;
};

/// A recorded session. A file that no recorder has written is one piece without a pace.
class SessionRecording {
  public:
    /// What is no piece where one should begin is the end: a recording may have been cut short.
    explicit SessionRecording(std::string file);

    bool paced() const { return paced_; }
    const std::string& bytes() const { return bytes_; }
    /// How many of the bytes are due at a time from the start.
    std::size_t dueAt(std::chrono::milliseconds time) const;

  private:
    struct Piece {
        std::chrono::milliseconds at;
        std::size_t end;
    };

    void takePieces(std::string_view rest);

    std::string bytes_;
    std::vector<Piece> pieces_;
    bool paced_ = false;
};

}  // namespace kavrelon
