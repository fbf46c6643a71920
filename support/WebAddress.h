#pragma once

#include <cstdint>
#include <string_view>

namespace kavrelon {

/// What kind of address a text from outside is.
enum class WebAddress : std::uint8_t {
    None,   ///< not an address: it could name a program or a file
    Page,   ///< `http://` or `https://`
    Other,  ///< `ftp://` or `mailto:`
};

/// The one rule for what may be opened as a web address: one of these schemes in any case, with something
/// after it, all printable ASCII without quotes, spaces and backslashes. Anything else could start a program
/// or reach into the user's files.
WebAddress webAddressOf(std::string_view text) noexcept;

}  // namespace kavrelon
