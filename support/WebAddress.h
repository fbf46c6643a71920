#pragma once

#include <cstdint>
#include <string_view>

namespace kavrelon {

/// What a text from outside is when it is taken for an address.
enum class WebAddress : std::uint8_t {
    None,   ///< no address: it could name a program or a file
    Page,   ///< `http://` or `https://`
    Other,  ///< `ftp://` or `mailto:`
};

/// The one rule for what may be opened as an address of the web: the scheme in any case, something after it,
/// and nothing but printable ASCII without quotes, spaces and backslashes. Anything else could start a
/// program or reach into the user's files.
WebAddress webAddressOf(std::string_view text) noexcept;

}  // namespace kavrelon
