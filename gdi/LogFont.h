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

/// The platform's description of a font. The face's name is text in the ANSI code page, cut to the length
/// that fits. Heights are in pixels: a positive one is a cell's, a negative one a character's, without the
/// leading above it. Character set, pitch and family are left for the platform to choose.
LOGFONTA logFont(std::string_view face, LONG height, const FontStyle& style = {});

}  // namespace kavrelon
