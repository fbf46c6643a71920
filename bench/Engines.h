#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "bench/Streams.h"
#include "support/Bytes.h"

namespace kavrelon::bench {

/// A terminal that takes a byte stream.
class Engine {
  public:
    virtual ~Engine() = default;

    virtual void feed(std::span<const std::uint8_t> block) = 0;
    /// The character in a cell, 0-based; a blank for NUL.
    virtual char shown(int column, int line) const = 0;

    /// Feeds a whole stream in blocks.
    void play(std::string_view stream) {
        for (; !stream.empty(); stream.remove_prefix(std::min(stream.size(), kBlock))) {
            feed(bytesOf(stream.substr(0, kBlock)));
        }
    }
};

/// Our terminal with our recogniser before it, on a window in memory.
std::unique_ptr<Engine> makeOurEngine(ScreenExtent extent, bool paintOn);

/// libvterm with its screen layer, with as little work as it can be given: single-byte characters, no
/// callbacks (so damage is collected, merged as far as it can be, and told to nobody), no scroll-back.
std::unique_ptr<Engine> makeVtermEngine(ScreenExtent extent);

}  // namespace kavrelon::bench
