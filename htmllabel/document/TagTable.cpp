#include "htmllabel/document/TagTable.h"

#include <algorithm>
#include <array>

#include "htmllabel/document/NameKey.h"

namespace kavrelon {
namespace {

struct NamedTag {
    std::uint64_t key;
    TagType code;
};

constexpr NamedTag named(std::string_view name, TagType code) {
    return {nameKey(name), code};
}

constexpr auto kTags = [] {
    std::array tags{
        named("HEAD", TAG_HEAD),
        named("/HEAD", TAG_END_HEAD),
        named("TITLE", TAG_TITLE),
        named("/TITLE", TAG_END_TITLE),
        named("BODY", TAG_BODY),
        named("NOFRAMES", TAG_BODY),
        named("/BODY", TAG_END_BODY),
        named("/NOFRAMES", TAG_END_BODY),
        named("!--", TAG_COMMENT),
        named("--", TAG_COMMENT_END),
        named("STRONG", TAG_B),
        named("B", TAG_B),
        named("/STRONG", TAG_END_B),
        named("/B", TAG_END_B),
        named("EM", TAG_I),
        named("I", TAG_I),
        named("/EM", TAG_END_I),
        named("/I", TAG_END_I),
        named("U", TAG_U),
        named("/U", TAG_END_U),
        named("P", TAG_P),
        named("/P", TAG_END_P),
        named("DIV", TAG_DIV),
        named("/DIV", TAG_END_DIV),
        named("BR", TAG_BR),
        named("HR", TAG_HR),
        named("UL", TAG_UL),
        named("/UL", TAG_END_UL),
        named("OL", TAG_OL),
        named("/OL", TAG_END_OL),
        named("LI", TAG_LI),
        named("TABLE", TAG_TABLE),
        named("/TABLE", TAG_END_TABLE),
        named("THEAD", TAG_THEAD),
        named("/THEAD", TAG_END_THEAD),
        named("TBODY", TAG_TBODY),
        named("/TBODY", TAG_END_TBODY),
        named("TFOOT", TAG_TFOOT),
        named("/TFOOT", TAG_END_TFOOT),
        named("TR", TAG_TR),
        named("/TR", TAG_END_TR),
        named("TD", TAG_TD),
        named("TH", TAG_TD),
        named("/TD", TAG_END_TD),
        named("/TH", TAG_END_TD),
        named("FONT", TAG_FONT),
        named("/FONT", TAG_END_FONT),
        named("A", TAG_A),
        named("/A", TAG_END_A),
        named("IMG", TAG_IMG),
        named("BLOCKQUOTE", TAG_BLOCKQUOTE),
        named("/BLOCKQUOTE", TAG_END_BLOCKQUOTE),
        named("H1", TAG_HEADING),
        named("H2", TAG_HEADING),
        named("H3", TAG_HEADING),
        named("H4", TAG_HEADING),
        named("H5", TAG_HEADING),
        named("H6", TAG_HEADING),
        named("/H1", TAG_END_HEADING),
        named("/H2", TAG_END_HEADING),
        named("/H3", TAG_END_HEADING),
        named("/H4", TAG_END_HEADING),
        named("/H5", TAG_END_HEADING),
        named("/H6", TAG_END_HEADING),
        named("BIG", TAG_BIG),
        named("/BIG", TAG_END_BIG),
        named("SMALL", TAG_SMALL),
        named("/SMALL", TAG_END_SMALL),
        named("CENTER", TAG_CENTER),
        named("/CENTER", TAG_END_CENTER),
        named("SUB", TAG_SUB),
        named("/SUB", TAG_END_SUB),
        named("SUP", TAG_SUP),
        named("/SUP", TAG_END_SUP),
        named("FORM", TAG_FORM),
        named("/FORM", TAG_END_FORM),
        named("SCRIPT", TAG_SCRIPT),
        named("/SCRIPT", TAG_END_SCRIPT),
        named("STYLE", TAG_STYLE),
        named("/STYLE", TAG_END_STYLE),
    };
    std::ranges::sort(tags, {}, &NamedTag::key);
    return tags;
}();

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
