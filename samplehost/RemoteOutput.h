#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kavrelon {

/// What a remote system has handed over and the terminal has not got yet: bytes, and the text commands that
/// stand between them.
class RemoteOutput {
  public:
    /// For bytes to be appended to.
    std::string& bytes() { return bytes_; }
    /// Adds a command, to be carried out after all that was added before.
    void addCommand(std::string text) { commands_.push_back({bytes_.size(), std::move(text)}); }
    /// Takes all of `later`, of which nothing has been taken yet.
    void append(RemoteOutput&& later);

    bool empty() const { return taken_ == bytes_.size() && commands_.empty(); }
    /// The command that is next; nothing when bytes are.
    std::optional<std::string> takeCommand();
    /// The next bytes up to a command, at most `most`. They stay valid until something is added.
    std::string_view takeBytes(std::size_t most);

  private:
    struct Command {
        std::size_t at;
        std::string text;
    };

    std::string bytes_;
    std::size_t taken_ = 0;
    std::deque<Command> commands_;
};

}  // namespace kavrelon
