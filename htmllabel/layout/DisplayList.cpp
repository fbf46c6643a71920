#include "htmllabel/layout/DisplayList.h"

#include <algorithm>

namespace kavrelon {
namespace {

constexpr std::size_t kItemsInBand = 32;
constexpr unsigned kLightest = 0xE0;
constexpr Colour kSilver = 0xC0C0C0;

bool isEmpty(const Rect& place) {
    return place.left >= place.right || place.top >= place.bottom;
}

bool touches(const Rect& a, const Rect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

Rect moved(const Rect& place, Point by) {
    return {place.left + by.x, place.top + by.y, place.right + by.x, place.bottom + by.y};
}

Rect together(const Rect& a, const Rect& b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

/// In rings of one pixel, so that the two colours meet on the diagonal.
void drawFrame(Canvas& canvas, Rect ring, int thickness, Colour topLeft, Colour bottomRight) {
    for (int i = 0; i < thickness && !isEmpty(ring); ++i) {
        canvas.fill({ring.left, ring.top, ring.right, ring.top + 1}, topLeft);
        canvas.fill({ring.left, ring.top, ring.left + 1, ring.bottom}, topLeft);
        canvas.fill({ring.left, ring.bottom - 1, ring.right, ring.bottom}, bottomRight);
        canvas.fill({ring.right - 1, ring.top, ring.right, ring.bottom}, bottomRight);
        ring = {ring.left + 1, ring.top + 1, ring.right - 1, ring.bottom - 1};
    }
}

void drawItem(Canvas& canvas, const DisplayItem& item, std::span<const TextStyle> styles) {
    switch (item.kind) {
        case DrawKind::Text: {
            const TextStyle& style = styles[item.value];
            canvas.drawText(style.font, style.colour, {item.place.left, item.place.top}, item.text);
            break;
        }
        case DrawKind::Fill:
            canvas.fill(item.place, item.value);
            break;
        case DrawKind::Frame:
            drawFrame(canvas, item.place, item.thickness, item.value, item.value);
            break;
        case DrawKind::Raised:
            drawFrame(canvas, item.place, item.thickness, item.value, kShadowColour);
            break;
        case DrawKind::Sunken:
            drawFrame(canvas, item.place, item.thickness, kShadowColour, item.value);
            break;
        case DrawKind::Bullet:
            canvas.drawBullet(item.bullet, item.place, item.value);
            break;
        case DrawKind::Picture:
            canvas.drawPicture(*item.picture, item.place);
            break;
    }
}

}  // namespace

Colour lightEdgeOn(Colour ground) {
    const bool isLight = isSystemColour(ground)
                             ? ground == kWindowColour || ground == kToolTipColour
                             : (ground & 0xFF) >= kLightest && (ground >> 8 & 0xFF) >= kLightest &&
                                   (ground >> 16 & 0xFF) >= kLightest;
    return isLight ? kSilver : kHighlightColour;
}

void DisplayList::clear(std::size_t marks) {
    frames_.assign(1, {});
    items_.clear();
    marks_.assign(marks, {});
    bands_.clear();
    extent_ = {};
}

std::uint32_t DisplayList::addFrame(std::uint32_t parent) {
    frames_.push_back({parent, {}});
    return static_cast<std::uint32_t>(frames_.size() - 1);
}

std::size_t DisplayList::add(const DisplayItem& item) {
    items_.push_back(item);
    return items_.size() - 1;
}

void DisplayList::setMark(std::uint32_t mark, std::uint32_t frame, Point place) {
    marks_[mark] = {frame, {place.x, place.y, place.x, place.y}, false};
}

void DisplayList::resolve(Point origin) {
    frames_.front().place = origin;
    for (std::size_t i = 1; i < frames_.size(); ++i) {
        const Point outer = frames_[frames_[i].parent].place;
        frames_[i].place = {frames_[i].place.x + outer.x, frames_[i].place.y + outer.y};
    }
    for (Mark& mark : marks_) mark.place = moved(mark.place, frames_[mark.frame].place);
    bands_.reserve(items_.size() / kItemsInBand + 1);
    for (std::size_t i = 0; i < items_.size(); ++i) {
        DisplayItem& item = items_[i];
        item.place = moved(item.place, frames_[item.frame].place);
        extent_ = {std::max(extent_.width, item.place.right), std::max(extent_.height, item.place.bottom)};
        if (item.mark != kNone) extendMark(item);
        extendBands(i);
    }
}

void DisplayList::extendMark(const DisplayItem& item) {
    Mark& mark = marks_[item.mark];
    mark.place = mark.hasPieces ? together(mark.place, item.place) : item.place;
    mark.hasPieces = true;
}

void DisplayList::extendBands(std::size_t index) {
    const Rect& place = items_[index].place;
    if (index % kItemsInBand == 0) bands_.push_back({place.top, place.bottom});
    Band& band = bands_.back();
    band = {std::min(band.top, place.top), std::max(band.bottom, place.bottom)};
}

void DisplayList::draw(Canvas& canvas, std::span<const TextStyle> styles, const Rect& part) const {
    for (std::size_t band = 0; band < bands_.size(); ++band) {
        if (bands_[band].bottom <= part.top || bands_[band].top >= part.bottom) continue;
        const std::size_t first = band * kItemsInBand;
        const std::size_t end = std::min(first + kItemsInBand, items_.size());
        for (std::size_t i = first; i < end; ++i) {
            const Rect& place = items_[i].place;
            if (!isEmpty(place) && touches(place, part)) drawItem(canvas, items_[i], styles);
        }
    }
}

std::vector<TextRun> DisplayList::runs() const {
    std::vector<TextRun> runs;
    for (const DisplayItem& item : items_) {
        if (item.kind == DrawKind::Text) runs.push_back({item.element, item.place, item.text});
    }
    return runs;
}

}  // namespace kavrelon
