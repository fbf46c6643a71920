#include "htmllabel/layout/InlineStyles.h"

#include <algorithm>
#include <functional>

#include "htmllabel/layout/ElementValues.h"

namespace kavrelon {
namespace {

constexpr int kMostRise = 1000;

enum FontFlag { kBold = 1, kItalic = 2, kUnderline = 4 };

}  // namespace

InlineStyles::InlineStyles(const HTMLDocument& document, const LayoutDefaults& defaults, Canvas& canvas,
                           Flow& flow)
    : document_(document),
      defaults_(defaults),
      canvas_(canvas),
      flow_(flow),
      tags_({defaults.DefaultFontName, clampPoints(defaults.DefaultFontSize), document.mlngTextColor()}) {}

std::size_t InlineStyles::HashFontKey::operator()(const FontKey& key) const {
    const std::size_t size = std::hash<float>()(key.points);
    return std::hash<std::string_view>()(key.face) ^ (size * 8 + static_cast<std::size_t>(key.flags));
}

int* InlineStyles::counter(Counts& counts, TagType code) {
    switch (code) {
        case TAG_B:
            return &counts.bold;
        case TAG_I:
            return &counts.italic;
        case TAG_U:
            return &counts.underline;
        default:
            return nullptr;
    }
}

// Where the tag gives no colour or size, its record holds the page's colour and the default size; the style
// around it decides then.
InlineStyles::State InlineStyles::fontState(const HTMLElement& tag) const {
    State state = tags_.top();
    if (!tag.strFontFace.empty()) state.face = tag.strFontFace;
    if (tag.hasSize) state.points = clampPoints(tag.sglFontSize);
    if (tag.hasColor) state.colour = tag.lngColor;
    return state;
}

InlineStyles::State InlineStyles::shifted(bool up) {
    const int ascent = currentStyle().ascent;
    State state = tags_.top();
    state.rise = std::clamp(state.rise + (up ? ascent * 2 / 5 : -ascent / 5), -kMostRise, kMostRise);
    state.points = clampPoints(state.points * 0.75F);
    return state;
}

void InlineStyles::open(const HTMLElement& tag) {
    if (int* count = counter(counts_, tag.lngTagType)) {
        ++*count;
        current_ = kNone;
        return;
    }
    State state = tags_.top();
    switch (tag.lngTagType) {
        case TAG_FONT:
            state = fontState(tag);
            break;
        case TAG_HEADING:
            state.points = clampPoints(tag.sglFontSize);
            state.bold = true;
            break;
        case TAG_BIG:
        case TAG_SMALL:
            // The record counts from the default size; the same difference counts from the size around it.
            state.points = clampPoints(state.points + tag.sglFontSize - defaults_.DefaultFontSize);
            break;
        case TAG_SUB:
        case TAG_SUP:
            state = shifted(tag.lngTagType == TAG_SUP);
            break;
        case TAG_TD:
            state.bold = state.bold || tag.isHeaderCell;
            break;
        default:
            return;
    }
    tags_.open(tag.lngTagType, state);
    current_ = kNone;
}

// A link ends the open one before it: otherwise the box of a link without a closer would take the clicks on
// all later ones.
void InlineStyles::openAnchor(const HTMLElement& tag, std::uint32_t mark) {
    const bool isLink = !tag.strHref.empty();
    while (isLink && tags_.top().isLink) {
        if (!tags_.close(TAG_A)) break;
    }
    State state = tags_.top();
    state.mark = mark;
    if (isLink) {
        state.isLink = true;
        state.colour = document_.mlngLinkColor();
        state.underline = state.underline || defaults_.UnderlineLinks;
    }
    tags_.open(TAG_A, state);
    current_ = kNone;
}

void InlineStyles::close(TagType code) {
    if (int* count = counter(counts_, code)) {
        if (*count == (outerCounts_.empty() ? 0 : *counter(outerCounts_.back(), code))) return;
        --*count;
    } else if (!tags_.close(code)) {
        return;
    }
    current_ = kNone;
}

void InlineStyles::enterScope() {
    outerCounts_.push_back(counts_);
    tags_.enterScope(tags_.top());
}

void InlineStyles::leaveScope() {
    tags_.leaveScope();
    counts_ = outerCounts_.back();
    outerCounts_.pop_back();
    current_ = kNone;
}

const InlineStyles::ReadyFont& InlineStyles::readyFont(const FontKey& key) {
    if (const auto known = fonts_.find(key); known != fonts_.end()) return known->second;
    const FontId id = canvas_.font({std::string(key.face), key.points, (key.flags & kBold) != 0,
                                    (key.flags & kItalic) != 0, (key.flags & kUnderline) != 0});
    return fonts_.emplace(key, ReadyFont{id, canvas_.metrics(id)}).first->second;
}

std::uint32_t InlineStyles::current() {
    if (current_ != kNone) return current_;
    const State& state = tags_.top();
    const bool underline = isUnderlined();
    const int flags = (state.bold || counts_.bold > 0 ? kBold : 0) | (counts_.italic > 0 ? kItalic : 0) |
                      (underline ? kUnderline : 0);
    const ReadyFont& font = readyFont({state.face, state.points, flags});
    const TextStyle style{
        font.id,    state.colour, font.metrics.ascent, font.metrics.descent, font.metrics.spaceWidth,
        state.rise, underline};
    // After a cell or a closed tag it is mostly the style before it again.
    if (flow_.styles.empty() || flow_.styles.back() != style) flow_.styles.push_back(style);
    current_ = static_cast<std::uint32_t>(flow_.styles.size() - 1);
    return current_;
}

}  // namespace kavrelon
