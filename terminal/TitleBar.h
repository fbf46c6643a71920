#pragma once

#include <cstdint>

#include "terminal/TermWindow.h"

namespace kavrelon {

/// `style` with the bits of a shown or hidden title bar; a shown one gets what the window declares.
std::uint32_t titleBarStyle(std::uint32_t style, bool shown, const TitleBarSettings& settings);

}  // namespace kavrelon
