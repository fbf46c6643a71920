#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "htmllabel/document/TagTable.h"

namespace kavrelon {

/// One element of a document, as it is cut out of the text. Small, since there is one for each element while
/// a document is parsed.
struct Piece {
    std::uint16_t begin = 0;   // in the document's text
    std::uint16_t length = 0;  // 0 for a closer that is not in the text
    std::uint8_t code = TAG_TEXT;
    /// Of text: the tag before it was written directly after a character that is not a space.
    bool noSpaceBefore = false;

    TagType tag() const { return static_cast<TagType>(code); }
};

static_assert(kTagCodes <= std::numeric_limits<std::uint8_t>::max() + 1, "a piece has room for its code");

/// Cuts a normalised text into tags, comments and the text between them. Text before the first tag, after the
/// last one, or of spaces only makes no element. What cannot be cut (a comment without an end, anything
/// beyond the 32767th character) ends the list.
std::vector<Piece> mTokenizeDocument(std::string_view document);

}  // namespace kavrelon
