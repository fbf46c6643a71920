#pragma once

#include <string>

#include "samplehost/RemoteSystem.h"
#include "samplehost/SessionRecording.h"

namespace kavrelon {

/// A recorded session, played at its own pace or at a constant rate. It ignores what the user types, and ends
/// when all of it has been played.
class PlaySession final : public RemoteSystem {
  public:
    /// `recording` is a recorder's file or any bytes. `bytesPerSecond` of 0 plays at the recording's own
    /// pace, and what has none at once.
    PlaySession(std::string recording, int bytesPerSecond);

    void advance(std::chrono::milliseconds elapsed, RemoteOutput& received) override;
    void send(std::string_view, bool) override {}
    void sendBreak() override {}
    void resize(int, int) override {}
    std::optional<SessionEnd> ending() const override;

  private:
    SessionRecording recording_;
    long long bytesPerSecond_;
    std::chrono::milliseconds clock_{0};
    std::size_t played_ = 0;
};

}  // namespace kavrelon
