#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace kavrelon {

/// What a recogniser finds in a byte stream, in stream order. All bytes and views are valid during the call
/// only. A call that throws ends the block that is being fed: the rest of the block is lost.
class EscapeSink {
  public:
    virtual ~EscapeSink() = default;

    /// Bytes that belong to no sequence; never empty.
    virtual void plain(std::span<const std::uint8_t> bytes) = 0;
    /// A sequence that matches row `index` (1 and up) of the table; `fields[0]` is the first field of its
    /// pattern.
    virtual void sequence(std::int16_t index, std::span<const std::string_view> fields) = 0;
    /// A sequence that matches no row, or one that was broken off: not to be shown. Never empty.
    virtual void unmatched(std::span<const std::uint8_t> bytes) = 0;
};

}  // namespace kavrelon
