#pragma once

#include <iosfwd>

#include "htmllabel/HTMLDocument.h"

namespace kavrelon {

/// Prints a document: a line for its page, then one for each element with the fields of its record in their
/// order. Each is a JSON object.
void dumpDocument(std::ostream& out, const HTMLDocument& document);

}  // namespace kavrelon
