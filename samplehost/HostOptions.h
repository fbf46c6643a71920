#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

namespace kavrelon {

/// A command line that cannot be followed; the text is one sentence for the user.
class HostOptionsError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What the sample host was asked to do.
struct HostOptions {
    enum class Source { Demo, Connect, Play };

    Source source = Source::Demo;
    /// --connect: name or address without brackets, and port 1 to 65535.
    std::string host;
    std::uint16_t port = 0;
    /// --raw: no telnet on the connection.
    bool raw = false;
    /// --term: the terminal type told to a telnet server.
    std::string terminalType = "ansi";
    /// --play
    std::string playFile;
    /// --rate: bytes a second; as fast as possible where it is missing.
    std::optional<std::uint32_t> rate;
    /// --ini and --profile; where they are missing the host has its own.
    std::optional<std::string> iniFile;
    std::optional<std::string> profile;
    /// --size: 1 to 1024 each; both 0 where it is missing.
    int columns = 0;
    int lines = 0;
    /// --log
    std::optional<std::string> logFile;
    /// --snapshot, and --after in milliseconds: the program ends once the picture is taken.
    std::optional<std::string> snapshotFile;
    std::uint32_t snapshotAfter = kDefaultSnapshotAfter;
    /// --type: sent once the session is open, as if it had been typed; escapes are resolved.
    std::string typedText;
    /// --library: the DLL to load straight from its file.
    std::optional<std::string> libraryFile;
    /// --registered: create the class through its registration.
    bool registered = false;
    /// --help-viewer: the document to show instead of a terminal.
    std::optional<std::string> helpViewerFile;
    /// --help: print the help text and end. Nothing else counts then.
    bool help = false;

    static constexpr std::uint32_t kDefaultSnapshotAfter = 2000;

    /// Reads a command line without the program's own name. Options take their value as the next argument or
    /// behind "=". Throws HostOptionsError.
    static HostOptions parse(std::span<const std::string> arguments);
    /// Every option with an example, lines of at most 79 characters.
    static std::string helpText();
};

}  // namespace kavrelon
