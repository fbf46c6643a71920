#pragma once

#include <string>

#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Layout.h"

namespace kavrelon {

// What holds for every document that has been laid out. Each gives the first thing that does not, and nothing
// where all is well.

/// Every word is on the page once and in document order, or its text not at all where tags hide text; and
/// every text is inside of the page, which is as wide as was asked for.
std::string wordsLaw(const HTMLDocument& document, const Layout& layout, int width);

/// No text covers another, and the box of a link is the one around its texts. Of documents whose links are
/// closed and hold texts only.
std::string placesLaw(const HTMLDocument& document, const Layout& layout);

}  // namespace kavrelon
