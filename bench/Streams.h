#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kavrelon::bench {

/// A screen's size in characters.
struct ScreenExtent {
    int columns;
    int lines;
};

inline constexpr ScreenExtent kExtents[]{{80, 25}, {132, 60}};

/// A kind of byte stream that terminals are fed.
struct StreamKind {
    const char* name;
    const char* description;
    /// A stream of at least `length` bytes, the same at every call.
    std::string (*make)(ScreenExtent extent, std::size_t length);
};

std::span<const StreamKind> streamKinds();
/// Null when there is no kind of that name.
const StreamKind* findStreamKind(std::string_view name);

/// Streams come to a terminal in blocks of this size, as from a socket.
inline constexpr std::size_t kBlock = 4096;

/// How many bytes a measured stream has at least.
inline constexpr std::size_t kStreamLength = 262144;

}  // namespace kavrelon::bench
