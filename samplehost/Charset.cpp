#include "samplehost/Charset.h"

#include <algorithm>
#include <array>

namespace kavrelon {
namespace {

constexpr char kUnknown = '?';

/// Bytes 128 to 255 of code page 437.
constexpr std::u16string_view k437 =
    u"\u00C7\u00FC\u00E9\u00E2\u00E4\u00E0\u00E5\u00E7\u00EA\u00EB\u00E8\u00EF\u00EE\u00EC\u00C4\u00C5"
    u"\u00C9\u00E6\u00C6\u00F4\u00F6\u00F2\u00FB\u00F9\u00FF\u00D6\u00DC\u00A2\u00A3\u00A5\u20A7\u0192"
    u"\u00E1\u00ED\u00F3\u00FA\u00F1\u00D1\u00AA\u00BA\u00BF\u2310\u00AC\u00BD\u00BC\u00A1\u00AB\u00BB"
    u"\u2591\u2592\u2593\u2502\u2524\u2561\u2562\u2556\u2555\u2563\u2551\u2557\u255D\u255C\u255B\u2510"
    u"\u2514\u2534\u252C\u251C\u2500\u253C\u255E\u255F\u255A\u2554\u2569\u2566\u2560\u2550\u256C\u2567"
    u"\u2568\u2564\u2565\u2559\u2558\u2552\u2553\u256B\u256A\u2518\u250C\u2588\u2584\u258C\u2590\u2580"
    u"\u03B1\u00DF\u0393\u03C0\u03A3\u03C3\u00B5\u03C4\u03A6\u0398\u03A9\u03B4\u221E\u03C6\u03B5\u2229"
    u"\u2261\u00B1\u2265\u2264\u2320\u2321\u00F7\u2248\u00B0\u2219\u00B7\u221A\u207F\u00B2\u25A0\u00A0";
/// Bytes 128 to 159 of code page 1252; the five that it lacks stand for themselves, as Windows has them.
constexpr std::u16string_view k1252 =
    u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
    u"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178";
static_assert(k437.size() == 128 && k1252.size() == 32);

struct Range {
    char32_t first, last;
};
constexpr std::array kJoining{Range{0x300, 0x36F},   Range{0x200B, 0x200F}, Range{0x202A, 0x202E},
                              Range{0x2060, 0x2064}, Range{0x20D0, 0x20FF}, Range{0xFE00, 0xFE0F},
                              Range{0xFE20, 0xFE2F}, Range{0xFEFF, 0xFEFF}, Range{0xE0100, 0xE01EF}};
constexpr std::array kWide{Range{0x1100, 0x115F},   Range{0x2E80, 0xA4CF},   Range{0xAC00, 0xD7A3},
                           Range{0xF900, 0xFAFF},   Range{0xFE30, 0xFE6F},   Range{0xFF01, 0xFF60},
                           Range{0xFFE0, 0xFFE6},   Range{0x1F300, 0x1F64F}, Range{0x1F680, 0x1F6FF},
                           Range{0x1F900, 0x1F9FF}, Range{0x20000, 0x3FFFD}};

template <std::size_t count>
bool isIn(const std::array<Range, count>& ranges, char32_t code) {
    return std::any_of(ranges.begin(), ranges.end(),
                       [=](const Range& range) { return code >= range.first && code <= range.last; });
}

/// The byte from `first` on that the table has for the character; "?" when it has none.
char byteOf(char32_t code, std::u16string_view table, std::size_t first) {
    const std::size_t at = code > 0xFFFF ? table.npos : table.find(static_cast<char16_t>(code));
    return at == table.npos ? kUnknown : static_cast<char>(first + at);
}

void show(char32_t code, std::string& out) {
    if (code < 128) {
        out += static_cast<char>(code);
    } else if (!isIn(kJoining, code)) {
        out.append(isIn(kWide, code) ? 2 : 1, byteOf(code, k437, 128));
    }
}

/// For characters beyond ASCII.
void appendUtf8(char32_t code, std::string& out) {
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr std::array<unsigned, 4> kLead{0, 0xC0, 0xE0, 0xF0};
    out += static_cast<char>(kLead[static_cast<std::size_t>(more)] | (code >> (6 * more)));
    for (int rest = more - 1; rest >= 0; --rest)
        out += static_cast<char>(0x80 | ((code >> (6 * rest)) & 0x3F));
}

void appendCharacter(char32_t code, Charset charset, std::string& out) {
    if (code < 128) {
        out += static_cast<char>(code);
    } else if (charset == Charset::Utf8) {
        appendUtf8(code, out);
    } else if (charset == Charset::CodePage437) {
        out += byteOf(code, k437, 128);
    } else {
        out += code >= 0xA0 && code < 0x100 ? static_cast<char>(code) : byteOf(code, k1252, 128);
    }
}

}  // namespace

std::string_view nameOf(Charset charset) {
    switch (charset) {
        case Charset::Utf8:
            return "utf-8";
        case Charset::CodePage437:
            return "437";
        case Charset::Windows1252:
            break;
    }
    return "1252";
}

std::string encode(std::u16string_view text, Charset charset) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        const bool high = code >= 0xD800 && code < 0xDC00;
        if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00U);
        } else if (code >= 0xD800 && code < 0xE000) {
            code = kUnknown;
        }
        appendCharacter(code, charset, out);
    }
    return out;
}

std::u16string charactersOf(std::string_view bytes) {
    constexpr std::uint8_t kLineBreak = 254;
    std::u16string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        text += byte < 128 || byte == kLineBreak ? static_cast<char16_t>(byte) : k437[byte - 128U];
    }
    return text;
}

void CharsetDecoder::decode(std::string_view bytes, std::string& out) {
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        if (charset_ == Charset::Utf8) {
            takeUtf8(byte, out);
        } else if (charset_ == Charset::CodePage437 || byte < 128) {
            out += c;
        } else {
            show(byte < 160 ? k1252[byte - 128U] : byte, out);
        }
    }
}

void CharsetDecoder::takeUtf8(std::uint8_t byte, std::string& out) {
    if (missing_ == 0) {
        begin(byte, out);
    } else if (byte < least_ || byte > most_) {
        out += kUnknown;
        missing_ = 0;
        begin(byte, out);
    } else {
        code_ = code_ << 6 | (byte & 0x3FU);
        least_ = 0x80;
        most_ = 0xBF;
        if (--missing_ == 0) show(code_, out);
    }
}

void CharsetDecoder::begin(std::uint8_t byte, std::string& out) {
    if (byte < 0x80) {
        out += static_cast<char>(byte);
        return;
    }
    if (byte < 0xC2 || byte > 0xF4) {
        out += kUnknown;
        return;
    }
    missing_ = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
    code_ = byte & (0x3FU >> missing_);
    // The second byte keeps out what has a shorter form, surrogates, and what is beyond the last character.
    least_ = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : 0x80;
    most_ = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : 0xBF;
}

}  // namespace kavrelon
