#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessWindow.h"
#include "headless/RecordingParent.h"
#include "headless/TerminalSink.h"
#include "headless/TextProfileFile.h"
#include "plugin/clsTerminal.h"
#include "recognizer/EscapeRecognizer.h"
#include "recognizer/EscapeTree.h"

namespace kavrelon {

/// A whole session in memory: the plug-in on headless windows, a recogniser of its table that hands it a
/// received stream, and a host that keeps what it is told. Not connected when it is made.
class HeadlessSession {
  public:
    using Texts = std::vector<std::string>;
    /// What the plug-in reports as its version.
    static constexpr const char* kVersion = "1.0.70";

    /// The plug-in's table, compiled at the first call, which takes some milliseconds.
    static const EscapeTree& escapeTree();

    HeadlessSession() = default;
    HeadlessSession(const HeadlessSession&) = delete;
    HeadlessSession& operator=(const HeadlessSession&) = delete;

    TextProfileFile profiles;
    HeadlessPlatform platform{profiles};
    std::shared_ptr<RecordingParent> parent = std::make_shared<RecordingParent>();
    std::unique_ptr<clsTerminal> terminal = std::make_unique<clsTerminal>(platform, kVersion);
    /// Called when the terminal fails at a byte or sequence of a stream, which then goes on.
    std::function<void(const RuntimeError&)> onFailure = [](const RuntimeError&) {};

    /// Makes the calls of a host that connects. May be done again, for a new session.
    void connect();

    /// Lets go of the plug-in, as a host does, and makes a new one, not connected. Not while it is fed.
    void renew();

    /// Takes the next block of a received stream.
    void feed(std::span<const std::uint8_t> block);
    /// Hands the terminal bytes that belong to no sequence. Raises what the terminal raises.
    void type(std::string_view bytes) const;
    /// Hands the terminal the fields of a row, the first of them at `lowerBound`. Raises what the terminal
    /// raises.
    void sequence(int row, const Texts& fields = {}, int lowerBound = 1) const;

    /// The current window of the stack; these raise ObjectNotSet when there is none.
    frmTerm& form() const { return *terminal->currentWindow(); }
    Screen& screen() const { return form().screen(); }
    HeadlessWindow& window() const;

    /// The code in a cell of the current window's buffer, 0-based.
    std::uint8_t stored(int column, int row) const;

  private:
    class Sink final : public TerminalSink {
      public:
        explicit Sink(const HeadlessSession& session) : TerminalSink(*session.terminal), session_(session) {}

      private:
        void failed(const RuntimeError& error) override { session_.onFailure(error); }

        const HeadlessSession& session_;
    };

    std::optional<Sink> sink_;
    std::optional<EscapeRecognizer> recognizer_;
};

}  // namespace kavrelon
