#include "htmllabel/layout/PictureBox.h"

#include <algorithm>
#include <cstdint>

#include "htmllabel/layout/ElementValues.h"

namespace kavrelon {
namespace {

constexpr int kMostSpace = 1000;
constexpr int kMostBorder = 50;
/// Between the frame of a missing picture and its alternative text.
constexpr int kAlternativeMargin = 3;
constexpr Size kUnknownSize{24, 24};

int inProportion(int given, int own, int ownOther) {
    if (own <= 0) return ownOther;
    return clampPixels(static_cast<double>(given) * ownOther / own);
}

Size scaled(Size natural, int width, int height) {
    natural = {std::min(std::max(natural.width, 0), kMostPixels),
               std::min(std::max(natural.height, 0), kMostPixels)};
    if (width > 0 && height > 0) return {width, height};
    if (width > 0) return {width, inProportion(width, natural.width, natural.height)};
    if (height > 0) return {inProportion(height, natural.height, natural.width), height};
    return natural;
}

/// As much of a text as fits into `room` pixels.
std::string_view cutToWidth(std::string_view text, int room, FontId font, Canvas& canvas) {
    std::size_t fits = 0;
    std::size_t beyond = text.size() + 1;
    while (fits + 1 < beyond) {
        const std::size_t middle = fits + (beyond - fits) / 2;
        (canvas.textWidth(font, text.substr(0, middle)) <= room ? fits : beyond) = middle;
    }
    return text.substr(0, fits);
}

void showAlternative(FlowPicture& box, std::string_view text, int width, int height, const TextStyle& style,
                     const PixelScale& scale, Canvas& canvas) {
    const int around = 2 * scale(kAlternativeMargin);
    Size own = scale(kUnknownSize);
    if (!text.empty()) {
        own = {clampPixels(canvas.textWidth(style.font, text) + around), style.height() + around};
    }
    box.size = {width > 0 ? width : own.width, height > 0 ? height : own.height};
    if (box.size.height < style.height()) return;
    box.alternative = cutToWidth(text, box.size.width - around, style.font, canvas);
}

}  // namespace

FlowPicture pictureBox(const HTMLElement& image, std::string_view alternative, const Picture* picture,
                       const TextStyle& style, Canvas& canvas) {
    const PixelScale scale(canvas.pixelsPerInch());
    const int width = scale(clampPixels(image.lngImgWidth));
    const int height = scale(clampPixels(image.lngImgHeight));
    FlowPicture box;
    box.picture = picture;
    box.spaceX = scale(clampPixels(image.intHSpace, kMostSpace));
    box.spaceY = scale(clampPixels(image.intVSpace, kMostSpace));
    box.border = scale(clampPixels(image.intBorder, kMostBorder));
    box.middle = image.blnAlignCenter;
    if (image.alignsLeft) box.floats = Align::Left;
    if (image.blnAlignRight) box.floats = Align::Right;
    box.element = image.intIndex;
    if (picture != nullptr) {
        box.size = scaled(scale(picture->size()), width, height);
    } else {
        showAlternative(box, alternative, width, height, style, scale, canvas);
    }
    return box;
}

void setPictureBox(const FlowPicture& picture, const Flow& flow, DisplayList& list, std::uint32_t frame,
                   Point corner, Colour ground) {
    const int around = picture.border;
    DisplayItem item;
    item.element = picture.element;
    item.mark = picture.mark;
    item.frame = frame;
    item.place.left = corner.x + picture.spaceX;
    item.place.top = corner.y + picture.spaceY;
    item.place.right = item.place.left + picture.size.width + 2 * around;
    item.place.bottom = item.place.top + picture.size.height + 2 * around;
    if (around > 0) {
        item.kind = DrawKind::Frame;
        item.thickness = around;
        item.value = flow.styles[picture.style].colour;
        list.add(item);
    }
    Rect& place = item.place;
    place = {place.left + around, place.top + around, place.right - around, place.bottom - around};
    if (picture.picture != nullptr) {
        item.kind = DrawKind::Picture;
        item.picture = picture.picture;
        list.add(item);
        return;
    }
    item.kind = DrawKind::Sunken;
    item.thickness = flow.scale(1);
    item.value = lightEdgeOn(ground);
    list.add(item);
    if (picture.alternative.empty()) return;
    const TextStyle& style = flow.styles[picture.style];
    item.kind = DrawKind::Text;
    item.value = picture.style;
    item.text = picture.alternative;
    const int margin = flow.scale(kAlternativeMargin);
    place.left += margin;
    place.top += std::min(margin, (place.height() - style.height()) / 2);
    place.right -= margin;
    place.bottom = place.top + style.height();
    list.add(item);
}

}  // namespace kavrelon
