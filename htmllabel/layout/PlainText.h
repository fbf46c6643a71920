#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"

namespace kavrelon {

/// What a document says, for those who read it without looking: programs that search it, screen readers,
/// tests.
struct PlainText {
    /// A part of the text that belongs to a link.
    struct Link {
        std::int16_t element = 0;  // the A
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    /// In the ANSI code page. CR LF stands between blocks, lines and rows, a tab between the cells of a row.
    /// Numbers of list items are part of it, pictures are their alternative texts; hard spaces are spaces.
    std::string text;
    /// In document order. A link without text or pictures is not listed.
    std::vector<Link> links;
};

/// Reads a document as the layout does: what that hides is left out.
PlainText plainText(const HTMLDocument& document);

}  // namespace kavrelon
