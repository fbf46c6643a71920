#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "recognizer/EscapeAutomaton.h"
#include "recognizer/EscapeSink.h"
#include "recognizer/EscapeTree.h"

namespace kavrelon {

/// Splits a received byte stream into plain bytes and sequences of a table, and drops the sequences that the
/// table does not have. Block boundaries may fall anywhere.
///
/// Sequences of the table are found by their patterns, the longest match first: where a match may still
/// become a longer one, it waits for the byte that decides. Every other sequence ends where the usual syntax
/// says, and goes to `unmatched`:
/// - ESC [ parameters and intermediates (32 to 63), up to a final byte (64 to 126);
/// - ESC ] and ESC with P, X, ^ or _: a string up to BEL or ESC \;
/// - ESC followed by a control character that a pattern has there: a private sequence, up to its end;
/// - any other ESC: intermediates (32 to 47) and one byte (48 to 126);
/// - a control character that begins and ends patterns of the table: up to its next occurrence, once the text
///   before a pattern's first field was there. Until then, what fits no pattern is plain text.
///
/// CAN and SUB break a sequence off. ESC and every other control character that begins a pattern break it off
/// and begin a new one. A byte that cannot be part of it breaks it off too, and is taken as plain. Other
/// control characters inside an ESC or ESC [ sequence act at once, as on terminals: they are passed on as
/// plain, and the sequence goes on. A sequence that has not ended after 64 KB is given up and goes to
/// `unmatched`, and what follows is text again.
class EscapeRecognizer {
  public:
    /// The longest sequence, in bytes; no more than that is ever held back.
    static constexpr std::size_t kLongestSequence = 65536;

    /// The sink must outlive the recogniser.
    EscapeRecognizer(const EscapeTree& tree, EscapeSink& sink);

    /// Takes the next block of the stream. Must not be called from within the sink's members.
    void feed(std::span<const std::uint8_t> block);
    /// Forgets an unfinished sequence: what is fed next begins a new stream.
    void reset();

  private:
    using Bytes = std::span<const std::uint8_t>;

    /// A place where a sequence may end. Row 0 is no row.
    struct Held {
        std::size_t length = 0;
        std::int16_t row = 0;
    };

    const std::uint8_t* findFirst(const std::uint8_t* next, const std::uint8_t* end) const;
    const std::uint8_t* takeSequence(const std::uint8_t* from, const std::uint8_t* end);
    const std::uint8_t* finish(const EscapeAutomaton::Event& event, const std::uint8_t* fresh,
                               const std::uint8_t* next);
    const std::uint8_t* finishAt(Held place, const std::uint8_t* fresh);
    void note(const EscapeAutomaton::Event& event, std::size_t length);
    Bytes whole(const std::uint8_t* fresh, const std::uint8_t* next);
    void emit(std::int16_t row, Bytes bytes);

    std::shared_ptr<const EscapeAutomaton> automaton_;
    EscapeSink& sink_;
    std::uint32_t state_ = 0;
    bool skipLineFeed_ = false;
    Held held_;                          // what an unfinished sequence falls back on; length 0: nothing
    std::vector<std::uint8_t> carried_;  // the part of an unfinished sequence that earlier blocks brought
    std::vector<std::size_t> marks_;
    std::vector<std::string_view> fields_;
};

}  // namespace kavrelon
