#include "recognizer/PatternTrie.h"

#include <algorithm>

namespace kavrelon {
namespace {

constexpr std::size_t kLost = static_cast<std::size_t>(-1);

std::uint8_t kindOf(PatternSymbol symbol) {
    return symbol == kTextSymbol ? 2 : symbol == kNumberSymbol ? 1 : 0;
}

bool isQuote(PatternSymbol symbol) {
    return symbol == '"' || symbol == '\'';
}

}  // namespace

void PatternTrie::add(std::int16_t row, const std::vector<PatternSymbol>& symbols,
                      EscapeAutomaton& automaton) {
    std::uint32_t node = 0;
    EscapeAutomaton::Row layout{static_cast<std::uint32_t>(automaton.fields.size()), 0};
    std::uint32_t literals = 0;
    std::vector<std::uint8_t> kinds;
    for (std::size_t i = 0; i < symbols.size();) {
        const std::uint32_t edge = findOrAdd(node, edgeFor(symbols, i));
        const auto delimiter = static_cast<std::uint32_t>(edges_[edge].delimiter.size());
        if (isField(symbols[i])) {
            automaton.fields.push_back({literals, delimiter, edge});
            ++layout.fields;
            literals = 0;
        } else {
            ++literals;
        }
        kinds.push_back(kindOf(symbols[i]));
        kinds.insert(kinds.end(), delimiter, 0);
        i += 1 + delimiter;
        node = edges_[edge].to;
    }
    if (layout.fields > 0) automaton.fields.back().tail += literals;
    automaton.rows.resize(static_cast<std::size_t>(row) + 1);
    automaton.rows.back() = layout;
    automaton.mostFields = std::max(automaton.mostFields, layout.fields);
    if (nodes_[node].row == 0) {
        nodes_[node].row = row;
        nodes_[node].kinds = std::move(kinds);
    }
}

PatternTrie::Edge PatternTrie::edgeFor(const std::vector<PatternSymbol>& symbols,
                                       std::size_t position) const {
    Edge edge;
    edge.symbol = symbols[position];
    if (edge.symbol == kNumberSymbol) {
        edge.delimiter = {symbols[position + 1]};
    } else if (edge.symbol == kTextSymbol) {
        const auto first = symbols.begin() + static_cast<std::ptrdiff_t>(position) + 1;
        edge.delimiter.assign(first, std::find_if(first, symbols.end(), isField));
        edge.text = textBytes(symbols, position);
    }
    return edge;
}

SyntaxState PatternTrie::familyOf(const std::vector<PatternSymbol>& symbols) const {
    const auto opener = static_cast<std::uint8_t>(symbols[0]);
    if (opener != kEscapeByte) {
        return syntax_.isBracketing(opener) ? SyntaxState::Bracketed : SyntaxState::Done;
    }
    if (symbols[1] > 255) return SyntaxState::Done;
    const auto [verdict, next] =
        syntax_.step(SyntaxState::Escape, opener, static_cast<std::uint8_t>(symbols[1]));
    return verdict == SyntaxVerdict::PassesBy ? SyntaxState::Private : next;
}

ByteSet PatternTrie::textBytes(const std::vector<PatternSymbol>& symbols, std::size_t position) const {
    const auto opener = static_cast<std::uint8_t>(symbols[0]);
    const SyntaxState family = familyOf(symbols);
    const PatternSymbol before = symbols[position - 1];
    const bool quoted =
        family == SyntaxState::ControlSequence && isQuote(before) && symbols[position + 1] == before;
    ByteSet bytes;
    for (unsigned code = 0; code < bytes.size(); ++code) {
        const auto byte = static_cast<std::uint8_t>(code);
        if (quoted) {
            bytes.set(code, !isControl(byte));
        } else if (family == SyntaxState::Done) {
            bytes.set(code, !syntax_.interrupts(byte));
        } else {
            const SyntaxStep step = syntax_.step(family, opener, byte);
            bytes.set(code, step.verdict == SyntaxVerdict::Goes && step.next == family);
        }
    }
    return bytes;
}

std::uint32_t PatternTrie::findOrAdd(std::uint32_t node, Edge edge) {
    for (const std::uint32_t known : nodes_[node].edges) {
        if (edges_[known].sameStep(edge)) return known;
    }
    const auto added = static_cast<std::uint32_t>(edges_.size());
    edge.to = static_cast<std::uint32_t>(nodes_.size());
    edges_.push_back(std::move(edge));
    nodes_[node].edges.push_back(added);
    nodes_.emplace_back();
    return added;
}

std::vector<PatternTrie::Thread> PatternTrie::threadsAt(std::uint32_t node) const {
    std::vector<Thread> threads;
    for (const std::uint32_t edge : nodes_[node].edges) threads.push_back({edge, 0});
    return threads;
}

PatternTrie::Move PatternTrie::advance(const std::vector<Thread>& threads, std::uint8_t byte) const {
    Move move;
    std::uint32_t best = 0;
    for (const auto& [index, progress] : threads) {
        const Edge& edge = edges_[index];
        if (!isField(edge.symbol)) {
            if (symbolTakes(edge.symbol, byte)) arrive(index, best, move);
        } else if (edge.symbol == kNumberSymbol) {
            if (isDigit(byte)) {
                move.threads.push_back({index, 1});
            } else if (progress == 1 && symbolTakes(edge.delimiter[0], byte)) {
                arrive(index, best, move);
            }
        } else {
            const std::size_t reached = delimiterProgress(edge, progress, byte);
            if (reached == edge.delimiter.size()) {
                arrive(index, best, move);
            } else if (reached != kLost) {
                move.threads.push_back({index, static_cast<std::uint32_t>(reached)});
            }
        }
    }
    std::sort(move.threads.begin(), move.threads.end());
    return move;
}

void PatternTrie::arrive(std::uint32_t edge, std::uint32_t& best, Move& move) const {
    const Edge& way = edges_[edge];
    const Node& node = nodes_[way.to];
    for (const std::uint32_t next : node.edges) move.threads.push_back({next, 0});
    if (isField(way.symbol) && !node.edges.empty()) move.marks.push_back(edge);
    if (node.row == 0) return;
    const Node& rival = nodes_[best];
    if (move.row == 0 || node.kinds < rival.kinds || (node.kinds == rival.kinds && node.row < rival.row)) {
        best = way.to;
        move.row = node.row;
        const PatternSymbol last = isField(way.symbol) ? way.delimiter.back() : way.symbol;
        move.terminated = last == kTerminatorSymbol;
    }
}

/// How much of a text field's delimiter has been seen once `byte` follows `progress` characters of it: all of
/// it, the longest beginning that may still become it (the bytes before that beginning are text), or kLost.
std::size_t PatternTrie::delimiterProgress(const Edge& edge, std::size_t progress, std::uint8_t byte) {
    std::vector<std::uint8_t> seen(edge.delimiter.begin(),
                                   edge.delimiter.begin() + static_cast<std::ptrdiff_t>(progress));
    seen.push_back(byte);
    for (std::size_t length = seen.size();; --length) {
        const auto tail = seen.end() - static_cast<std::ptrdiff_t>(length);
        const bool text = std::all_of(seen.begin(), tail, [&](std::uint8_t b) { return edge.text.test(b); });
        if (text && std::equal(tail, seen.end(), edge.delimiter.begin(),
                               [](std::uint8_t b, PatternSymbol symbol) { return symbolTakes(symbol, b); })) {
            return length;
        }
        if (length == 0) return kLost;
    }
}

std::vector<bool> PatternTrie::signature(std::uint8_t byte) const {
    std::vector<bool> bits{isDigit(byte)};
    for (const Edge& edge : edges_) {
        bits.push_back(symbolTakes(edge.symbol, byte));
        bits.push_back(edge.text.test(byte));
        for (const PatternSymbol symbol : edge.delimiter) bits.push_back(symbolTakes(symbol, byte));
    }
    return bits;
}

}  // namespace kavrelon
