#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "htmllabel/document/TagType.h"

namespace kavrelon {

enum class TagLevel : std::uint8_t { Leaf, Container };
enum class TagContent : std::uint8_t { Shown, Hidden, Foreign };
/// What a tag ends: each value includes those before it.
enum class TagEnds : std::uint8_t { Nothing, Paragraph, Cell, Row };

/// A row of `Tags.def`, which describes the fields. A lone tag is its own closer.
struct TagRow {
    TagType opener;
    TagType closer;
    std::string_view names;
    TagLevel level;
    TagContent content;
    TagEnds openerEnds;
    TagEnds closerEnds;

    constexpr bool isPaired() const { return opener != closer; }
};

inline constexpr TagRow kTagRows[] = {
#define LONE(tag, code, names, ends) \
    {tag, tag, names, TagLevel::Leaf, TagContent::Shown, TagEnds::ends, TagEnds::ends},
#define PAIR(opener, closer, code, names, level, content, openerEnds, closerEnds) \
    {opener, closer, names, TagLevel::level, TagContent::content, TagEnds::openerEnds, TagEnds::closerEnds},
#include "htmllabel/document/Tags.def"
};

/// The number of codes, which run from 0.
inline constexpr std::size_t kTagCodes = static_cast<std::size_t>(std::rbegin(kTagRows)->closer) + 1;

/// What the rows say about one code.
struct TagTraits {
    bool opensLevel = false;
    bool endsLevel = false;
    bool isCloser = false;
    TagContent content = TagContent::Shown;
    TagEnds ends = TagEnds::Nothing;
};

inline constexpr std::array<TagTraits, kTagCodes> kTagTraits = [] {
    std::array<TagTraits, kTagCodes> traits{};
    const auto of = [&](TagType code) -> TagTraits& { return traits[static_cast<std::size_t>(code)]; };
    for (const TagRow& row : kTagRows) {
        const bool isContainer = row.level == TagLevel::Container;
        of(row.closer) = {false, isContainer, row.isPaired(), row.content, row.closerEnds};
        of(row.opener) = {isContainer, false, false, row.content, row.openerEnds};
    }
    return traits;
}();

constexpr const TagTraits& traitsOf(TagType code) {
    return kTagTraits[static_cast<std::size_t>(code)];
}

constexpr TagType closerOf(TagType opener) {
    return static_cast<TagType>(opener + 1);
}
constexpr TagType openerOf(TagType closer) {
    return static_cast<TagType>(closer - 1);
}

/// Whether an element's source is a tag or a comment: it begins with "<" and ends with ">".
bool mblnIsTag(std::string_view text);

/// The name of a tag, up to its first space, as it is written. Names are compared by their `nameKey`.
std::string_view mstrTagID(std::string_view tag);

/// The code of an element's source; `TAG_TEXT` for text, `TAG_UNKNOWN` for tags without a row.
TagType tagType(std::string_view text);

}  // namespace kavrelon
