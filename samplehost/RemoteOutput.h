#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kavrelon {

/// What a remote system has handed over and the terminal has not got yet: bytes, and the text commands and
/// interruptions that stand between them.
class RemoteOutput {
  public:
    /// For bytes to be appended to.
    std::string& bytes() { return bytes_; }
    /// Adds a command, to be carried out after all that was added before.
    void addCommand(std::string text) { marks_.push_back({bytes_.size(), std::move(text)}); }
    /// What is added from here on does not continue what was added before.
    void addInterruption() { marks_.push_back({bytes_.size(), std::nullopt}); }
    /// Takes all of `later`, of which nothing has been taken yet.
    void append(RemoteOutput&& later);

    bool empty() const { return taken_ == bytes_.size() && marks_.empty(); }
    /// The number of bytes.
    std::size_t size() const { return bytes_.size() - taken_; }
    /// The command that is next; nothing when bytes or an interruption are.
    std::optional<std::string> takeCommand();
    /// Whether an interruption is next.
    bool takeInterruption();
    /// The next bytes up to a command or an interruption, at most `most`. They stay valid until something is
    /// added.
    std::string_view takeBytes(std::size_t most);

  private:
    struct Mark {
        std::size_t at;
        std::optional<std::string> command;
    };

    bool markIsNext() const { return !marks_.empty() && marks_.front().at <= taken_; }

    std::string bytes_;
    std::size_t taken_ = 0;
    std::deque<Mark> marks_;
};

}  // namespace kavrelon
