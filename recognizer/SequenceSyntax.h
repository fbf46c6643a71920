#pragma once

#include <cstdint>

#include "recognizer/ByteClasses.h"

namespace kavrelon {

/// How far a sequence has come by the usual syntax, whatever the table says of it.
enum class SyntaxState : std::uint8_t {
    Ground,
    Escape,           // after ESC
    Intermediate,     // after ESC and intermediates
    ControlSequence,  // after ESC [
    String,           // after ESC ] and the other openers of strings
    StringEscape,     // after the ESC that may end a string
    Private,          // after ESC and a control character
    Prefix,           // after a first byte other than ESC, in the literal text of patterns
    Bracketed,        // like Prefix, past that text: up to the next such byte
    Done,             // complete, or past what the syntax knows: only a pattern can go on
};

inline constexpr int kSyntaxStates = 10;

enum class SyntaxVerdict : std::uint8_t {
    Goes,      // the byte belongs to the sequence
    Ends,      // the byte is its last
    Cancels,   // the byte breaks it off and goes with it
    PassesBy,  // the byte acts at once, and the sequence goes on without it
    Breaks,    // the byte cannot belong to it
};

struct SyntaxStep {
    SyntaxVerdict verdict;
    SyntaxState next;
};

/// Where sequences end by the rules that all terminals share: what skips the sequences that match no row. Of
/// the table it knows only with which bytes its patterns begin.
class SequenceSyntax {
  public:
    /// `first` has every first byte of a pattern and ESC; `bracketing` those that also end a pattern.
    SequenceSyntax(const ByteSet& first, const ByteSet& bracketing)
        : first_(first), bracketing_(bracketing) {}

    bool isFirst(std::uint8_t byte) const { return first_.test(byte); }
    bool isBracketing(std::uint8_t byte) const { return bracketing_.test(byte); }
    /// Control characters that begin a pattern, and CAN and SUB: no text field takes them.
    bool interrupts(std::uint8_t byte) const {
        return (isControl(byte) && first_.test(byte)) || isCancel(byte);
    }
    /// What `byte` means in `state`, for a sequence that began with `opener`.
    SyntaxStep step(SyntaxState state, std::uint8_t opener, std::uint8_t byte) const;

  private:
    SyntaxStep escape(SyntaxState state, std::uint8_t byte) const;

    ByteSet first_;
    ByteSet bracketing_;
};

}  // namespace kavrelon
