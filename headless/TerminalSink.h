#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "plugin/clsTerminal.h"
#include "recognizer/EscapeSink.h"
#include "support/RuntimeError.h"

namespace kavrelon {

/// Hands what a recogniser finds to a terminal of the same process, as a host does through COM: byte by byte
/// and sequence by sequence. A call that fails is reported, and the stream goes on.
class TerminalSink : public EscapeSink {
  public:
    /// The terminal must outlive the sink.
    explicit TerminalSink(clsTerminal& terminal) : terminal_(terminal) {}

    void plain(std::span<const std::uint8_t> bytes) override {
        clsTerminal& terminal = terminal_;
        auto next = bytes.begin();
        while (next != bytes.end()) {
            try {
                while (next != bytes.end()) terminal.IClientReceive_ReceiveData(*next++);
            } catch (const RuntimeError& error) {
                failed(error);
            }
        }
    }

    void sequence(std::int16_t index, std::span<const std::string_view> fields) override {
        try {
            terminal_.IClientEscTree_EscTreeProcess(index, EscapeArguments(fields));
        } catch (const RuntimeError& error) {
            failed(error);
        }
    }

    void unmatched(std::span<const std::uint8_t>) override {}

  protected:
    /// A byte or sequence made the terminal fail.
    virtual void failed(const RuntimeError&) {}

  private:
    clsTerminal& terminal_;
};

}  // namespace kavrelon
