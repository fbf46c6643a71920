#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace kavrelon {

/// The number that the whole of a text spells in decimal; nothing when it spells none, or one that a `Number`
/// cannot hold.
template <class Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

}  // namespace kavrelon
