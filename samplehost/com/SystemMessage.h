#pragma once

#include <windows.h>

#include <string>

namespace kavrelon {

/// An error code as it is looked up, in hexadecimal digits: "0x80040154".
std::string errorCode(DWORD code);

/// The system's text for an error code, without a line end or full stop; "error 0x80040154" when it has none.
std::string systemMessage(DWORD code);

}  // namespace kavrelon
