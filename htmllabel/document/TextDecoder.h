#pragma once

#include <memory_resource>
#include <string_view>

namespace kavrelon {

/// `text` with its numeric character references replaced by their characters, and then line ends and tabs by
/// spaces. The result is `text` itself where that changes nothing, otherwise a text that `memory` holds.
/// References to 1000 and above are dropped. Raises InvalidProcedureCall for a number between 256 and 999,
/// Overflow for one above 32767.
std::string_view mstrDecodeText(std::string_view text, std::pmr::memory_resource& memory);

}  // namespace kavrelon
