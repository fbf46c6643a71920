#include "recognizer/SequenceSyntax.h"

#include <string_view>

#include "recognizer/EscapePattern.h"

namespace kavrelon {
namespace {

constexpr std::uint8_t kBell = 7;
constexpr std::string_view kStringOpeners = "]PX^_";

SyntaxStep endsIf(bool last, SyntaxState state) {
    return last ? SyntaxStep{SyntaxVerdict::Ends, SyntaxState::Done} : SyntaxStep{SyntaxVerdict::Goes, state};
}

}  // namespace

SyntaxStep SequenceSyntax::step(SyntaxState state, std::uint8_t opener, std::uint8_t byte) const {
    constexpr SyntaxStep breaks{SyntaxVerdict::Breaks, SyntaxState::Done};
    switch (state) {
        case SyntaxState::Prefix:
        case SyntaxState::Done:
            return breaks;
        case SyntaxState::StringEscape:
            return byte == '\\' ? SyntaxStep{SyntaxVerdict::Ends, SyntaxState::Done} : breaks;
        case SyntaxState::Ground:
            if (!first_.test(byte)) return breaks;
            return {SyntaxVerdict::Goes, byte == kEscapeByte ? SyntaxState::Escape : SyntaxState::Prefix};
        default:
            break;
    }
    if (isCancel(byte)) return {SyntaxVerdict::Cancels, SyntaxState::Done};
    if (state == SyntaxState::String && byte == kEscapeByte) {
        return {SyntaxVerdict::Goes, SyntaxState::StringEscape};
    }
    if (state == SyntaxState::Bracketed && byte == opener) return endsIf(true, state);
    if (interrupts(byte)) return breaks;
    switch (state) {
        case SyntaxState::String:
            return endsIf(byte == kBell, state);
        case SyntaxState::Private:
            return endsIf(isTerminator(byte), state);
        case SyntaxState::Bracketed:
            return endsIf(false, state);
        default:
            return escape(state, byte);
    }
}

SyntaxStep SequenceSyntax::escape(SyntaxState state, std::uint8_t byte) const {
    if (isControl(byte)) return {SyntaxVerdict::PassesBy, state};
    if (byte >= 127) return {SyntaxVerdict::Breaks, SyntaxState::Done};
    if (state == SyntaxState::ControlSequence) return endsIf(byte >= 64, state);
    if (byte < 48) return {SyntaxVerdict::Goes, SyntaxState::Intermediate};
    if (state == SyntaxState::Escape) {
        if (byte == '[') return {SyntaxVerdict::Goes, SyntaxState::ControlSequence};
        if (kStringOpeners.find(static_cast<char>(byte)) != std::string_view::npos) {
            return {SyntaxVerdict::Goes, SyntaxState::String};
        }
    }
    return endsIf(true, state);
}

}  // namespace kavrelon
