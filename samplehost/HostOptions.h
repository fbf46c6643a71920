#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "samplehost/Charset.h"

namespace kavrelon {

/// A command line with a mistake; the text is one sentence for the user.
class HostOptionsError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What the sample host was asked to do.
struct HostOptions {
    enum class Source { Demo, Connect, Play };

    Source source = Source::Demo;
    /// --connect: a name, or an address without brackets, and a port from 1 to 65535.
    std::string host;
    std::uint16_t port = 0;
    /// --raw: a connection without telnet.
    bool raw = false;
    /// --term: the terminal type to tell a telnet server.
    std::string terminalType = "ansi";
    /// --charset: the remote system's characters.
    Charset charset = Charset::Utf8;
    /// --exact-colours: no default colours in place of resets that the terminal does not have.
    bool exactColours = false;
    /// --paint-all: everything received is painted, in a flood too.
    bool paintAll = false;
    /// --close-on-exit: the program ends with the session.
    bool closeOnExit = false;
    /// --play
    std::string playFile;
    /// --rate: bytes a second; as fast as possible without it.
    std::optional<std::uint32_t> rate;
    /// --ini and --profile; without them the host uses its own.
    std::optional<std::string> iniFile;
    std::optional<std::string> profile;
    /// --size: 1 to 1024 each; both 0 without it.
    int columns = 0;
    int lines = 0;
    /// --log
    std::optional<std::string> logFile;
    /// --record
    std::optional<std::string> recordFile;
    /// --snapshot, and --after in milliseconds. The program ends when the snapshot is taken, but with
    /// --every: that takes one again and again, so many milliseconds apart.
    std::optional<std::string> snapshotFile;
    std::uint32_t snapshotAfter = kDefaultSnapshotAfter;
    std::optional<std::uint32_t> snapshotEvery;
    /// --type: sent as if typed when the session is open, with its escapes resolved.
    std::string typedText;
    /// --command: text commands for the terminal, carried out when the session is open, in their order.
    std::vector<std::string> commands;
    /// --library: path of the DLL to load.
    std::optional<std::string> libraryFile;
    /// --registered: create the class through its registration.
    bool registered = false;
    /// --help-viewer: the document to show instead of a terminal.
    std::optional<std::string> helpViewerFile;
    /// --help: print the help text and end. Later options are not read.
    bool help = false;

    static constexpr std::uint32_t kDefaultSnapshotAfter = 2000;

    /// Whether the snapshot is the screen's text, and no picture.
    bool snapshotIsText() const;
    /// Whether a command line, right or wrong, is one for scripts: the program is to end by itself, and
    /// nobody may be there to answer it.
    static bool forScripts(std::span<const std::string> arguments);
    /// What the user calls the session: the profile, or where it comes from.
    std::string sessionName() const;

    /// Reads a command line, without the program's own name. An option's value is the next argument or
    /// follows "=". Throws HostOptionsError.
    static HostOptions parse(std::span<const std::string> arguments);
    /// Every option with an example, in lines of at most 79 characters.
    static std::string helpText();
};

}  // namespace kavrelon
