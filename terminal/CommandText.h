#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kavrelon {

/// The most characters that a message box has room for on any screen.
inline constexpr std::size_t kMostShownOfCommand = 2000;

/// A command of the remote side as the user is to read it, with nothing in it that hides or misleads:
/// printable ASCII stands for itself, any other byte as its hexadecimal code ("<0A>"), and more than three
/// blanks in a row as their number ("<12 blanks>"). Lines are broken, since a message box cuts off what is
/// too wide for it. What comes after the first `kMostShownOfCommand` characters is replaced by dots.
std::string shownCommand(std::string_view command);

/// Whether that shows the whole of it.
bool canBeShownWhole(std::string_view command);

}  // namespace kavrelon
