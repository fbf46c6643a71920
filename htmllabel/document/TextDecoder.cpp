#include "htmllabel/document/TextDecoder.h"

#include <cstdint>

#include "support/AsciiText.h"
#include "support/Conversions.h"
#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

constexpr std::string_view kReference = "&#";

/// Writes a decoded text, which is never longer than its source.
class Decoder {
  public:
    Decoder(std::string_view text, char* room)
        : text_(text), begin_(room), end_(room), lastSemicolon_(text.rfind(';')) {}

    std::string_view run() {
        std::size_t at = 0;
        while (at < text_.size()) {
            if (referenceAt(at)) {
                at = decodeReference(at + kReference.size());
            } else {
                append(text_[at++]);
            }
        }
        return {begin_, static_cast<std::size_t>(end_ - begin_)};
    }

  private:
    /// A reference counts when a ";" follows it, however far away.
    bool referenceAt(std::size_t at) const {
        return lastSemicolon_ != std::string_view::npos && at < lastSemicolon_ &&
               text_.substr(at).starts_with(kReference);
    }

    /// Takes the digits at `at` and the character after them, whatever it is; returns the place after that.
    std::size_t decodeReference(std::size_t at) {
        constexpr std::int16_t kFirstDropped = 1000;
        constexpr std::int16_t kLastCharacter = 255;
        const std::size_t first = at;
        std::int16_t code = 0;
        for (; isAsciiDigit(text_[at]); ++at) code = narrowToInt16(code * 10 + (text_[at] - '0'));
        if (at > first && code < kFirstDropped) {
            if (code > kLastCharacter) raise(RuntimeErrorNumber::InvalidProcedureCall);
            append(static_cast<char>(code));
        }
        return at + 1;
    }

    void append(char c) {
        const bool endsLine = c == '\n' && end_ != begin_ && end_[-1] == '\r';
        if (endsLine) --end_;
        *end_++ = c == '\n' || c == '\t' ? ' ' : c;
    }

    std::string_view text_;
    char* begin_;
    char* end_;
    std::size_t lastSemicolon_;
};

}  // namespace

std::string_view mstrDecodeText(std::string_view text, std::pmr::memory_resource& memory) {
    // A normalised text holds line ends and tabs as references only.
    if (text.find(kReference) == std::string_view::npos) return text;
    auto* room = static_cast<char*>(memory.allocate(text.size(), alignof(char)));
    return Decoder(text, room).run();
}

}  // namespace kavrelon
