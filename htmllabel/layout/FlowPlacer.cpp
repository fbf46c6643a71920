#include "htmllabel/layout/FlowPlacer.h"

#include <algorithm>

#include "htmllabel/layout/PictureBox.h"
#include "htmllabel/layout/TableColumns.h"

namespace kavrelon {
namespace {

/// Of both sides together: twelve levels of a list, six of a quotation.
constexpr int kDeepestIndent = 360;

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
    in().deepestIndent = flow_.deepestIndent;
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
            line_.add({TokenKind::Mark, false, false, item.index, {}, -1, 0});
            break;
        case FlowKind::Break:
            lineBreak(flow_.styles[item.index]);
            break;
        case FlowKind::Clear:
            if ((item.index & 1U) != 0) moveBelow(in().left.bottom);
            if ((item.index & 2U) != 0) moveBelow(in().right.bottom);
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
            endTable(flow_.tables[item.index]);
            break;
    }
}

// Indents take half of the width at most. Where they would take more, all of them shrink alike, so that
// levels stay apart; but a line that is indented very far does not make the others shrink to nothing.
std::pair<int, int> FlowPlacer::indents() const {
    const Container& in = containers_.back();
    int left = in.block.left;
    int right = in.block.right;
    const int deepest = std::min(in.deepestIndent, flow_.scale(kDeepestIndent));
    if (left > 0 && deepest > in.width / 2) {
        const int both = left + right;
        const std::int64_t room = std::int64_t{in.width / 2} * std::min(both, deepest) / deepest;
        left = static_cast<int>(room * left / both);
        right = static_cast<int>(room) - left;
    }
    return {left, right};
}

FlowPlacer::Span FlowPlacer::lineSpan() const {
    const Container& in = containers_.back();
    const auto [indent, indentRight] = indents();
    const int marker = in.marker == kNone ? 0 : flow_.markers[in.marker].outerWidth();
    const int left = std::max(indent, startOfLines() + marker);
    int end = in.width - indentRight;
    if (nextTop() < in.right.bottom) end = std::min(end, in.right.edge);
    return {left, std::max(end - left, 0)};
}

int FlowPlacer::startOfLines() const {
    const Container& in = containers_.back();
    return nextTop() < in.left.bottom ? in.left.edge : 0;
}

int FlowPlacer::nextTop() const {
    const Container& in = containers_.back();
    return in.y + (in.atTop ? 0 : in.gap);
}

bool FlowPlacer::isBesideFloat() const {
    const Container& in = containers_.back();
    return nextTop() < std::max(in.left.bottom, in.right.bottom);
}

void FlowPlacer::clearFloat() {
    const int top = nextTop();
    const int left = in().left.bottom;
    const int right = in().right.bottom;
    moveBelow(left <= top ? right : right <= top ? left : std::min(left, right));
}

void FlowPlacer::moveBelow(int bottom) {
    if (bottom <= nextTop()) return;
    in().y = bottom;
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
    bool drawsSpace = text.gapStyle != kNone;
    forEachWord(text, flow_, [&](std::string_view word, int width, int gap, bool lastResort) {
        token({TokenKind::Word, lastResort, drawsSpace, index, word, gap, width});
        drawsSpace = false;
    });
}

void FlowPlacer::picture(std::uint32_t index) {
    const FlowPicture& picture = flow_.pictures[index];
    if (picture.floats != Align::Center && floatPicture(picture)) return;
    token({TokenKind::Picture, false, false, index, {}, picture.gapBefore, picture.outerWidth()});
}

bool FlowPlacer::floatPicture(const FlowPicture& picture) {
    const int width = picture.outerWidth();
    Point corner;
    if (!startFloat(picture.floats, width, corner)) return false;
    setPictureBox(picture, flow_, list_, in().frame, corner, in().ground);
    endFloat(picture.floats, picture.floats == Align::Left ? corner.x + width : corner.x,
             corner.y + picture.outerHeight());
    return true;
}

bool FlowPlacer::startFloat(Align side, int width, Point& corner) {
    Span span = lineSpan();
    if (span.width / 2 < width) return false;
    if (line_.shape(line_.size()).width + width > span.width) finishLine();
    useGap();
    span = lineSpan();
    corner = {side == Align::Left ? span.left : span.left + span.width - width, in().y};
    return true;
}

void FlowPlacer::endFloat(Align side, int edge, int bottom) {
    Floats& floats = side == Align::Left ? in().left : in().right;
    floats = {edge, std::max(floats.bottom, bottom)};
    room_ = lineSpan().width;
}

// Most tokens fit on the line that has begun.
void FlowPlacer::token(const LineToken& token) {
    if (line_.isEmpty() || line_.overflows(token, room_)) makeRoom(token);
    line_.add(token);
}

void FlowPlacer::makeRoom(const LineToken& token) {
    room_ = lineSpan().width;
    for (;;) {
        const bool tooLong = line_.mustEndBefore(token, room_);
        if (tooLong && !(isBesideFloat() && line_.isLastResort(token))) {
            finishLine(line_.endBefore(token));
        } else if (tooLong || (line_.isEmpty() && token.width > room_ && isBesideFloat())) {
            clearFloat();
        } else {
            return;
        }
        room_ = lineSpan().width;
    }
}

// A line of marks alone is not set: they wait for the next one.
void FlowPlacer::finishLine(std::size_t count) {
    if (line_.isEmpty()) return;
    LineBuilder::Shape shape = line_.shape(count);
    while (isBesideFloat() && shape.width > lineSpan().width) clearFloat();
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
    item.place = {left, in().y, left + width, in().y + rule.height};
    item.thickness = flow_.scale(1);
    // A rule of one pixel has no room for edges.
    if (rule.shaded && rule.height > item.thickness) {
        item.kind = DrawKind::Sunken;
        item.value = lightEdgeOn(in().ground);
    } else {
        item.value = kShadowColour;
    }
    list_.add(item);
    advance(rule.height);
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
    in().markerIndent = indents().first;
    in().marker = index;
}

void FlowPlacer::setMarker(int baseline) {
    if (in().marker == kNone) return;
    const FlowMarker& marker = flow_.markers[in().marker];
    const TextStyle& style = flow_.styles[marker.style];
    const int right = std::max(in().markerIndent, startOfLines() + marker.outerWidth());
    const int left = right - marker.outerWidth();
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
    while (isBesideFloat() && table.min > lineSpan().width) clearFloat();
    const int floatWidth = tableWidth(table, lineSpan().width);
    Point corner;
    if (table.floats && startFloat(table.align, floatWidth + table.gap, corner)) {
        if (table.align == Align::Right) corner.x += table.gap;
        openTables_.push_back(
            {true, corner.y,
             table.align == Align::Left ? corner.x + floatWidth + table.gap : corner.x - table.gap});
        setMarks();
        tables_.start(index, in().frame, corner, floatWidth, in().ground);
        return;
    }
    useGap();
    const Span span = lineSpan();
    if (table.rowCount > 0) setMarker(in().y + markerShape().ascent);
    const int width = tableWidth(table, span.width);
    const int left = span.left + alignedOffset(table.align, span.width, width);
    openTables_.push_back({false, in().y, 0});
    setMarks();
    tables_.start(index, in().frame, {left, in().y}, width, in().ground);
}

void FlowPlacer::endTable(const FlowTable& table) {
    const OpenTable open = openTables_.back();
    openTables_.pop_back();
    const int height = tables_.end();
    if (open.floats) return endFloat(table.align, open.edge, open.top + height + table.gap);
    // A table can be less high than the marker next to it.
    const int taken = std::max(height, in().markerBottom - in().y);
    if (taken > 0) advance(taken);
    if (table.floats) in().gap = std::max(in().gap, table.gap);
}

void FlowPlacer::startCell(std::uint32_t index) {
    const TablePlacer::CellFrame cell = tables_.startCell(index);
    Container container;
    container.frame = cell.frame;
    container.width = cell.width;
    container.ground = cell.ground;
    container.deepestIndent = flow_.cells[index].deepestIndent;
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
    return std::max({in().y, in().left.bottom, in().right.bottom});
}

}  // namespace kavrelon
