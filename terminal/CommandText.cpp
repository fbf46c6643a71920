#include "terminal/CommandText.h"

#include <algorithm>

#include "support/AsciiText.h"

namespace kavrelon {
namespace {

constexpr std::size_t kLineLength = 72;
constexpr std::size_t kMostPlainBlanks = 3;

std::string codeOf(char c) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return {'<', kDigits[byte / 16], kDigits[byte % 16], '>'};
}

/// Without line breaks. Stops once there is more than can be shown.
std::string visible(std::string_view command) {
    std::string text;
    while (!command.empty() && text.size() <= kMostShownOfCommand) {
        const std::size_t blanks = std::min(command.find_first_not_of(' '), command.size());
        if (blanks > kMostPlainBlanks) {
            text += '<' + std::to_string(blanks) + " blanks>";
        } else {
            text.append(blanks, ' ');
        }
        command.remove_prefix(blanks);
        if (command.empty()) break;
        const bool plain = !isControl(command[0]) && static_cast<unsigned char>(command[0]) < 0x80;
        text += plain ? std::string(1, command[0]) : codeOf(command[0]);
        command.remove_prefix(1);
    }
    return text;
}

}  // namespace

std::string shownCommand(std::string_view command) {
    std::string text = visible(command);
    if (text.size() > kMostShownOfCommand) text.replace(kMostShownOfCommand, std::string::npos, "...");
    for (std::size_t end = kLineLength; end < text.size(); end += kLineLength + 1) text.insert(end, 1, '\n');
    return text;
}

bool canBeShownWhole(std::string_view command) {
    return visible(command).size() <= kMostShownOfCommand;
}

}  // namespace kavrelon
