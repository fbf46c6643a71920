#pragma once

#include <string>
#include <string_view>

namespace kavrelon {

/// Converts a text of the system's ANSI code page for the platform's wide calls.
std::wstring toWide(std::string_view ansi);

}  // namespace kavrelon
