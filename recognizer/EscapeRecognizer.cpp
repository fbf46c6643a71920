#include "recognizer/EscapeRecognizer.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace kavrelon {
namespace {

/// The "row" of bytes that turned out to be plain text.
constexpr std::int16_t kPlain = -1;

using Word = std::size_t;

/// A machine word with `byte` in every place.
constexpr Word repeated(std::uint8_t byte) {
    return ~Word{0} / 255 * byte;
}

/// A word in which the high bit of a byte is set where `word` has `byte`. Only the lowest such bit can be
/// relied on: it is that of the first byte that is equal.
Word equalBytes(Word word, Word byte) {
    const Word difference = word ^ byte;
    return (difference - repeated(1)) & ~difference;
}

}  // namespace

EscapeRecognizer::EscapeRecognizer(const EscapeTree& tree, EscapeSink& sink)
    : automaton_(tree.automaton()),
      sink_(sink),
      marks_(automaton_->markCount),
      fields_(automaton_->mostFields) {}

void EscapeRecognizer::reset() {
    state_ = EscapeAutomaton::kGround;
    skipLineFeed_ = false;
}

void EscapeRecognizer::feed(Bytes block) {
    const std::uint8_t* next = block.data();
    const std::uint8_t* const end = next + block.size();
    while (next != end) {
        if (skipLineFeed_) {
            skipLineFeed_ = false;
            if (*next == '\n') {
                ++next;
                continue;
            }
        }
        if (state_ == EscapeAutomaton::kGround) {
            const std::uint8_t* const text = next;
            next = findFirst(next, end);
            if (next != text) sink_.plain({text, next});
            if (next == end) return;
            carried_.clear();
            held_ = {};
        }
        next = takeSequence(next, end);
    }
}

/// The next byte that may begin a sequence. Text is searched a word at a time where there are no more than
/// two such bytes, which is what tables have.
const std::uint8_t* EscapeRecognizer::findFirst(const std::uint8_t* next, const std::uint8_t* end) const {
    const std::vector<std::uint8_t>& bytes = automaton_->firstBytes;
    if (std::endian::native == std::endian::little && bytes.size() <= 2) {
        const Word one = repeated(bytes.front());
        const Word other = repeated(bytes.back());
        while (static_cast<std::size_t>(end - next) >= sizeof(Word)) {
            Word word = 0;
            std::memcpy(&word, next, sizeof word);
            const Word found = (equalBytes(word, one) | equalBytes(word, other)) & repeated(128);
            if (found != 0) return next + std::countr_zero(found) / 8;
            next += sizeof word;
        }
    }
    const bool* const first = automaton_->first.data();
    while (next != end && !first[*next]) ++next;
    return next;
}

/// Goes on with a sequence, and returns where the block goes on. `fresh` is the first byte that is not
/// carried: a sequence that lies in one block is never copied.
const std::uint8_t* EscapeRecognizer::takeSequence(const std::uint8_t* fresh, const std::uint8_t* end) {
    const EscapeAutomaton& automaton = *automaton_;
    const std::uint32_t* const table = automaton.next.data();
    const std::uint8_t* const classOf = automaton.classOf.data();
    const std::uint32_t firstEventful = automaton.firstEventful;

    const std::size_t room = kLongestSequence - carried_.size();
    const std::uint8_t* const stop = fresh + std::min(room, static_cast<std::size_t>(end - fresh));
    const std::uint8_t* next = fresh;
    std::uint32_t state = state_;
    while (next != stop) {
        do {
            state = table[state + classOf[*next++]];
        } while (state < firstEventful && next != stop);
        if (state < firstEventful) break;
        const EscapeAutomaton::Event& event = automaton.event(state);
        if (event.effect >= EscapeEffect::Match) return finish(event, fresh, next);
        note(event, carried_.size() + static_cast<std::size_t>(next - fresh));
        if (event.effect == EscapeEffect::PassBy) {
            carried_.insert(carried_.end(), fresh, next - 1);
            fresh = next;
            state_ = state;
            sink_.plain({next - 1, 1});
        }
    }
    state_ = state;
    carried_.insert(carried_.end(), fresh, next);
    if (carried_.size() < kLongestSequence) return next;
    return finishAt(held_.length > 0 ? held_ : Held{carried_.size(), 0}, next);
}

void EscapeRecognizer::note(const EscapeAutomaton::Event& event, std::size_t length) {
    for (std::uint32_t i = event.firstMark; i != event.lastMark; ++i) marks_[automaton_->marks[i]] = length;
    if (event.effect == EscapeEffect::Hold) held_ = {length, event.row};
    if (event.effect == EscapeEffect::HoldBefore) held_ = {length - 1, 0};
}

/// Ends the sequence as `event` says; `next` is after the byte that ended it.
const std::uint8_t* EscapeRecognizer::finish(const EscapeAutomaton::Event& event, const std::uint8_t* fresh,
                                             const std::uint8_t* next) {
    switch (event.effect) {
        case EscapeEffect::ToHeld:
            return finishAt(held_, fresh);
        case EscapeEffect::BreakOff:
        case EscapeEffect::GiveBack: {
            const std::size_t length = carried_.size() + static_cast<std::size_t>(next - fresh) - 1;
            const std::int16_t row = event.effect == EscapeEffect::GiveBack ? kPlain : std::int16_t{0};
            return finishAt({length, row}, fresh);
        }
        default:
            state_ = EscapeAutomaton::kGround;
            skipLineFeed_ = event.terminated && next[-1] == '\r';
            emit(event.row, whole(fresh, next));
            return next;
    }
}

/// Ends the sequence at `place`; the bytes after it are taken again.
const std::uint8_t* EscapeRecognizer::finishAt(Held place, const std::uint8_t* fresh) {
    state_ = EscapeAutomaton::kGround;
    if (place.length >= carried_.size()) {
        const std::uint8_t* const next = fresh + (place.length - carried_.size());
        emit(place.row, whole(fresh, next));
        return next;
    }
    const std::vector<std::uint8_t> again(carried_.begin() + static_cast<std::ptrdiff_t>(place.length),
                                          carried_.end());
    emit(place.row, Bytes(carried_).first(place.length));
    feed(again);
    return fresh;
}

EscapeRecognizer::Bytes EscapeRecognizer::whole(const std::uint8_t* fresh, const std::uint8_t* next) {
    if (carried_.empty()) return {fresh, next};
    carried_.insert(carried_.end(), fresh, next);
    return carried_;
}

void EscapeRecognizer::emit(std::int16_t row, Bytes bytes) {
    if (row == 0) return sink_.unmatched(bytes);
    if (row == kPlain) return sink_.plain(bytes);

    const EscapeAutomaton::Row layout = automaton_->rows[static_cast<std::size_t>(row)];
    const EscapeAutomaton::Field* const field = automaton_->fields.data() + layout.firstField;
    const auto* const text = reinterpret_cast<const char*>(bytes.data());
    std::size_t position = 0;
    for (std::uint32_t i = 0; i < layout.fields; ++i) {
        const std::size_t end = i + 1 < layout.fields ? marks_[field[i].mark] : bytes.size();
        position += field[i].gap;
        fields_[i] = {text + position, end - field[i].tail - position};
        position = end;
    }
    sink_.sequence(row, {fields_.data(), layout.fields});
}

}  // namespace kavrelon
