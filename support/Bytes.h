#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace kavrelon {

// A stream's bytes are numbers to protocols and characters to texts. Both views show the same memory, which
// must outlive them.

inline std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

inline std::string_view textOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace kavrelon
