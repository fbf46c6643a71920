#pragma once

#include <iosfwd>

#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Layout.h"

namespace kavrelon {

/// Prints a document: a line for its page, then one for each element with the fields of its record in their
/// order. Each is a JSON object.
void dumpDocument(std::ostream& out, const HTMLDocument& document);

/// Prints the size of a laid-out page and every piece of text on it, in drawing order, as one JSON object.
void dumpLayout(std::ostream& out, const Layout& layout);

}  // namespace kavrelon
