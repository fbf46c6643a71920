#include "terminal/FontFace.h"

#include <algorithm>
#include <array>

namespace kavrelon {
namespace {

/// Fixed-pitch faces that are known to have the line-drawing characters, the best looking first.
constexpr std::array<const char*, 5> kLineFaces{"Consolas", "Lucida Console", "Courier New",
                                                "Liberation Mono", "DejaVu Sans Mono"};

FontFace faceOf(const FontChoice& choice, const FaceFacts& facts) {
    const bool oemCodes = facts.charset == charsets::kOem || facts.charset == charsets::kSymbol;
    const bool joins = (facts.hasLines && facts.linesFillCells) || (facts.bitmaps && oemCodes);
    return {.name = choice.name,
            .charset = choice.charset,
            .fixedPitch = facts.fixedPitch,
            .oemCodes = oemCodes,
            .linesJoin = facts.fixedPitch && joins};
}

FontFace examine(InstalledFaces& faces, const char* name) {
    const FontChoice choice{name, charsets::kDefault};
    return faceOf(choice, faces.factsOf(choice));
}

FontFace named(const FontChoice& choice, const FaceFacts& facts) {
    FontFace face = faceOf(choice, facts);
    // A face made for terminals may have the OEM characters at their codes and still not say so.
    if (choice.charset == charsets::kDefault && !facts.hasLines) {
        face.oemCodes = true;
        face.linesJoin = face.fixedPitch;
    }
    return face;
}

}  // namespace

std::optional<FontFace> findLineFace(InstalledFaces& faces) {
    for (const char* name : kLineFaces) {
        if (!faces.has(name)) continue;
        FontFace face = examine(faces, name);
        if (face.linesJoin) return face;
    }
    return std::nullopt;
}

FontFace findFace(InstalledFaces& faces, const FontChoice& choice) {
    if (faces.has(choice.name)) return named(choice, faces.factsOf(choice));
    if (const auto face = findLineFace(faces)) return *face;
    const auto known = std::ranges::find_if(kLineFaces, [&](const char* name) { return faces.has(name); });
    return examine(faces, known == kLineFaces.end() ? "" : *known);
}

}  // namespace kavrelon
