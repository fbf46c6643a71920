#include "htmllabel/layout/FlowBuilder.h"

#include <algorithm>
#include <charconv>
#include <functional>

#include "htmllabel/document/TagTable.h"
#include "htmllabel/layout/ElementValues.h"
#include "htmllabel/layout/PictureBox.h"

namespace kavrelon {
namespace {

constexpr int kIndent = 30;
constexpr int kMostSpacing = 1000;

enum Hidden : unsigned { kHead = 1, kTitle = 2, kScript = 4, kStyle = 8 };

/// What hides the text between this opener or closer and its partner; 0 for tags that hide nothing.
unsigned hiddenBetween(TagType code) {
    switch (code) {
        case TAG_HEAD:
        case TAG_END_HEAD:
            return kHead;
        case TAG_TITLE:
        case TAG_END_TITLE:
            return kTitle;
        case TAG_SCRIPT:
        case TAG_END_SCRIPT:
            return kScript;
        case TAG_STYLE:
        case TAG_END_STYLE:
            return kStyle;
        default:
            return 0;
    }
}

/// A "<" of a script or title makes one tag of all up to the next ">": its closer counts, and not that tag.
TagType lastTag(const HTMLElement& element) {
    const std::size_t begin = element.strRaw.rfind('<');
    return begin == 0 ? element.lngTagType : tagType(element.strRaw.substr(begin));
}

/// The last tag that ends a HEAD, which without one would hide the whole page; -1 when there is none.
int lastHeadEnd(const HTMLDocument& document) {
    const auto elements = document.mudtElements();
    const auto found = std::find_if(elements.rbegin(), elements.rend(), [](const HTMLElement& element) {
        return element.lngTagType == TAG_END_HEAD || element.lngTagType == TAG_BODY;
    });
    return found == elements.rend() ? -1 : found->intIndex;
}

TagType openerOf(TagType closer) {
    return static_cast<TagType>(closer - 1);
}

std::string_view numberText(int number, std::pmr::memory_resource& store) {
    constexpr std::size_t kRoom = 12;
    char* const begin = std::pmr::polymorphic_allocator<>(&store).allocate_object<char>(kRoom);
    char* const end = std::to_chars(begin, begin + kRoom - 1, number).ptr;
    *end = '.';
    return {begin, static_cast<std::size_t>(end + 1 - begin)};
}

}  // namespace

FlowBuilder::FlowBuilder(const HTMLDocument& document, const LayoutDefaults& defaults,
                         PictureSource& pictures, Canvas& canvas, Flow& flow)
    : document_(document),
      pictures_(pictures),
      canvas_(canvas),
      flow_(flow),
      styles_(document, defaults, canvas, flow),
      writer_(flow, canvas),
      spacing_(clampPixels(defaults.DefaultSpacing, kMostSpacing)),
      lineHeight_(styles_.currentStyle().height()),
      tables_(flow, writer_, styles_, spacing_),
      lastHeadEnd_(lastHeadEnd(document)) {}

void FlowBuilder::build() {
    for (const HTMLElement& element : document_.mudtElements()) {
        if (element.blnIsTag) {
            if (!hide(element)) tag(element);
        } else if (hidden_ == 0) {
            if (tables_.awaitsCell()) tables_.openImpliedCell();
            writer_.text(element, styles_.current(), styles_.mark());
        }
    }
    tables_.closeAll();
}

bool FlowBuilder::hide(const HTMLElement& element) {
    const TagType code = hidden_ == 0 ? element.lngTagType : lastTag(element);
    if (code == TAG_BODY) hidden_ &= ~(kHead | kTitle);
    const unsigned what = hiddenBetween(code);
    if (what == 0) return hidden_ != 0;
    const bool opens = code % 2 == 0;
    if (!opens) {
        hidden_ &= ~what;
    } else if ((hidden_ & (kScript | kStyle)) == 0 && (what != kHead || element.intIndex < lastHeadEnd_)) {
        hidden_ |= what;
    }
    return true;
}

// Closers that were added later do not stand in the document's text.
bool FlowBuilder::standsAfterSpace(std::string_view raw) const {
    const std::string& text = document_.mstrDocument();
    const std::less<const char*> isBefore;
    const bool within = isBefore(text.data(), raw.data()) && isBefore(raw.data(), text.data() + text.size());
    return within && *(raw.data() - 1) == ' ';
}

void FlowBuilder::tag(const HTMLElement& element) {
    if (standsAfterSpace(element.strRaw)) writer_.spaceBeforeTag();
    if (element.lngTagType != TAG_A && !element.strName.empty()) writer_.mark(element.intIndex);
    switch (element.lngTagType) {
        case TAG_TABLE:
        case TAG_END_TABLE:
        case TAG_THEAD:
        case TAG_END_THEAD:
        case TAG_TBODY:
        case TAG_END_TBODY:
        case TAG_TFOOT:
        case TAG_END_TFOOT:
        case TAG_TR:
        case TAG_END_TR:
        case TAG_TD:
        case TAG_END_TD:
            tableTag(element);
            return;
        case TAG_A:
            anchor(element);
            return;
        case TAG_IMG:
            picture(element);
            return;
        case TAG_HR:
        case TAG_LI:
            if (tables_.awaitsCell()) tables_.openImpliedCell();
            break;
        default:
            // Between cells these would change cells that they do not stand in.
            if (tables_.awaitsCell()) return;
    }
    inlineTag(element);
    blockTag(element);
}

void FlowBuilder::inlineTag(const HTMLElement& element) {
    switch (element.lngTagType) {
        case TAG_B:
        case TAG_I:
        case TAG_U:
        case TAG_FONT:
        case TAG_HEADING:
        case TAG_BIG:
        case TAG_SMALL:
        case TAG_SUB:
        case TAG_SUP:
            styles_.open(element);
            break;
        case TAG_END_B:
        case TAG_END_I:
        case TAG_END_U:
        case TAG_END_FONT:
        case TAG_END_A:
        case TAG_END_HEADING:
        case TAG_END_BIG:
        case TAG_END_SMALL:
        case TAG_END_SUB:
        case TAG_END_SUP:
            styles_.close(openerOf(element.lngTagType));
            break;
        default:
            break;
    }
}

void FlowBuilder::blockTag(const HTMLElement& element) {
    const TagType code = element.lngTagType;
    switch (code) {
        case TAG_P:
        case TAG_DIV:
        case TAG_HEADING:
            openBlock(element, lineHeight_);
            break;
        case TAG_END_P:
        case TAG_END_DIV:
        case TAG_END_HEADING:
            closeBlock(openerOf(code), lineHeight_);
            break;
        case TAG_BLOCKQUOTE:
            openBlock(element, lineHeight_, kIndent);
            break;
        case TAG_END_BLOCKQUOTE:
            closeBlock(TAG_BLOCKQUOTE, lineHeight_);
            break;
        case TAG_CENTER:
        case TAG_FORM:
            openBlock(element, 0);
            break;
        case TAG_END_CENTER:
        case TAG_END_FORM:
            closeBlock(openerOf(code), 0);
            break;
        case TAG_BR:
            writer_.lineBreak(styles_.current());
            break;
        case TAG_HR:
            writer_.rule({givenWidth(element), givenAlign(element, Align::Center)}, spacing_);
            break;
        case TAG_UL:
        case TAG_OL:
            openList(element);
            break;
        case TAG_END_UL:
        case TAG_END_OL:
            closeList(openerOf(code));
            break;
        case TAG_LI:
            listItem(element);
            break;
        default:
            break;
    }
}

void FlowBuilder::tableTag(const HTMLElement& element) {
    switch (element.lngTagType) {
        case TAG_TABLE:
            tables_.openTable(element);
            break;
        case TAG_END_TABLE:
            tables_.closeTable();
            break;
        case TAG_TR:
            tables_.openRow(element);
            break;
        case TAG_TD:
            tables_.openCell(element);
            break;
        case TAG_END_TD:
            tables_.closeCell();
            break;
        default:
            tables_.closeRow();
    }
}

void FlowBuilder::anchor(const HTMLElement& element) {
    if (tables_.awaitsCell() && !element.strHref.empty()) tables_.openImpliedCell();
    const std::uint32_t mark = writer_.mark(element.intIndex);
    if (!tables_.awaitsCell()) styles_.openAnchor(element, mark);
}

void FlowBuilder::picture(const HTMLElement& element) {
    if (tables_.awaitsCell()) tables_.openImpliedCell();
    HTMLElement image = element;
    image.strAlt = writer_.drawable(element.strAlt);
    FlowPicture box = pictureBox(image, pictures_.picture(image.strSrc), styles_.currentStyle(), canvas_);
    box.style = styles_.current();
    box.mark = styles_.mark();
    writer_.picture(box);
}

void FlowBuilder::openBlock(const HTMLElement& element, int gap, int indent) {
    BlockState state = writer_.blocks().top();
    state.align = element.lngTagType == TAG_CENTER ? Align::Center : givenAlign(element, state.align);
    state.left = std::min(state.left + indent, kMostPixels);
    state.right = std::min(state.right + indent, kMostPixels);
    writer_.blocks().open(element.lngTagType, state);
    writer_.boundary(gap);
}

// A closer without an opener ends a line all the same.
void FlowBuilder::closeBlock(TagType code, int gap) {
    writer_.blocks().close(code);
    writer_.boundary(gap);
}

void FlowBuilder::openList(const HTMLElement& element) {
    const int gap = listGap();
    BlockState state = writer_.blocks().top();
    const int depth = state.list == kNone ? 0 : lists_[state.list].depth + 1;
    state.left = std::min(state.left + kIndent, kMostPixels);
    state.list = static_cast<std::uint32_t>(lists_.size());
    lists_.push_back({element.lngTagType == TAG_OL, depth});
    writer_.blocks().open(element.lngTagType, state);
    writer_.boundary(gap);
}

void FlowBuilder::closeList(TagType code) {
    if (!writer_.blocks().close(code)) return;
    writer_.endItem();
    writer_.boundary(listGap());
}

void FlowBuilder::listItem(const HTMLElement& element) {
    if (writer_.blocks().top().list == kNone) {
        HTMLElement list;
        list.lngTagType = TAG_UL;
        openList(list);
    }
    List& list = lists_[writer_.blocks().top().list];
    FlowMarker marker;
    marker.style = styles_.current();
    marker.element = element.intIndex;
    const TextStyle& style = styles_.currentStyle();
    marker.gap = style.spaceWidth + 2;
    if (list.isNumbered) {
        marker.number = numberText(list.next++, flow_.store);
        marker.width = canvas_.textWidth(style.font, marker.number);
    } else {
        marker.bullet = static_cast<Bullet>(std::min(list.depth, 2));
        marker.width = std::max(style.ascent * 2 / 5, 4);
    }
    writer_.marker(marker);
}

}  // namespace kavrelon
