#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kavrelon {

/// The entry of a table whose `name` this is, null when there is none.
template <class Entry, std::size_t kEntries>
const Entry* findNamed(const Entry (&entries)[kEntries], std::string_view name) {
    const Entry* const end = entries + kEntries;
    const Entry* const found =
        std::find_if(entries, end, [name](const Entry& entry) { return entry.name == name; });
    return found == end ? nullptr : found;
}

}  // namespace kavrelon
