#pragma once

#include <string>
#include <string_view>

namespace kavrelon {

/// The document that shows a help text. "^" stands for a line break. A text that contains "<html>", in lower
/// case, is a document already; any other is plain text, which keeps its lines and spaces. Entities in plain
/// text still take effect.
std::string helpDocument(std::string_view text);

}  // namespace kavrelon
