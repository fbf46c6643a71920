#pragma once

#include <array>
#include <cstddef>

#include "terminal/screen/FontChoice.h"

namespace kavrelon {

/// An entry of the font menu: its caption, the letter of it that chooses the entry, and its font.
struct FontMenuEntry {
    const char* caption;
    char accessKey;
    FontChoice font;
};

inline constexpr int kFirstFontEntry = 1;
inline constexpr int kFontEntries = 8;

/// The font menu, entries 1 to 8. The last two have full captions and abbreviated names.
inline constexpr std::array<FontMenuEntry, kFontEntries> kFontMenu{{
    {"MS LineDraw", 'M', {"MS LineDraw", charsets::kDefault}},
    {"Lucida Console", 'L', {"Lucida Console", charsets::kOem}},
    {"Terminal", 'T', {"Terminal", charsets::kDefault}},
    {"Arial", 'A', {"Arial", charsets::kOem}},
    {"Lucida Sans Unicode", 'u', {"Lucida Sans Unicode", charsets::kOem}},
    {"Times New Roman", 'N', {"Times New Roman", charsets::kOem}},
    {"HyperFont Light", 'H', {"HyperFont Lt.", charsets::kDefault}},
    {"HyperFont Dark", 'D', {"HyperFont Dk.", charsets::kDefault}},
}};

/// The entry that a stored or clicked number means: any number without a font of its own means the first.
constexpr int fontEntryFor(int index) {
    return index > kFirstFontEntry && index < kFirstFontEntry + kFontEntries ? index : kFirstFontEntry;
}

/// The entry's row; `entry` as `fontEntryFor` gives it.
constexpr const FontMenuEntry& fontMenuEntry(int entry) {
    return kFontMenu[static_cast<std::size_t>(entry - kFirstFontEntry)];
}

}  // namespace kavrelon
