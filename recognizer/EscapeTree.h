#pragma once

#include <memory>
#include <span>
#include <string>

namespace kavrelon {

struct EscapeAutomaton;

/// A plug-in's table of sequence patterns, compiled for recognising. Copies share what was compiled.
///
/// Notation: `<ESC>` is the escape character and `<n>` (0 to 255) the character of that code; `{N}` `{n}` is
/// a numeric field: one or more decimal digits; `{X}` `{x}` is a text field: any text, also none, up to the
/// first occurrence of the characters that follow it in the pattern; `<term>` `<TERM>`, at the end of a
/// pattern only, is the end of a private sequence: a carriage return, a line feed, a carriage return with a
/// line feed, or a NUL (so that a program may print it with the line end that its system has). Anything else
/// stands for itself, "<" and "{" that begin none of these included.
///
/// What a text field may hold depends on the kind of sequence, so that one sequence never swallows the next:
/// in `<ESC>[` sequences only the bytes 32 to 63, which come before a final byte, and between quote
/// characters all but control characters; elsewhere all but CAN, SUB, the control characters that begin a
/// sequence and what ends its kind of sequence (see EscapeRecognizer).
class EscapeTree {
  public:
    /// Compiles a table: patterns[i] belongs to row i + 1, and empty patterns are skipped. Where two rows
    /// match the same bytes, a literal character beats a numeric field, which beats a text field; otherwise
    /// the lower row wins. Throws std::invalid_argument, naming row and pattern, for a pattern that begins
    /// with a field, that has a field with nothing after it to end it, a code above 255, or `<term>`
    /// anywhere but at its end, and for a table of more than 32,767 rows or of patterns that overlap in too
    /// many ways.
    explicit EscapeTree(std::span<const std::string> patterns);

    /// The compiled form, for recognisers.
    const std::shared_ptr<const EscapeAutomaton>& automaton() const { return automaton_; }

  private:
    std::shared_ptr<const EscapeAutomaton> automaton_;
};

}  // namespace kavrelon
