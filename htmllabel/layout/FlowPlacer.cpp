#include "htmllabel/layout/FlowPlacer.h"

#include <algorithm>

#include "htmllabel/layout/PictureBox.h"
#include "htmllabel/layout/TableColumns.h"

namespace kavrelon {
namespace {

constexpr int kRuleHeight = 2;

int alignedOffset(Align align, int room, int width) {
    const int free = std::max(room - width, 0);
    return align == Align::Left ? 0 : align == Align::Center ? free / 2 : free;
}

int extentIn(const Extent& extent, int room) {
    if (extent.pixels > 0) return extent.pixels;
    if (extent.fraction > 0) return static_cast<int>(extent.fraction * static_cast<float>(room));
    return room;
}

}  // namespace

int FlowPlacer::place(int width, Colour ground) {
    containers_.assign(1, {});
    in().width = width;
    in().ground = ground;
    for (const FlowItem& next : flow_.items) item(next);
    return endContainer();
}

void FlowPlacer::item(const FlowItem& item) {
    switch (item.kind) {
        case FlowKind::Text:
            text(flow_.texts[item.index]);
            break;
        case FlowKind::Picture:
            picture(item.index);
            break;
        case FlowKind::Mark:
            line_.add({TokenKind::Mark, item.index, {}, -1, 0});
            break;
        case FlowKind::Break:
            lineBreak(flow_.styles[item.index]);
            break;
        case FlowKind::Block:
            block(flow_.blocks[item.index]);
            break;
        case FlowKind::Rule:
            rule(flow_.rules[item.index]);
            break;
        case FlowKind::Marker:
            startMarker(item.index);
            break;
        case FlowKind::TableStart:
            startTable(item.index);
            break;
        case FlowKind::CellStart:
            startCell(item.index);
            break;
        case FlowKind::CellEnd:
            endCell(item.index);
            break;
        case FlowKind::TableEnd:
            endTable();
            break;
    }
}

// Indents take half of the width at most.
FlowPlacer::Span FlowPlacer::lineSpan() const {
    const Container& in = containers_.back();
    const int both = in.block.left + in.block.right;
    const int most = std::min(both, in.width / 2);
    int left = both > 0 ? static_cast<int>(std::int64_t{most} * in.block.left / both) : 0;
    const int right = both > 0 ? most - left : 0;
    if (in.marker != kNone) left = std::max(left, flow_.markers[in.marker].outerWidth());
    int end = in.width - right;
    if (isBesideFloat()) end = std::min(end, in.floatLeft);
    return {left, std::max(end - left, 0)};
}

bool FlowPlacer::isBesideFloat() const {
    const Container& in = containers_.back();
    return in.y + (in.atTop ? 0 : in.gap) < in.floatBottom;
}

void FlowPlacer::clearFloat() {
    in().y = in().floatBottom;
    in().gap = 0;
    in().atTop = false;
}

void FlowPlacer::useGap() {
    if (!in().atTop) in().y += in().gap;
    in().gap = 0;
}

void FlowPlacer::advance(int height) {
    in().y += height;
    in().atTop = false;
}

void FlowPlacer::text(const FlowText& text) {
    const auto index = static_cast<std::uint32_t>(&text - flow_.texts.data());
    forEachWord(text, flow_, [&](std::string_view word, int width, int gap, bool lastResort) {
        token({TokenKind::Word, index, word, gap, width, lastResort});
    });
}

void FlowPlacer::picture(std::uint32_t index) {
    const FlowPicture& picture = flow_.pictures[index];
    if (picture.floats && floatPicture(picture)) return;
    token({TokenKind::Picture, index, {}, picture.gapBefore, picture.outerWidth()});
}

// Only if half of the width is left for the text; otherwise the picture goes on the line.
bool FlowPlacer::floatPicture(const FlowPicture& picture) {
    const int width = picture.outerWidth();
    Span span = lineSpan();
    if (span.width / 2 < width) return false;
    if (line_.shape(line_.size()).width + width > span.width) finishLine();
    useGap();
    span = lineSpan();
    in().floatLeft = span.left + span.width - width;
    setPictureBox(picture, flow_, list_, in().frame, {in().floatLeft, in().y}, in().ground);
    in().floatBottom = std::max(in().floatBottom, in().y + picture.outerHeight());
    return true;
}

void FlowPlacer::token(const LineToken& token) {
    while (line_.mustEndBefore(token, lineSpan().width)) {
        if (isBesideFloat() && line_.isLastResort(token)) {
            clearFloat();
        } else {
            finishLine(line_.endBefore(token));
        }
    }
    if (line_.isEmpty() && isBesideFloat() && token.width > lineSpan().width) clearFloat();
    line_.add(token);
}

// A line of marks alone is not set: they wait for the next one.
void FlowPlacer::finishLine(std::size_t count) {
    if (line_.isEmpty()) return;
    LineBuilder::Shape shape = line_.shape(count);
    if (isBesideFloat() && shape.width > lineSpan().width) clearFloat();
    useGap();
    const Span span = lineSpan();
    const TextStyle marker = markerShape();
    shape.ascent = std::max(shape.ascent, marker.ascent);
    shape.descent = std::max(shape.descent, marker.descent);
    const int baseline = in().y + shape.ascent;
    setMarker(baseline);
    const int left = span.left + alignedOffset(in().block.align, span.width, shape.width);
    line_.set(count, list_, in().frame, {left, baseline}, in().y, in().ground);
    line_.drop(count);
    advance(shape.ascent + shape.descent);
}

void FlowPlacer::setMarks() {
    line_.set(line_.size(), list_, in().frame, {lineSpan().left, in().y}, in().y, in().ground);
    line_.drop(line_.size());
}

void FlowPlacer::lineBreak(const TextStyle& style) {
    if (!line_.isEmpty()) {
        finishLine();
        return;
    }
    useGap();
    const TextStyle marker = markerShape();
    const int ascent = std::max(style.ascent, marker.ascent);
    setMarker(in().y + ascent);
    advance(ascent + std::max(style.descent, marker.descent));
}

// Marks directly before a block may be the block's own, so they are places in it.
void FlowPlacer::block(const FlowBlock& block) {
    finishLine(line_.contentSize());
    in().gap = std::max(in().gap, block.gap);
    in().block = block;
}

void FlowPlacer::rule(const FlowRule& rule) {
    flushMarker();
    useGap();
    const Span span = lineSpan();
    const int width = extentIn(rule.width, span.width);
    const int left = span.left + alignedOffset(rule.align, span.width, width);
    DisplayItem item;
    item.frame = in().frame;
    item.place = {left, in().y, left + width, in().y + 1};
    item.value = kShadowColour;
    list_.add(item);
    item.place = {left, in().y + 1, left + width, in().y + kRuleHeight};
    item.value = lightEdgeOn(in().ground);
    list_.add(item);
    advance(kRuleHeight);
}

// An item without any line gets one for its marker.
void FlowPlacer::flushMarker() {
    finishLine();
    if (in().marker != kNone) lineBreak(markerShape());
}

TextStyle FlowPlacer::markerShape() const {
    const std::uint32_t marker = containers_.back().marker;
    return marker == kNone ? TextStyle() : flow_.styles[flow_.markers[marker].style];
}

void FlowPlacer::startMarker(std::uint32_t index) {
    flushMarker();
    if (index == kNone) return;
    in().marker = index;
    in().markerRight = lineSpan().left;
}

void FlowPlacer::setMarker(int baseline) {
    if (in().marker == kNone) return;
    const FlowMarker& marker = flow_.markers[in().marker];
    const TextStyle& style = flow_.styles[marker.style];
    const int left = in().markerRight - marker.outerWidth();
    in().marker = kNone;
    in().markerBottom = baseline + style.descent;
    DisplayItem item;
    item.frame = in().frame;
    item.element = marker.element;
    if (marker.number.empty()) {
        // Centred on the small letters, and half as high.
        const int top = baseline - style.ascent * 3 / 10 - marker.width / 2;
        item.kind = DrawKind::Bullet;
        item.bullet = marker.bullet;
        item.value = style.colour;
        item.place = {left, top, left + marker.width, top + marker.width};
    } else {
        const int top = baseline - style.ascent;
        item.kind = DrawKind::Text;
        item.value = marker.style;
        item.text = marker.number;
        item.place = {left, top, left + marker.width, top + style.height()};
    }
    list_.add(item);
}

void FlowPlacer::startTable(std::uint32_t index) {
    const FlowTable& table = flow_.tables[index];
    if (isBesideFloat() && table.min > lineSpan().width) clearFloat();
    useGap();
    const Span span = lineSpan();
    if (table.rowCount > 0) setMarker(in().y + markerShape().ascent);
    const int width = tableWidth(table, span.width);
    const int left = span.left + alignedOffset(table.align, span.width, width);
    setMarks();
    tables_.start(index, in().frame, {left, in().y}, width, in().ground);
}

void FlowPlacer::endTable() {
    // A table can be less high than the marker next to it.
    const int height = std::max(tables_.end(), in().markerBottom - in().y);
    if (height > 0) advance(height);
}

void FlowPlacer::startCell(std::uint32_t index) {
    const TablePlacer::CellFrame cell = tables_.startCell(index);
    Container container;
    container.frame = cell.frame;
    container.width = cell.width;
    container.ground = cell.ground;
    container.block.align = flow_.cells[index].align;
    containers_.push_back(container);
}

void FlowPlacer::endCell(std::uint32_t index) {
    const int height = endContainer();
    containers_.pop_back();
    tables_.endCell(index, height);
}

int FlowPlacer::endContainer() {
    flushMarker();
    setMarks();
    return std::max(in().y, in().floatBottom);
}

}  // namespace kavrelon
