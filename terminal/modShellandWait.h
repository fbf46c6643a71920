#pragma once

#include <string>
#include <string_view>

namespace kavrelon {

/// How the platform starts programs.
class Launcher {
  public:
    virtual ~Launcher() = default;

    /// Opens `program` (a program, a document or an address) with its default action, without an owner
    /// window. An empty directory means the process's current one. The platform's result: above 32 is
    /// success.
    virtual long shellExecute(const std::string& program, const std::string& parameters,
                              const std::string& directory, int showStyle) = 0;
    /// Starts a command line as it stands. The task's identifier, or 0 when it could not be started.
    virtual long startProgram(const std::string& commandLine, int showStyle) = 0;
    /// What a failed result means, in words for the user.
    virtual std::string failureText(long result) = 0;
};

namespace modShellandWait {

/// A command text taken apart.
struct Command {
    std::string program;
    std::string parameters;
    std::string directory;
};

/// The program is the text inside the quotes that the command begins with, or else the text before its first
/// space; a quote that is never closed makes all of the rest the program. The directory is the one given, or
/// the program's own when its path names one, or empty.
Command split(std::string_view commandText, std::string_view directory);

/// The longest program, address or folder that is handed to the platform, in characters: its own call writes
/// beyond its buffers from somewhat longer ones on. And the longest command text.
inline constexpr std::size_t kLongestName = 900;
inline constexpr std::size_t kLongestCommand = 8000;

/// The result of `start` and `openAddress` for what is too long, or holds a null character, after which the
/// platform would not read on. The launcher is not called then.
inline constexpr long kRefused = -1;

/// Whether `start` would refuse a command text.
bool isRefused(std::string_view commandText, std::string_view directory = {});

/// Opens the command text, and where the platform does not know what to do with it, starts it as a program.
/// Access denied, a sharing violation and a missing association are final. Returns the platform's result or
/// the task's identifier.
long start(Launcher& launcher, const std::string& commandText, int showStyle,
           std::string_view directory = {});

/// Opens a web address, as a whole.
long openAddress(Launcher& launcher, const std::string& address, int showStyle);

/// Whether a result of these means that something was started.
bool succeeded(long result);

}  // namespace modShellandWait
}  // namespace kavrelon
