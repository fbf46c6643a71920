#pragma once

#include <string_view>
#include <vector>

#include "htmllabel/TagType.h"

namespace kavrelon {

/// One element of a document, as it is cut out of the text.
struct Piece {
    std::string_view raw;
    TagType code = TAG_TEXT;
    /// Of text: the tag before it was written directly after a character that is not a space.
    bool noSpaceBefore = false;
};

/// Cuts a normalised text into tags, comments and the text between them. Text of spaces only, before the
/// first tag or after the last makes no element. Ends at what it cannot cut: a comment without an end, a
/// place beyond 32767.
std::vector<Piece> mTokenizeDocument(std::string_view document);

}  // namespace kavrelon
