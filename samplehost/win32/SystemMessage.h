#pragma once

#include <windows.h>

#include <string>

namespace kavrelon {

/// The system's text for an error code, without a line end or full stop; "error N" when it has none.
std::string systemMessage(DWORD code);

}  // namespace kavrelon
