#pragma once

#include <optional>
#include <string>

namespace kavrelon {

/// What the user is told about the program and its session. Paths are full ones.
struct AboutFacts {
    std::string hostVersion;
    /// The library in use; both are empty where it is not known.
    std::string libraryVersion;
    std::string libraryFile;
    /// As `PlugIn::identity` has it.
    std::string plugIn;
    std::string settingsFile;
    std::string profile;
    std::optional<std::string> logFile;
    std::optional<std::string> recordFile;
};

/// The facts in lines, for a message box: each path has a line of its own, below what it is.
std::string aboutText(const AboutFacts& facts);

}  // namespace kavrelon
