#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "samplehost/RemoteOutput.h"

namespace kavrelon {

/// How a session ended, for the user.
struct SessionEnd {
    std::string sentence;
    /// Whether the connection broke off. Otherwise the remote system has logged off, as is expected.
    bool failed = false;
};

/// A remote system as the host sees it: it sends bytes and text commands over time, receives what the user
/// types, and may end. All text is single-byte.
///
/// `send`, `sendBreak` and `resize` may be called while the bytes of the last `advance` are still being
/// processed (the plug-in lets window messages through between blocks). Members throw std::bad_alloc and
/// nothing else.
class RemoteSystem {
  public:
    virtual ~RemoteSystem() = default;

    /// Lets `elapsed` time pass and appends what has arrived in it to `received`.
    virtual void advance(std::chrono::milliseconds elapsed, RemoteOutput& received) = 0;
    /// Sends text that the user typed or pasted. A CR LF in it is a line's end, to be sent as the connection
    /// has them; with `crLf` it is to be sent as both characters.
    virtual void send(std::string_view text, bool crLf) = 0;
    virtual void sendBreak() = 0;
    /// The user's screen now has this size, in cells.
    virtual void resize(int columns, int rows) = 0;
    /// Nothing while the session goes on. After the end, `advance` still returns what arrived before it.
    virtual std::optional<SessionEnd> ending() const = 0;
};

}  // namespace kavrelon
