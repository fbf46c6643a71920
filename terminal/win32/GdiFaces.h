#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "terminal/FontMenu.h"

namespace kavrelon {

/// A face that the system has, and what a terminal must know of it before it draws.
struct FontFace {
    /// Empty: whatever fixed-pitch face the platform gives.
    std::string name;
    BYTE charset = DEFAULT_CHARSET;
    /// Every character has the same width.
    bool fixedPitch = true;
    /// Bytes go to the platform as they are, since the face has the OEM characters at their codes. Else they
    /// are drawn as the Unicode characters that the OEM code page means by them.
    bool oemCodes = false;
    /// It has the line-drawing characters at their Unicode places.
    bool linesKnown = false;
    /// Its line-drawing characters fill their cells, so that neighbours join.
    bool linesJoin = false;
};

/// The face for an entry of the font menu: the named one where it is installed, else a fixed-pitch one with
/// line-drawing characters that join, else what comes closest.
FontFace findFace(HDC context, const FontChoice& choice);

/// A face whose line-drawing characters join, to help out where the chosen face's do not.
std::optional<FontFace> findLineFace(HDC context);

/// The description that realises a face. A positive height is a cell's, a negative one a character's.
LOGFONTA logFont(const FontFace& face, int height);

}  // namespace kavrelon
