#include "htmllabel/layout/FlowBuilder.h"

#include <algorithm>
#include <charconv>
#include <functional>

#include "htmllabel/layout/ElementValues.h"
#include "htmllabel/layout/PictureBox.h"
#include "htmllabel/layout/TagRole.h"

namespace kavrelon {
namespace {

constexpr int kIndent = 30;
constexpr int kRuleHeight = 2;
/// The least of a bullet, and between an item's marker and its text besides a space.
constexpr int kLeastBullet = 4;
constexpr int kMarkerGap = 2;
constexpr int kMostSpacing = 1000;

/// In a script or title, a "<" that begins no tag swallows the text up to the next ">". The closer at the end
/// of that text counts, rather than the tag that it seems to be.
TagType lastTag(const HTMLElement& element) {
    const std::size_t begin = element.strRaw.rfind('<');
    return begin == 0 ? element.lngTagType : tagType(element.strRaw.substr(begin));
}

/// The index of the last tag that ends a HEAD, -1 without one. A HEAD after it would hide the whole page.
int lastHeadEnd(const HTMLDocument& document) {
    const auto elements = document.mudtElements();
    const auto found = std::find_if(elements.rbegin(), elements.rend(), [](const HTMLElement& element) {
        return element.lngTagType == TAG_END_HEAD || element.lngTagType == TAG_BODY;
    });
    return found == elements.rend() ? -1 : found->intIndex;
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
      spacing_(flow.scale(clampPixels(defaults.DefaultSpacing, kMostSpacing))),
      indent_(flow.scale(kIndent)),
      lineHeight_(styles_.currentStyle().height()),
      tables_(flow, writer_, styles_, spacing_),
      lastHeadEnd_(lastHeadEnd(document)) {}

void FlowBuilder::build() {
    for (const HTMLElement& element : document_.mudtElements()) {
        if (element.blnIsTag) {
            if (!hide(element)) tag(element);
        } else if (!isHidden()) {
            needCell();
            writer_.text(element, styles_.current(), styles_.mark());
        }
    }
    tables_.closeAll();
    writer_.finish();
}

bool FlowBuilder::hide(const HTMLElement& element) {
    const TagType code = isHidden() ? lastTag(element) : element.lngTagType;
    if (code == TAG_BODY) hiddenHtml_.reset();
    const TagTraits& tag = traitsOf(code);
    if (tag.content == TagContent::Shown) return isHidden();
    auto& open = tag.content == TagContent::Foreign ? hiddenForeign_ : hiddenHtml_;
    if (tag.isCloser) {
        open.reset(static_cast<std::size_t>(openerOf(code)));
    } else if (hiddenForeign_.none() && (code != TAG_HEAD || element.intIndex < lastHeadEnd_)) {
        open.set(static_cast<std::size_t>(code));
    }
    return true;
}

// Closers that were added are no part of the document's text.
bool FlowBuilder::standsAfterSpace(std::string_view raw) const {
    const std::string& text = document_.mstrDocument();
    const std::less<const char*> isBefore;
    const bool within = isBefore(text.data(), raw.data()) && isBefore(raw.data(), text.data() + text.size());
    return within && *(raw.data() - 1) == ' ';
}

void FlowBuilder::tag(const HTMLElement& element) {
    if (standsAfterSpace(element.strRaw)) writer_.spaceBeforeTag(styles_.underline());
    if (element.lngTagType != TAG_A && !element.strName.empty()) writer_.mark(element.intIndex);
    const TagType code = element.lngTagType;
    const TagRole role = roleOf(code);
    if (!worksBetweenCells(role) && tables_.awaitsCell()) return;
    switch (role) {
        case TagRole::None:
            return;
        case TagRole::Style:
            return styles_.open(element);
        case TagRole::EndStyle:
            return styles_.close(openerOf(code));
        case TagRole::Heading:
            styles_.open(element);
            return openBlock(element, lineHeight_);
        case TagRole::EndHeading:
            styles_.close(TAG_HEADING);
            return closeBlock(TAG_HEADING, lineHeight_);
        case TagRole::Paragraph:
            return openBlock(element, lineHeight_);
        case TagRole::EndParagraph:
            return closeBlock(openerOf(code), lineHeight_);
        case TagRole::Quote:
            return openBlock(element, lineHeight_, indent_);
        case TagRole::EndQuote:
            return closeBlock(openerOf(code), lineHeight_);
        case TagRole::Lines:
            return openBlock(element, 0);
        case TagRole::EndLines:
            return closeBlock(openerOf(code), 0);
        case TagRole::List:
            return openList(code);
        case TagRole::EndList:
            return closeList(openerOf(code));
        case TagRole::Item:
            return listItem(element);
        case TagRole::Rule:
            return rule(element);
        case TagRole::Break:
            return writer_.lineBreak(styles_.current(),
                                     (element.clearsLeft ? 1U : 0U) + (element.clearsRight ? 2U : 0U));
        case TagRole::Anchor:
            return anchor(element);
        case TagRole::Picture:
            return picture(element);
        case TagRole::Table:
            needCell();
            endLooseItem();
            return tables_.openTable(element);
        case TagRole::EndTable:
            return tables_.closeTable();
        case TagRole::Row:
            return tables_.openRow(element);
        case TagRole::EndRow:
            return tables_.closeRow();
        case TagRole::Cell:
            return tables_.openCell(element);
        case TagRole::EndCell:
            return tables_.closeCell();
    }
}

void FlowBuilder::anchor(const HTMLElement& element) {
    if (!element.strHref.empty()) needCell();
    const std::uint32_t mark = writer_.mark(element.intIndex);
    if (!tables_.awaitsCell()) styles_.openAnchor(element, mark);
}

void FlowBuilder::picture(const HTMLElement& element) {
    needCell();
    FlowPicture box = pictureBox(element, writer_.drawable(element.strAlt), pictures_.picture(element.strSrc),
                                 styles_.currentStyle(), canvas_);
    box.style = styles_.current();
    box.mark = styles_.mark();
    writer_.picture(box);
}

void FlowBuilder::rule(const HTMLElement& element) {
    needCell();
    endLooseItem();
    FlowRule rule{scaled(givenWidth(element), flow_.scale)};
    rule.height = flow_.scale(element.ruleHeight > 0 ? element.ruleHeight : kRuleHeight);
    rule.shaded = !element.noShade;
    rule.align = givenAlign(element, Align::Center);
    writer_.rule(rule, spacing_);
}

void FlowBuilder::openBlock(const HTMLElement& element, int gap, int indent) {
    endLooseItem();
    BlockState state = writer_.blocks().top();
    state.align = element.lngTagType == TAG_CENTER ? Align::Center : givenAlign(element, state.align);
    state.left = std::min(state.left + indent, kMostPixels);
    state.right = std::min(state.right + indent, kMostPixels);
    writer_.blocks().open(element.lngTagType, state);
    writer_.boundary(gap);
}

// A closer without an opener still ends the line.
void FlowBuilder::closeBlock(TagType code, int gap) {
    if (!writer_.blocks().close(code)) endLooseItem();
    writer_.boundary(gap);
}

void FlowBuilder::openList(TagType code) {
    endLooseItem();
    const int gap = listGap();
    BlockState state = writer_.blocks().top();
    const int depth = state.list == kNone ? 0 : lists_[state.list].depth + 1;
    state.left = std::min(state.left + indent_, kMostPixels);
    state.list = static_cast<std::uint32_t>(lists_.size());
    lists_.push_back({code == TAG_OL, depth});
    writer_.blocks().open(code, state);
    writer_.boundary(gap);
}

void FlowBuilder::closeList(TagType code) {
    if (!writer_.blocks().close(code)) return endLooseItem();
    writer_.endItem();
    writer_.boundary(listGap());
}

// A block directly after an item's marker is the item's own.
void FlowBuilder::endLooseItem() {
    if (!flow_.items.empty() && flow_.items.back().kind == FlowKind::Marker) return;
    if (writer_.blocks().close(TAG_LI)) writer_.boundary(listGap());
}

void FlowBuilder::listItem(const HTMLElement& element) {
    needCell();
    if (writer_.blocks().top().list == kNone) openList(TAG_LI);
    List& list = lists_[writer_.blocks().top().list];
    FlowMarker marker;
    marker.style = styles_.current();
    marker.element = element.intIndex;
    const TextStyle& style = styles_.currentStyle();
    marker.gap = style.spaceWidth + flow_.scale(kMarkerGap);
    if (list.isNumbered) {
        marker.number = numberText(list.next++, flow_.store);
        marker.width = canvas_.textWidth(style.font, marker.number);
    } else {
        marker.bullet = static_cast<Bullet>(std::min(list.depth, 2));
        marker.width = std::max(style.ascent * 2 / 5, flow_.scale(kLeastBullet));
    }
    writer_.marker(marker);
}

}  // namespace kavrelon
