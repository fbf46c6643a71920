#pragma once

#include <cstddef>
#include <string>

namespace kavrelon {

/// A help text as hosts send it: sections of paragraphs, lists, notes and tables, with links, fonts and
/// entities. Exactly `length` characters (at least 200), the same at every call.
std::string helpText(std::size_t length);

}  // namespace kavrelon
