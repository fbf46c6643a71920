#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kavrelon {

/// How a session came to its end, for the user to read.
struct SessionEnd {
    std::string sentence;
    /// The connection broke off or never came about, where a log-off would be the expected end.
    bool failed = false;
};

/// A remote system as the host sees it: bytes come from it over time, what the user types goes to it, and it
/// may end. All text is single-byte, as it travels.
///
/// `send`, `sendBreak` and `resize` may be called while the bytes of the last `advance` are still being
/// worked on (the plug-in lets window messages through between blocks). None of the members throws but for
/// lack of memory.
class RemoteSystem {
  public:
    virtual ~RemoteSystem() = default;

    /// Lets `elapsed` time pass and appends what has arrived meanwhile to `received`.
    virtual void advance(std::chrono::milliseconds elapsed, std::string& received) = 0;
    /// Sends text that the user typed or pasted.
    virtual void send(std::string_view text) = 0;
    virtual void sendBreak() = 0;
    /// The user's screen has this size, in cells, from now on.
    virtual void resize(int columns, int rows) = 0;
    /// Nothing while the session goes on. What arrived before the end is still to be fetched with `advance`.
    virtual std::optional<SessionEnd> ending() const = 0;
};

}  // namespace kavrelon
