#pragma once

#include <string>

#include "samplehost/RemoteSystem.h"
#include "samplehost/SessionRecording.h"

namespace kavrelon {

/// A recorded session, played at its own pace or at a constant rate. It ignores what the user types. It stays
/// open at the end, so that its last screen can be looked at.
class PlaySession final : public RemoteSystem {
  public:
    /// `recording` is a recorder's file or any bytes. `bytesPerSecond` of 0 plays at the recording's own
    /// pace, and what has none at once.
    PlaySession(std::string recording, int bytesPerSecond);

    void advance(std::chrono::milliseconds elapsed, RemoteOutput& received) override;
    void send(std::string_view, bool) override {}
    void sendBreak() override {}
    void resize(int, int) override {}
    std::optional<SessionEnd> ending() const override { return std::nullopt; }

    bool allPlayed() const { return played_ == recording_.bytes().size(); }

  private:
    SessionRecording recording_;
    long long bytesPerSecond_;
    std::chrono::milliseconds clock_{0};
    std::size_t played_ = 0;
};

}  // namespace kavrelon
