#pragma once

#include <string>

namespace kavrelon {

/// A font as a program describes it. The name is text in the ANSI code page; the size is in points.
struct FontDescription {
    std::string Name;
    double Size = 0;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool Strikethrough = false;
};

}  // namespace kavrelon
