#pragma once

#include <array>
#include <string_view>

namespace kavrelon {

/// The value of setting "SpoolType" that each entry of the printer-type menu stands for, entry 0 first.
/// Value and entry do not agree on purpose: installed settings files are written this way.
inline constexpr std::array<std::string_view, 4> kSpoolTypes{"0", "2", "3", "1"};

/// The menu entry of a stored value; any value that is none of them means entry 0.
constexpr int printerTypeEntry(std::string_view spoolType) {
    for (std::size_t entry = 1; entry < kSpoolTypes.size(); ++entry) {
        if (kSpoolTypes[entry] == spoolType) return static_cast<int>(entry);
    }
    return 0;
}

}  // namespace kavrelon
