#pragma once

#include <windows.h>

#include <string>

namespace kavrelon {

/// An error code in the form in which users look it up: "0x80040154".
std::string errorCode(DWORD code);

/// The system's text for an error code, without line end and full stop; "error 0x80040154" when it has none.
std::string systemMessage(DWORD code);

}  // namespace kavrelon
