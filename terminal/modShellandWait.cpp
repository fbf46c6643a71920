#include "terminal/modShellandWait.h"

#include <algorithm>

namespace kavrelon::modShellandWait {
namespace {

constexpr long kFirstSuccess = 33;
constexpr long kAccessDenied = 5;
constexpr long kSharingViolation = 26;
constexpr long kNoAssociation = 31;

bool isFinal(long result) {
    return succeeded(result) || result == kAccessDenied || result == kSharingViolation ||
           result == kNoAssociation;
}

bool isRefused(std::string_view commandText, const Command& command) {
    return commandText.size() > kLongestCommand || command.program.size() > kLongestName ||
           command.directory.size() > kLongestName || commandText.find('\0') != std::string_view::npos;
}

}  // namespace

Command split(std::string_view commandText, std::string_view directory) {
    const bool quoted = commandText.starts_with('"');
    if (quoted) commandText.remove_prefix(1);
    const auto end = std::min(commandText.find(quoted ? '"' : ' '), commandText.size());

    Command command;
    command.program = commandText.substr(0, end);
    std::string_view rest = commandText.substr(std::min(end + 1, commandText.size()));
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    command.parameters = rest;
    command.directory = directory;
    if (directory.empty()) {
        const auto folderEnd = command.program.rfind('\\');
        if (folderEnd != std::string::npos) command.directory = command.program.substr(0, folderEnd);
    }
    return command;
}

long start(Launcher& launcher, const std::string& commandText, int showStyle, std::string_view directory) {
    const Command command = split(commandText, directory);
    if (isRefused(commandText, command)) return kRefused;
    const long result =
        launcher.shellExecute(command.program, command.parameters, command.directory, showStyle);
    if (isFinal(result)) return result;
    const long task = launcher.startProgram(commandText, showStyle);
    return task != 0 ? task : result;
}

bool isRefused(std::string_view commandText, std::string_view directory) {
    return isRefused(commandText, split(commandText, directory));
}

long openAddress(Launcher& launcher, const std::string& address, int showStyle) {
    if (isRefused(address, {.program = address, .parameters = {}, .directory = {}})) return kRefused;
    return launcher.shellExecute(address, {}, {}, showStyle);
}

bool succeeded(long result) {
    return result >= kFirstSuccess;
}

}  // namespace kavrelon::modShellandWait
