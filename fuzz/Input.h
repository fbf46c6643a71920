#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <span>

namespace kavrelon::fuzz {

using Bytes = std::span<const std::uint8_t>;

/// Ends the run with a finding unless the law holds.
inline void require(bool holds, const char* law) {
    if (holds) return;
    std::cerr << "broken: " << law << '\n';
    std::abort();
}

/// An input: one byte that says how the rest is fed, and the stream.
struct Input {
    Input(const std::uint8_t* data, std::size_t size)
        : control(size > 0 ? data[0] : std::uint8_t{0}),
          stream(Bytes(data, size).subspan(size > 0 ? 1 : 0)) {}

    std::size_t blockLength() const { return std::size_t{control} / 2 % 64 + 1; }

    std::uint8_t control;
    Bytes stream;
};

template <class Feed>
void feedInBlocks(Bytes stream, std::size_t length, Feed feed) {
    for (; !stream.empty(); stream = stream.subspan(std::min(length, stream.size()))) {
        feed(stream.first(std::min(length, stream.size())));
    }
}

}  // namespace kavrelon::fuzz
