#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kavrelon {

/// A text command from the host: a word, and what follows its first space.
struct HostCommand {
    std::string word;  ///< upper case
    std::string_view argument;

    explicit HostCommand(std::string_view text);
};

/// The argument of "IMAGE": a picture over a rectangle of cells.
struct ImageCommand {
    std::int16_t topX = 0;
    std::int16_t topY = 0;
    std::int16_t bottomX = 0;
    std::int16_t bottomY = 0;
    std::int16_t number = 0;
    std::string_view name;  ///< all that follows the numbers; may contain ";"

    /// Numbers that cannot be read are 0.
    explicit ImageCommand(std::string_view argument) noexcept;
};

}  // namespace kavrelon
