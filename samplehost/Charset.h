#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavrelon {

/// The characters of a remote system. The terminal's own are those of code page 437.
enum class Charset { Utf8, CodePage437, Windows1252 };

/// The name by which users know it: "utf-8", "437" or "1252".
std::string_view nameOf(Charset charset);

/// Text for the remote system. What its characters lack becomes "?", as does half a surrogate pair.
std::string encode(std::u16string_view text, Charset charset);

/// The characters that bytes of the terminal's screen stand for. 254 is left as it is: the terminal breaks
/// the line of a help text there.
std::u16string charactersOf(std::string_view bytes);

/// Turns what a remote system sends into the terminal's characters. Blocks may end anywhere.
///
/// What code page 437 lacks becomes "?", in as many columns as the character has on other terminals, so that
/// what stands to its right stays at its place: two for wide ones, none for those that join the one before.
/// In UTF-8 each piece that no character begins with becomes one "?", and the byte that shows that a
/// character was broken off is taken by itself.
class CharsetDecoder {
  public:
    explicit CharsetDecoder(Charset charset) : charset_(charset) {}

    /// Appends what `bytes` shows to `out`.
    void decode(std::string_view bytes, std::string& out);
    /// Forgets an unfinished character.
    void reset() { missing_ = 0; }

  private:
    void takeUtf8(std::uint8_t byte, std::string& out);
    void begin(std::uint8_t byte, std::string& out);

    Charset charset_;
    int missing_ = 0;         // bytes of the character at hand
    char32_t code_ = 0;       // its bits so far
    std::uint8_t least_ = 0;  // the range of its next byte
    std::uint8_t most_ = 0;
};

}  // namespace kavrelon
