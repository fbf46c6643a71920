#pragma once

#include <string>

namespace kavrelon {

/// A font as a program describes it; the name is text of the ANSI code page, the size in points.
struct FontDescription {
    std::string Name;
    double Size = 0;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool Strikethrough = false;
};

}  // namespace kavrelon
