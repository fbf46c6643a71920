#include "terminal/screen/Rendition.h"

#include <array>
#include <utility>

#include "support/Conversions.h"

namespace kavrelon {
namespace {

constexpr std::array<Colour, 8> kColours{
    0x000000, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF,
};

/// How far normal and dim text is blended toward the background.
constexpr double kDimming = 0.4;

constexpr bool isColour(std::uint8_t code, std::uint8_t first) {
    return code >= first && code < first + kColours.size();
}

Colour blendComponent(Colour from, Colour to, int shift, double fraction) {
    const int a = static_cast<int>((from >> shift) & 0xFF);
    const int b = static_cast<int>((to >> shift) & 0xFF);
    return static_cast<Colour>(roundHalfToEven((b - a) * fraction + a)) << shift;
}

}  // namespace

Colour BlendColour(Colour from, Colour to, double fraction) {
    return blendComponent(from, to, 0, fraction) | blendComponent(from, to, 8, fraction) |
           blendComponent(from, to, 16, fraction);
}

void Rendition::set(std::uint8_t code) {
    if (isColour(code, kForeground)) {
        ForeColour_ = kColours[code - kForeground];
        stamp_.Attr.Fore = code;
        stamp_.Attr.Mode = kBold;
        penStale_ = true;
        return;
    }
    if (isColour(code, kBackground)) {
        BackColour_ = kColours[code - kBackground];
        stamp_.Attr.Back = code;
        penStale_ = true;
        return;
    }
    switch (code) {
        case kNormal:
        case kBold:
        case kDim:
        case kUnderline:
        case kBlink:
        case kReverse:
        case kHidden:
            stamp_.Attr.Mode = code;
            penStale_ = true;
            break;
        case kReset:
            reset();
            break;
        default:
            break;
    }
}

void Rendition::choosePen() {
    penStale_ = false;
    pen_ = {.text = ForeColour_, .back = BackColour_};
    switch (stamp_.Attr.Mode) {
        case kNormal:
        case kDim:
            pen_.text = BlendColour(ForeColour_, BackColour_, kDimming);
            break;
        case kUnderline:
            pen_.underline = true;
            break;
        case kBlink:
            pen_.italic = true;
            break;
        case kReverse:
            std::swap(pen_.text, pen_.back);
            break;
        case kHidden:
            pen_.text = BackColour_;
            break;
        default:
            break;
    }
}

void Rendition::reset() {
    set(DefaultAttr_.Fore);
    set(stamp_.Attr.Back);
    set(kNormal);
    set(kBold);
}

void Rendition::apply(CellAttr attr) {
    if (attr.Fore != stamp_.Attr.Fore) set(attr.Fore);
    if (attr.Back != stamp_.Attr.Back) set(attr.Back);
    if (attr.Mode != stamp_.Attr.Mode) set(attr.Mode);
}

}  // namespace kavrelon
