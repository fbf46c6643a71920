#pragma once

#include <string_view>

namespace kavrelon {

/// Whether a link of a document may be handed to the system: an http or https address of printable ASCII
/// characters, without blanks and quotes. Anything else could start a program or reach into the user's files.
bool isWebAddress(std::string_view link);

}  // namespace kavrelon
