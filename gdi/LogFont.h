#pragma once

#include <windows.h>

#include <string_view>

namespace kavrelon {

struct FontStyle {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
};

/// The platform's description of a font. The name of the face is text of the ANSI code page, and is cut to
/// what the description holds. A positive height, in pixels, is a cell's, a negative one a character's:
/// without the leading above it. Character set, pitch and family are left for the platform to choose.
LOGFONTA logFont(std::string_view face, LONG height, const FontStyle& style = {});

}  // namespace kavrelon
