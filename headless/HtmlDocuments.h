#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace kavrelon {

/// A kind of HTML document.
struct HtmlDocumentKind {
    const char* name;
    const char* description;
    /// A document of about `length` characters, the same at every call. Few kinds need more.
    std::string (*make)(std::size_t length);
};

/// A help text first, then documents that are hard on a parser or a layout.
std::span<const HtmlDocumentKind> htmlDocumentKinds();
/// Null when there is no kind of that name.
const HtmlDocumentKind* findHtmlDocumentKind(std::string_view name);

}  // namespace kavrelon
