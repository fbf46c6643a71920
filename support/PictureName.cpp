#include "support/PictureName.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "support/AsciiText.h"

namespace kavrelon {
namespace {

constexpr std::size_t kLongestName = 255;

constexpr std::array<std::string_view, 7> kDevices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"};
constexpr std::array<std::string_view, 2> kNumberedDevices{"COM", "LPT"};

bool isRefusedByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 32 || byte == 127 || std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos;
}

/// Superscript digits number a device too. Which bytes they are depends on the code page, so any byte above
/// 127 counts as one.
bool numbers(std::string_view text) {
    if (text.size() == 1 && isAsciiDigit(text[0])) return true;
    return !text.empty() &&
           std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) > 127; });
}

/// To the platform a device's name means the device, whatever the extension.
bool isDevice(std::string_view name) {
    std::string_view stem = name.substr(0, name.find('.'));
    stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
    return std::ranges::any_of(kDevices,
                               [&](std::string_view device) { return equalsInUpperCase(stem, device); }) ||
           std::ranges::any_of(kNumberedDevices, [&](std::string_view device) {
               return equalsInUpperCase(stem.substr(0, device.size()), device) &&
                      numbers(stem.substr(device.size()));
           });
}

}  // namespace

bool isPlainFileName(std::string_view name) noexcept {
    if (name.empty() || name.size() > kLongestName) return false;
    // The platform drops dots and spaces at the end: it would open another name than the one checked here.
    if (name.back() == '.' || name.back() == ' ') return false;
    return std::ranges::none_of(name, isRefusedByte) && !isDevice(name);
}

}  // namespace kavrelon
