#include "htmllabel/document/TagTable.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "htmllabel/document/NameKey.h"

namespace kavrelon {
namespace {

struct NamedTag {
    std::uint64_t key;
    TagType code;
};

constexpr std::uint64_t closerKey(std::string_view openerName) {
    constexpr std::size_t kRoom = 16;
    std::array<char, kRoom> name{'/'};
    std::ranges::copy(openerName, name.begin() + 1);
    return nameKey({name.data(), openerName.size() + 1});
}

/// Calls `use(row, name)` for each opener's name.
template <class Use>
constexpr void forEachName(const Use& use) {
    for (const TagRow& row : kTagRows) {
        std::string_view names = row.names;
        while (!names.empty()) {
            const std::size_t length = std::min(names.find(' '), names.size());
            use(row, names.substr(0, length));
            names.remove_prefix(std::min(length + 1, names.size()));
        }
    }
}

constexpr std::size_t kNameCount = [] {
    std::size_t count = 0;
    forEachName([&](const TagRow& row, std::string_view) { count += row.isPaired() ? 2 : 1; });
    return count;
}();

/// All names of all tags, for a search by key.
constexpr std::array<NamedTag, kNameCount> kTags = [] {
    std::array<NamedTag, kNameCount> tags{};
    auto* next = tags.begin();
    forEachName([&](const TagRow& row, std::string_view name) {
        *next++ = {nameKey(name), row.opener};
        if (row.isPaired()) *next++ = {closerKey(name), row.closer};
    });
    std::ranges::sort(tags, {}, &NamedTag::key);
    return tags;
}();

constexpr bool codesAreInOrder() {
    int next = 0;
    for (const TagRow& row : kTagRows) {
        if (row.opener != next) return false;
        next = row.closer + 1;
    }
    return true;
}

static_assert(codesAreInOrder(), "each code from 0 on has one row");
static_assert(kTags.front().key != 0, "every name can be looked up");
static_assert(std::ranges::adjacent_find(kTags, {}, &NamedTag::key) == kTags.end(), "names differ");

}  // namespace

bool mblnIsTag(std::string_view text) {
    return text.starts_with('<') && text.ends_with('>');
}

std::string_view mstrTagID(std::string_view tag) {
    const auto space = tag.find(' ');
    return tag.substr(1, space == std::string_view::npos ? tag.size() - 2 : space - 1);
}

TagType tagType(std::string_view text) {
    if (!mblnIsTag(text)) return TAG_TEXT;
    const std::uint64_t key = nameKey(mstrTagID(text));
    const auto* found = std::ranges::lower_bound(kTags, key, {}, &NamedTag::key);
    return found != kTags.end() && found->key == key ? found->code : TAG_UNKNOWN;
}

}  // namespace kavrelon
