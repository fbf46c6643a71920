#include "terminal/HostCommand.h"

#include <algorithm>

#include "support/Conversions.h"
#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

/// Removes the field before the next ";" from the text, and the ";". Without a ";" there is no field.
std::int16_t takeNumber(std::string_view& text) noexcept {
    const auto end = text.find(';');
    if (end == std::string_view::npos) return 0;
    std::int16_t number = 0;
    carryOn([&] { number = toInt16(text.substr(0, end)); });
    text.remove_prefix(end + 1);
    return number;
}

}  // namespace

HostCommand::HostCommand(std::string_view text) {
    const auto end = std::min(text.find(' '), text.size());
    word = text.substr(0, end);
    argument = text.substr(std::min(end + 1, text.size()));
    for (char& c : word) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
}

ImageCommand::ImageCommand(std::string_view argument) noexcept {
    topX = takeNumber(argument);
    topY = takeNumber(argument);
    bottomX = takeNumber(argument);
    bottomY = takeNumber(argument);
    number = takeNumber(argument);
    name = argument;
}

}  // namespace kavrelon
