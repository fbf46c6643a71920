#pragma once

#include <string>

namespace kavrelon {

/// The host's parent object: the six of its members that the plug-in uses. Each may throw anything.
class HostParent {
  public:
    virtual ~HostParent() = default;

    /// Text for the remote system, single-byte.
    virtual void ParentSendData(const std::string& Value) = 0;
    /// The connection's base window has closed.
    virtual void ParentWindowClosed() = 0;
    /// The break signal for the remote system.
    virtual void ParentSendBreak() = 0;
    /// Name of the connection profile.
    virtual std::string ParentConnectionProfile() = 0;
    /// Path of the settings file.
    virtual std::string ParentIniFile() = 0;
    /// A command for the host itself.
    virtual void ParentSendCommand(const std::string& Value) = 0;
};

}  // namespace kavrelon
