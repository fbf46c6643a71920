#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kavrelon {

/// What happens when a state is entered.
enum class EscapeEffect : std::uint8_t {
    // The sequence goes on.
    Note,        // only the marks are set
    Hold,        // it is complete up to here, but may be longer
    HoldBefore,  // the same, up to the byte before this one
    PassBy,      // the byte is not part of it
    // It ends.
    Match,     // with this byte, as row `row`
    Drop,      // with this byte, matching no row
    BreakOff,  // before this byte, matching no row
    GiveBack,  // before this byte, and it was plain text
    ToHeld,    // where it was held last
};

/// A compiled table: a state machine over classes of bytes.
///
/// A state is the offset of its row in `next`. States from `firstEventful` on have an effect, and those that
/// end the sequence have no row.
struct EscapeAutomaton {
    static constexpr std::uint32_t kGround = 0;

    struct Event {
        EscapeEffect effect = EscapeEffect::Note;
        /// Match and Drop: the byte is the end of a private sequence.
        bool terminated = false;
        /// Hold and Match: the table's row, 0 for a sequence that matches none.
        std::int16_t row = 0;
        /// The marks that take the offset after this byte: a range of `marks`.
        std::uint32_t firstMark = 0;
        std::uint32_t lastMark = 0;
    };

    /// Where a field of a row is found. All fields but a row's last have a mark after the text that ended
    /// them.
    struct Field {
        /// Literal bytes before it: from the beginning, or from the mark of the field before.
        std::uint32_t gap = 0;
        /// Bytes between the field's end and its mark; for the last field, the end of the sequence.
        std::uint32_t tail = 0;
        std::uint32_t mark = 0;
    };

    struct Row {
        std::uint32_t firstField = 0;
        std::uint32_t fields = 0;
    };

    /// The bytes with which a sequence may begin, as flags and as a list.
    std::array<bool, 256> first{};
    std::vector<std::uint8_t> firstBytes;
    std::array<std::uint8_t, 256> classOf{};
    /// Bits to shift a state by for the number of its row.
    unsigned rowShift = 0;
    std::vector<std::uint32_t> next;
    std::uint32_t firstEventful = 0;
    std::vector<Event> events;
    std::vector<std::uint32_t> marks;
    /// By row number; element 0 is for sequences that match no row.
    std::vector<Row> rows;
    std::vector<Field> fields;
    std::uint32_t markCount = 0;
    std::uint32_t mostFields = 0;

    const Event& event(std::uint32_t state) const { return events[(state - firstEventful) >> rowShift]; }
};

}  // namespace kavrelon
