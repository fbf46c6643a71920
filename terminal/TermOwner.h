#pragma once

#include <cstdint>
#include <string>

namespace kavrelon {

/// What a terminal window needs of whoever created it: the way out to the host. The library's own class
/// offers the same five members to others, as the automation interface ITerminalCallBack.
class TermOwner {
  public:
    virtual ~TermOwner() = default;

    /// The window is about to close.
    virtual void WindowHasClosed() = 0;
    /// The string of function key `KeyNo` (0 to 48; 13 to 24 with Alt, 25 to 36 with Shift, 37 to 48 with
    /// both), empty when the key has none. Raises SubscriptOutOfRange for any other number.
    virtual std::string FuncKey(std::int16_t KeyNo) = 0;
    /// Sends the break signal to the remote system.
    virtual void SendBreak() = 0;
    /// Sends single-byte text to the remote system.
    virtual void SendTermData(const std::string& Value) = 0;
    /// Sends a command to the host itself.
    virtual void SendCommand(const std::string& Value) = 0;
};

}  // namespace kavrelon
