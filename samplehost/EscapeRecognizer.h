#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "samplehost/EscapeSink.h"
#include "samplehost/EscapeTree.h"

namespace kavrelon {

/// Splits a received byte stream into plain bytes and sequences of a table, and drops the sequences that the
/// table does not have. Block boundaries may fall anywhere.
///
/// Sequences of the table are found by their patterns, the longest match first. Every other sequence ends
/// where the usual syntax says, and goes to `unmatched`:
/// - ESC [ parameters and intermediates (32 to 63), up to a final byte (64 to 126);
/// - ESC ] and ESC with P, X, ^ or _: a string up to BEL or ESC \;
/// - ESC with a control character behind it that a pattern has there: a private sequence, up to its end;
/// - any other ESC: intermediates (32 to 47) and one byte (48 to 126);
/// - a control character that begins and ends patterns of the table: up to its next occurrence, once the literal
///   text in front of a pattern's first field was there. Before that, what fits no pattern is plain text.
///
/// CAN and SUB break a sequence off; the escape character and every other first byte of a pattern break it off
/// and begin anew, and so does any byte that cannot stand in it, which is then taken as plain. Other control
/// characters inside an ESC or ESC [ sequence act at once, as on terminals: they are passed on as plain, and the
/// sequence goes on. A sequence that has not ended after 64 KB is given up and goes to `unmatched`.
class EscapeRecognizer {
  public:
    /// The longest sequence, in bytes; also the most that is ever held back.
    static constexpr std::size_t kLongestSequence = 64 * 1024;

    /// The sink must outlive the recogniser.
    EscapeRecognizer(const EscapeTree& tree, EscapeSink& sink);

    /// Takes the next block of the stream. Must not be called from within the sink's members.
    void feed(std::span<const std::uint8_t> block);
    /// Forgets an unfinished sequence: the stream begins anew.
    void reset();

  private:
    std::shared_ptr<const EscapeAutomaton> automaton_;
    EscapeSink& sink_;
};

}  // namespace kavrelon
