#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <utility>

namespace kavrelon::fuzz {

using Bytes = std::span<const std::uint8_t>;

/// Ends the run with a finding unless the law holds.
inline void require(bool holds, const char* law) {
    if (holds) return;
    std::cerr << "broken: " << law << '\n';
    std::abort();
}

/// Takes an input apart, byte by byte from its front. Past its end there are only zeros.
class FuzzInput {
  public:
    explicit FuzzInput(Bytes input) : rest_(input) {}

    bool empty() const { return rest_.empty(); }
    std::uint8_t byte() {
        if (rest_.empty()) return 0;
        const std::uint8_t first = rest_.front();
        rest_ = rest_.subspan(1);
        return first;
    }
    bool flag() { return byte() % 2 != 0; }
    int below(std::size_t count) { return static_cast<int>(byte() % count); }
    /// Mostly a small number; also those at the edges of what is counted here.
    std::int16_t number() {
        constexpr int kFirstEdge = 224;
        constexpr std::int16_t kEdges[] = {-32768, 32767, 1023, 1024, 1025, 132, 255, 256, 400, 800, 5000};
        const int byte = this->byte();
        if (byte < kFirstEdge) return static_cast<std::int16_t>(byte - 32);
        return kEdges[static_cast<std::size_t>(byte - kFirstEdge) % std::size(kEdges)];
    }
    /// The bytes before the next 0, which goes with them.
    std::string text() {
        const auto end = std::find(rest_.begin(), rest_.end(), 0);
        const std::string text(rest_.begin(), end);
        rest_ = rest_.subspan(std::min(text.size() + 1, rest_.size()));
        return text;
    }
    Bytes all() { return std::exchange(rest_, {}); }

  private:
    Bytes rest_;
};

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
