#pragma once

#include <cstdint>
#include <tuple>
#include <vector>

#include "recognizer/ByteClasses.h"
#include "recognizer/EscapeAutomaton.h"
#include "recognizer/EscapePattern.h"
#include "recognizer/SequenceSyntax.h"

namespace kavrelon {

/// The patterns of a table as one tree, and how a byte moves through it. Patterns that begin alike share the
/// edges of that beginning, and with them the marks of their fields.
class PatternTrie {
  public:
    /// A sequence that is on its way along an edge. `progress` is, for a numeric field, whether a digit was
    /// there; for a text field, how much of the delimiter was.
    struct Thread {
        std::uint32_t edge = 0;
        std::uint32_t progress = 0;
        bool operator<(const Thread& other) const {
            return std::tie(edge, progress) < std::tie(other.edge, other.progress);
        }
    };

    /// What becomes of a set of threads with a byte.
    struct Move {
        std::vector<Thread> threads;
        std::vector<std::uint32_t> marks;
        std::int16_t row = 0;  // a pattern that is complete with the byte
        bool terminated = false;
        bool dead() const { return threads.empty() && row == 0; }
    };

    explicit PatternTrie(const SequenceSyntax& syntax) : syntax_(syntax), nodes_(1) {}

    /// Adds a pattern for a row above those added before, and the row's fields to `automaton`.
    void add(std::int16_t row, const std::vector<PatternSymbol>& symbols, EscapeAutomaton& automaton);

    std::vector<Thread> rootThreads() const { return threadsAt(0); }
    Move advance(const std::vector<Thread>& threads, std::uint8_t byte) const;
    /// Whether the thread is in a field, or at its beginning.
    bool inField(const Thread& thread) const { return isField(edges_[thread.edge].symbol); }
    /// Two bytes that no edge tells apart have equal signatures.
    std::vector<bool> signature(std::uint8_t byte) const;
    std::uint32_t markCount() const { return static_cast<std::uint32_t>(edges_.size()); }

  private:
    struct Edge {
        PatternSymbol symbol = 0;
        std::vector<PatternSymbol> delimiter;  // what ends the field
        ByteSet text;                          // what a text field takes
        std::uint32_t to = 0;
        bool sameStep(const Edge& other) const {
            return symbol == other.symbol && delimiter == other.delimiter && text == other.text;
        }
    };

    struct Node {
        std::vector<std::uint32_t> edges;
        std::int16_t row = 0;
        std::vector<std::uint8_t> kinds;  // of the symbols that lead here: what is more specific sorts first
    };

    Edge edgeFor(const std::vector<PatternSymbol>& symbols, std::size_t position) const;
    SyntaxState familyOf(const std::vector<PatternSymbol>& symbols) const;
    ByteSet textBytes(const std::vector<PatternSymbol>& symbols, std::size_t position) const;
    std::uint32_t findOrAdd(std::uint32_t node, Edge edge);
    std::vector<Thread> threadsAt(std::uint32_t node) const;
    void arrive(std::uint32_t edge, std::uint32_t& best, Move& move) const;
    static std::size_t delimiterProgress(const Edge& edge, std::size_t progress, std::uint8_t byte);

    SequenceSyntax syntax_;
    std::vector<Edge> edges_;
    std::vector<Node> nodes_;
};

}  // namespace kavrelon
