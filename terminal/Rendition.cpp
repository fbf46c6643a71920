#include "terminal/Rendition.h"

#include <array>

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

Colour blendColour(Colour from, Colour to, double fraction) {
    return blendComponent(from, to, 0, fraction) | blendComponent(from, to, 8, fraction) |
           blendComponent(from, to, 16, fraction);
}

void Rendition::set(std::uint8_t code) {
    if (isColour(code, kForeground)) {
        foreColour_ = kColours[code - kForeground];
        attr_.Fore = code;
        set(kBold);
        return;
    }
    if (isColour(code, kBackground)) {
        backColour_ = kColours[code - kBackground];
        attr_.Back = code;
        set(attr_.Mode);
        return;
    }
    switch (code) {
        case kNormal:
        case kDim:
            pen_ = {.text = blendColour(foreColour_, backColour_, kDimming), .back = backColour_};
            break;
        case kBold:
            pen_ = {.text = foreColour_, .back = backColour_};
            break;
        case kUnderline:
            pen_ = {.text = foreColour_, .back = backColour_, .underline = true};
            break;
        case kBlink:
            pen_ = {.text = foreColour_, .back = backColour_, .italic = true};
            break;
        case kReverse:
            pen_ = {.text = backColour_, .back = foreColour_};
            break;
        case kHidden:
            pen_ = {.text = backColour_, .back = backColour_};
            break;
        case kReset:
            reset();
            return;
        default:
            return;
    }
    attr_.Mode = code;
}

void Rendition::reset() {
    set(defaultAttr_.Fore);
    set(attr_.Back);
    set(kNormal);
    set(kBold);
}

void Rendition::apply(CellAttr attr) {
    if (attr.Fore != attr_.Fore) set(attr.Fore);
    if (attr.Back != attr_.Back) set(attr.Back);
    if (attr.Mode != attr_.Mode) set(attr.Mode);
}

}  // namespace kavrelon
