#include "terminal/TitleBar.h"

namespace kavrelon {
namespace {

constexpr std::uint32_t kSystemMenu = 0x80000;
constexpr std::uint32_t kMaximiseBox = 0x10000;
constexpr std::uint32_t kMinimiseBox = 0x20000;
constexpr std::uint32_t kCaption = 0xC00000;

}  // namespace

std::uint32_t titleBarStyle(std::uint32_t style, bool shown, const TitleBarSettings& settings) {
    if (!shown) return style & ~(kSystemMenu | kMaximiseBox | kMinimiseBox | kCaption);
    if (settings.controlBox) style |= kSystemMenu;
    if (settings.maximiseBox) style |= kMaximiseBox;
    if (settings.minimiseBox) style |= kMinimiseBox;
    if (settings.hasCaption) style |= kCaption;
    return style;
}

}  // namespace kavrelon
