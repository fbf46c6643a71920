#include "samplehost/PlaySession.h"

#include <algorithm>
#include <utility>

namespace kavrelon {

PlaySession::PlaySession(std::string recording, int bytesPerSecond)
    : recording_(std::move(recording)), bytesPerSecond_(bytesPerSecond) {}

void PlaySession::advance(std::chrono::milliseconds elapsed, RemoteOutput& received) {
    clock_ += elapsed;
    std::size_t due = recording_.dueAt(clock_);
    if (bytesPerSecond_ > 0) {
        // Counted from the start, so that slow rates lose nothing when each call rounds down.
        const auto byNow = static_cast<unsigned long long>(clock_.count() * bytesPerSecond_ / 1000);
        due = static_cast<std::size_t>(std::min<unsigned long long>(recording_.bytes().size(), byNow));
    }
    received.bytes().append(recording_.bytes(), played_, due - played_);
    played_ = due;
}

std::optional<SessionEnd> PlaySession::ending() const {
    if (played_ < recording_.bytes().size()) return std::nullopt;
    return SessionEnd{"All of it has been played.", false};
}

}  // namespace kavrelon
