#include "recognizer/EscapeTree.h"

#include <algorithm>
#include <array>
#include <bit>
#include <map>
#include <numeric>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

#include "recognizer/ByteClasses.h"
#include "recognizer/EscapeAutomaton.h"
#include "recognizer/EscapePattern.h"
#include "recognizer/PatternTrie.h"
#include "recognizer/SequenceSyntax.h"

namespace kavrelon {
namespace {

/// Far above what tables need; patterns with many text fields side by side could ask for any number.
constexpr std::size_t kMostStates = 1U << 16;

struct TableRow {
    std::int16_t number;
    std::vector<PatternSymbol> symbols;
};

std::vector<TableRow> parseTable(std::span<const std::string> patterns) {
    if (patterns.size() > INT16_MAX) throw std::invalid_argument("The table has more than 32767 rows.");
    std::vector<TableRow> rows;
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        if (patterns[i].empty()) continue;
        try {
            rows.push_back({static_cast<std::int16_t>(i + 1), parsePattern(patterns[i])});
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument("Row " + std::to_string(i + 1) + " of the table: the pattern " +
                                        patterns[i] + " " + error.what() + ".");
        }
    }
    return rows;
}

SequenceSyntax syntaxOf(const std::vector<TableRow>& rows) {
    ByteSet first;
    ByteSet bracketing;
    first.set(kEscapeByte);
    for (const TableRow& row : rows) {
        first.set(row.symbols.front());
        const bool brackets = row.symbols.size() > 1 && row.symbols.front() == row.symbols.back();
        if (brackets && row.symbols.front() != kEscapeByte) bracketing.set(row.symbols.front());
    }
    return {first, bracketing};
}

// How a table becomes a recogniser. Two machines read the bytes of a sequence at the same time. The trie of
// patterns knows which rows the bytes may still become: it holds a thread for each place in a pattern where
// they may be. The syntax knows where a sequence ends by the rules that all terminals share, and so where to
// stop skipping one that matches no row. As long as a thread is left the trie decides, and the syntax only
// keeps up; once none is left, the syntax goes on alone. Where a row is complete but a longer one is still
// possible, the place is held, and so it is where the syntax sees an end while a pattern goes on. If nothing
// longer comes of it, the recogniser falls back on the held place and takes the bytes after it again.
//
// Both machines together would cost much for each byte, so all states that the pair can reach are worked out
// here, once. What is left is a table: one look-up a byte, and something to do only in "eventful" states.
// Bytes that nothing tells apart share a column. Fields are not searched for: on the way, a state notes the
// offset after a field in a mark.

/// Turns the trie of patterns and the syntax into one table of states.
class Compiler {
  public:
    explicit Compiler(const std::vector<TableRow>& rows) : syntax_(syntaxOf(rows)), trie_(syntax_) {
        automaton_.rows.resize(1);
        for (const TableRow& row : rows) trie_.add(row.number, row.symbols, automaton_);
    }

    EscapeAutomaton compile() {
        classifyBytes();
        State ground;
        ground.threads = trie_.rootThreads();
        numberOf(ground);
        for (std::size_t i = 0; i < states_.size(); ++i) {
            if (ends(states_[i]->effect)) continue;
            std::vector<std::size_t> row(examples_.size());
            for (std::size_t c = 0; c < row.size(); ++c) row[c] = numberOf(follow(*states_[i], examples_[c]));
            transitions_.resize(states_.size());
            transitions_[i] = std::move(row);
        }
        transitions_.resize(states_.size());
        layOut();
        return std::move(automaton_);
    }

  private:
    using Effect = EscapeEffect;

    /// What decides how a sequence may go on, and what happened when this state was entered.
    struct State {
        std::vector<PatternTrie::Thread> threads;
        SyntaxState syntax = SyntaxState::Ground;
        std::uint8_t opener = 0;
        bool rowHeld = false;
        Effect effect = Effect::Note;
        bool terminated = false;
        std::int16_t row = 0;
        std::vector<std::uint32_t> marks;

        auto key() const {
            return std::tie(threads, syntax, opener, rowHeld, effect, terminated, row, marks);
        }
        bool operator<(const State& other) const { return key() < other.key(); }
    };

    static bool ends(Effect effect) { return effect >= Effect::Match; }
    static bool isEventful(const State& state) {
        return state.effect != Effect::Note || !state.marks.empty();
    }

    static State ending(Effect effect, std::int16_t row = 0, bool terminated = false) {
        State state;
        state.effect = effect;
        state.row = row;
        state.terminated = terminated;
        return state;
    }

    using SyntaxSignature = std::array<std::pair<SyntaxVerdict, SyntaxState>, kSyntaxStates>;

    void classifyBytes() {
        std::map<std::pair<std::vector<bool>, SyntaxSignature>, std::uint8_t> classes;
        for (unsigned code = 0; code < 256; ++code) {
            const auto byte = static_cast<std::uint8_t>(code);
            const auto [entry, added] = classes.try_emplace({trie_.signature(byte), syntaxSignature(byte)},
                                                            static_cast<std::uint8_t>(examples_.size()));
            if (added) examples_.push_back(byte);
            automaton_.classOf[code] = entry->second;
            automaton_.first[code] = syntax_.isFirst(byte);
            if (syntax_.isFirst(byte)) automaton_.firstBytes.push_back(byte);
        }
    }

    State follow(const State& from, std::uint8_t byte) const {
        PatternTrie::Move move = trie_.advance(from.threads, byte);
        const SyntaxStep step = syntax_.step(from.syntax, from.opener, byte);
        if (move.dead()) return followSyntax(from, step);
        if (move.threads.empty()) return ending(Effect::Match, move.row, move.terminated);

        State to;
        to.threads = std::move(move.threads);
        to.marks = std::move(move.marks);
        to.opener = from.syntax == SyntaxState::Ground ? byte : from.opener;
        to.rowHeld = from.rowHeld || move.row != 0;
        to.syntax = step.next;
        continueSyntax(from, step, to);
        if (move.row != 0) {
            to.effect = Effect::Hold;
            to.row = move.row;
        }
        return to;
    }

    /// Lets the syntax of a sequence keep up with a pattern that goes on, whatever the syntax says.
    void continueSyntax(const State& from, const SyntaxStep& step, State& to) const {
        const bool pastSyntax = from.syntax == SyntaxState::Prefix || from.syntax == SyntaxState::Done;
        auto hold = Effect::Note;
        switch (step.verdict) {
            case SyntaxVerdict::Goes:
                if (step.next == SyntaxState::StringEscape) hold = Effect::HoldBefore;
                break;
            case SyntaxVerdict::Ends:
            case SyntaxVerdict::Cancels:
                hold = Effect::Hold;
                break;
            case SyntaxVerdict::PassesBy:
                if (from.syntax == SyntaxState::Escape) to.syntax = SyntaxState::Private;
                break;
            case SyntaxVerdict::Breaks:
                if (pastSyntax) {
                    to.syntax = from.syntax;
                } else if (from.syntax != SyntaxState::StringEscape) {
                    hold = Effect::HoldBefore;
                }
                break;
        }
        if (!to.rowHeld) to.effect = hold;
        const bool inField = std::any_of(to.threads.begin(), to.threads.end(),
                                         [&](const auto& thread) { return trie_.inField(thread); });
        if (to.syntax == SyntaxState::Prefix && inField && syntax_.isBracketing(to.opener)) {
            to.syntax = SyntaxState::Bracketed;
        }
    }

    /// No pattern goes on: what the syntax alone makes of the byte.
    State followSyntax(const State& from, const SyntaxStep& step) const {
        const bool held = from.rowHeld || from.syntax == SyntaxState::Done;
        if (held) return ending(Effect::ToHeld);
        State to;
        switch (step.verdict) {
            case SyntaxVerdict::Goes:
                to.syntax = step.next;
                to.opener = from.opener;
                if (step.next == SyntaxState::StringEscape) to.effect = Effect::HoldBefore;
                return to;
            case SyntaxVerdict::Ends:
                return ending(Effect::Drop, 0, from.syntax == SyntaxState::Private);
            case SyntaxVerdict::Cancels:
                return ending(Effect::Drop);
            case SyntaxVerdict::PassesBy:
                to = from;
                to.effect = Effect::PassBy;
                to.marks.clear();
                to.row = 0;
                return to;
            case SyntaxVerdict::Breaks:
                break;
        }
        if (from.syntax == SyntaxState::StringEscape) return ending(Effect::ToHeld);
        return ending(from.syntax == SyntaxState::Prefix ? Effect::GiveBack : Effect::BreakOff);
    }

    /// Two bytes that mean the same in every state of the syntax have equal signatures.
    SyntaxSignature syntaxSignature(std::uint8_t byte) const {
        SyntaxSignature signature;
        for (std::size_t state = 0; state < signature.size(); ++state) {
            const auto [verdict, next] = syntax_.step(static_cast<SyntaxState>(state), 0, byte);
            signature[state] = {verdict, next};
        }
        return signature;
    }

    std::size_t numberOf(State state) {
        const auto [entry, added] = numbers_.try_emplace(std::move(state), states_.size());
        if (added) {
            if (states_.size() == kMostStates) {
                throw std::invalid_argument("The patterns of the table overlap in too many ways.");
            }
            states_.push_back(&entry->first);
        }
        return entry->second;
    }

    /// Gives the states their places: those without an effect first, those without a row last.
    void layOut() {
        std::vector<std::size_t> order(states_.size());
        std::iota(order.begin(), order.end(), 0);
        const auto rank = [this](std::size_t i) {
            return ends(states_[i]->effect) ? 2 : isEventful(*states_[i]) ? 1 : 0;
        };
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return rank(a) < rank(b); });
        std::vector<std::uint32_t> place(order.size());
        automaton_.rowShift = static_cast<unsigned>(std::bit_width(examples_.size() - 1));
        for (std::size_t i = 0; i < order.size(); ++i) {
            place[order[i]] = static_cast<std::uint32_t>(i << automaton_.rowShift);
        }
        automaton_.markCount = trie_.markCount();
        automaton_.firstEventful = static_cast<std::uint32_t>(order.size() << automaton_.rowShift);
        for (const std::size_t i : order) {
            if (rank(i) > 0) addEvent(*states_[i], place[i]);
            if (rank(i) == 2) continue;
            automaton_.next.resize(place[i] + (std::size_t{1} << automaton_.rowShift));
            std::transform(transitions_[i].begin(), transitions_[i].end(), automaton_.next.begin() + place[i],
                           [&](std::size_t to) { return place[to]; });
        }
    }

    void addEvent(const State& state, std::uint32_t place) {
        automaton_.firstEventful = std::min(automaton_.firstEventful, place);
        EscapeAutomaton::Event event{state.effect, state.terminated, state.row};
        event.firstMark = static_cast<std::uint32_t>(automaton_.marks.size());
        automaton_.marks.insert(automaton_.marks.end(), state.marks.begin(), state.marks.end());
        event.lastMark = static_cast<std::uint32_t>(automaton_.marks.size());
        automaton_.events.push_back(event);
    }

    SequenceSyntax syntax_;
    PatternTrie trie_;
    EscapeAutomaton automaton_;
    std::vector<std::uint8_t> examples_;  // one byte of each class
    std::map<State, std::size_t> numbers_;
    std::vector<const State*> states_;
    std::vector<std::vector<std::size_t>> transitions_;
};

}  // namespace

EscapeTree::EscapeTree(std::span<const std::string> patterns)
    : automaton_(std::make_shared<const EscapeAutomaton>(Compiler(parseTable(patterns)).compile())) {}

}  // namespace kavrelon
