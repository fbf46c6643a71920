#include "htmllabel/win32/GdiCanvas.h"

#include "gdi/GdiPicture.h"
#include "htmllabel/layout/PixelScale.h"
#include "support/SystemColours.h"

namespace kavrelon {

COLORREF toColorRef(Colour colour) {
    return isSystemColour(colour) ? GetSysColor(systemColourNumber(colour)) : colour & 0xFFFFFF;
}

GdiCanvas::GdiCanvas(HDC like) : measuring_(CreateCompatibleDC(like)), fonts_(measuring_.get()) {}

GdiCanvas::Target::Target(GdiCanvas& canvas, HDC context) : canvas_(canvas), saved_(SaveDC(context)) {
    canvas.target_ = context;
    SetBkMode(context, TRANSPARENT);
    SetTextAlign(context, TA_LEFT | TA_TOP | TA_NOUPDATECP);
}

GdiCanvas::Target::~Target() {
    RestoreDC(canvas_.target_, saved_);
    canvas_.target_ = nullptr;
    canvas_.selected_.reset();
}

RECT GdiCanvas::onTarget(const Rect& place) const {
    return {place.left - origin_.x, place.top - origin_.y, place.right - origin_.x, place.bottom - origin_.y};
}

void GdiCanvas::drawText(FontId font, Colour colour, Point at, std::string_view text) {
    if (target_ == nullptr) return;
    if (selected_ != font) {
        SelectObject(target_, fonts_.handle(font));
        selected_ = font;
    }
    SetTextColor(target_, toColorRef(colour));
    // Without explicit advances the platform may place smoothed characters at fractions of a pixel, away from
    // what was measured.
    ExtTextOutA(target_, at.x - origin_.x, at.y - origin_.y, 0, nullptr, text.data(),
                static_cast<UINT>(text.size()), fonts_.advances(font, text));
}

void GdiCanvas::fill(const Rect& block, Colour colour) {
    if (target_ == nullptr) return;
    const RECT place = onTarget(block);
    // The background of a text without characters: metafiles keep its colour, but not that of a context's own
    // brush.
    SetBkColor(target_, toColorRef(colour));
    ExtTextOutA(target_, 0, 0, ETO_OPAQUE, &place, "", 0, nullptr);
}

void GdiCanvas::drawBullet(Bullet shape, const Rect& place, Colour colour) {
    if (shape == Bullet::Square) return fill(place, colour);
    if (target_ == nullptr) return;
    const RECT block = onTarget(place);
    // Created for each bullet: metafiles do not keep the colours of a context's own pen and brush.
    // As thick as a document's pixel, inside of the bullet: a pen of width 0 is a hairline on a printer.
    const int thickness = PixelScale(pixelsPerInch())(1);
    const GdiPen pen(CreatePen(PS_INSIDEFRAME, thickness, toColorRef(colour)));
    const GdiBrush brush(CreateSolidBrush(toColorRef(colour)));
    const Selected outline(target_, pen.get());
    const Selected inside(target_, shape == Bullet::Disc ? brush.get() : GetStockObject(NULL_BRUSH));
    Ellipse(target_, block.left, block.top, block.right, block.bottom);
}

void GdiCanvas::drawPicture(const Picture& picture, const Rect& place) {
    const GdiPicture* const own = GdiPicture::of(picture);
    if (target_ != nullptr && own != nullptr) own->draw(target_, onTarget(place));
}

void GdiCanvas::drawFocus(const Rect& place) {
    if (target_ == nullptr) return;
    const RECT frame = onTarget(place);
    // The dots mix the text and the background colour.
    SetTextColor(target_, 0);
    SetBkColor(target_, 0xFFFFFF);
    DrawFocusRect(target_, &frame);
}

}  // namespace kavrelon
