#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "htmllabel/document/TagType.h"

namespace kavrelon {

/// A set of tag codes.
class TagSet {
  public:
    constexpr TagSet(std::initializer_list<TagType> codes) {
        for (const TagType code : codes) bits_ |= std::uint64_t{1} << code;
    }
    constexpr bool has(TagType code) const { return ((bits_ >> code) & 1) != 0; }

  private:
    std::uint64_t bits_ = 0;
};

/// Tags that open a level of the tree.
inline constexpr TagSet kContainerTags = {TAG_HEAD,  TAG_TITLE, TAG_BODY,       TAG_B,       TAG_I,
                                          TAG_U,     TAG_P,     TAG_DIV,        TAG_UL,      TAG_OL,
                                          TAG_TABLE, TAG_TR,    TAG_TD,         TAG_FONT,    TAG_A,
                                          TAG_BIG,   TAG_SMALL, TAG_BLOCKQUOTE, TAG_HEADING, TAG_CENTER};

/// Tags that end the level they stand in.
inline constexpr TagSet kClosingTags = {TAG_END_HEAD,    TAG_END_TITLE, TAG_END_BODY,  TAG_END_B,
                                        TAG_END_I,       TAG_END_U,     TAG_END_P,     TAG_END_DIV,
                                        TAG_END_UL,      TAG_END_OL,    TAG_END_TABLE, TAG_END_TR,
                                        TAG_END_TD,      TAG_END_FONT,  TAG_END_A,     TAG_END_BLOCKQUOTE,
                                        TAG_END_HEADING, TAG_END_BIG,   TAG_END_SMALL, TAG_END_CENTER};

/// Whether an element's source is a tag or a comment: from "<" to ">".
bool mblnIsTag(std::string_view text);

/// The name of a tag, up to its first space, in the case it is written in. Compare it by its `nameKey`.
std::string_view mstrTagID(std::string_view tag);

/// The code of an element's source; `TAG_TEXT` for what is no tag.
TagType tagType(std::string_view text);

}  // namespace kavrelon
