#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "terminal/FontMenu.h"

namespace kavrelon {

/// A face that the system has, and what a terminal must know of it before it draws.
struct FontFace {
    /// Empty: whatever fixed-pitch face the platform gives.
    std::string name;
    std::uint8_t charset = charsets::kDefault;
    /// Every character has the same width.
    bool fixedPitch = true;
    /// Bytes go to the platform as they are, since the face has the OEM characters at their codes. Else they
    /// are drawn as the Unicode characters that the OEM code page means by them.
    bool oemCodes = false;
    /// Its line-drawing characters fill their cells, so that neighbours join.
    bool linesJoin = false;

    bool operator==(const FontFace&) const = default;
};

/// What the platform tells of a face once it has made a font of it.
struct FaceFacts {
    bool fixedPitch = true;
    /// Its characters are bitmaps, not outlines.
    bool bitmaps = false;
    /// The character set that the font got, whatever was asked for.
    std::uint8_t charset = charsets::kAnsi;
    /// It has the line-drawing characters at their Unicode places.
    bool hasLines = false;
    /// Those characters reach the edges of their cells.
    bool linesFillCells = false;
};

/// The faces of the system.
class InstalledFaces {
  public:
    virtual ~InstalledFaces() = default;
    virtual bool has(const char* name) = 0;
    /// The empty name stands for whatever fixed-pitch face the platform gives.
    virtual FaceFacts factsOf(const FontChoice& choice) = 0;
};

/// The face for an entry of the font menu: the named one where it is installed, else a fixed-pitch one with
/// line-drawing characters that join, else what comes closest.
FontFace findFace(InstalledFaces& faces, const FontChoice& choice);

/// A face whose line-drawing characters join, to help out where the chosen face's do not.
std::optional<FontFace> findLineFace(InstalledFaces& faces);

}  // namespace kavrelon
