#include "recognizer/EscapePattern.h"

#include <charconv>
#include <optional>
#include <stdexcept>
#include <string>

#include "recognizer/ByteClasses.h"

namespace kavrelon {
namespace {

/// The symbol of a bracketed token, nothing when the text is no token of the notation.
std::optional<PatternSymbol> tokenSymbol(std::string_view token) {
    if (token == "{N}" || token == "{n}") return kNumberSymbol;
    if (token == "{X}" || token == "{x}") return kTextSymbol;
    if (token == "<ESC>") return kEscapeByte;
    if (token == "<term>" || token == "<TERM>") return kTerminatorSymbol;
    if (token.size() < 3 || token.front() != '<') return std::nullopt;

    const char* const last = token.data() + token.size() - 1;
    unsigned code = 0;
    const auto [stop, error] = std::from_chars(token.data() + 1, last, code);
    if (stop != last) return std::nullopt;
    if (error != std::errc() || code > 255) {
        throw std::invalid_argument("has a character code above 255: " + std::string(token));
    }
    return static_cast<PatternSymbol>(code);
}

void check(const std::vector<PatternSymbol>& symbols) {
    if (isField(symbols.front())) throw std::invalid_argument("begins with a field");
    if (symbols.front() == kTerminatorSymbol) throw std::invalid_argument("begins with <term>");
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const bool last = i + 1 == symbols.size();
        if (symbols[i] == kTerminatorSymbol && !last) {
            throw std::invalid_argument("has <term> before its end");
        }
        if (!isField(symbols[i])) continue;
        if (last || isField(symbols[i + 1])) {
            throw std::invalid_argument("has a field with nothing after it that ends it");
        }
        if (symbols[i] == kNumberSymbol && symbols[i + 1] < kTerminatorSymbol &&
            isDigit(static_cast<std::uint8_t>(symbols[i + 1]))) {
            throw std::invalid_argument("has a digit after a numeric field");
        }
    }
}

}  // namespace

std::vector<PatternSymbol> parsePattern(std::string_view text) {
    std::vector<PatternSymbol> symbols;
    while (!text.empty()) {
        std::size_t length = 1;
        PatternSymbol symbol = static_cast<std::uint8_t>(text.front());
        if (text.front() == '<' || text.front() == '{') {
            const std::size_t close = text.find(text.front() == '<' ? '>' : '}');
            const auto token = text.substr(0, close == std::string_view::npos ? 0 : close + 1);
            if (const auto known = tokenSymbol(token)) {
                symbol = *known;
                length = token.size();
            }
        }
        symbols.push_back(symbol);
        text.remove_prefix(length);
    }
    if (!symbols.empty()) check(symbols);
    return symbols;
}

}  // namespace kavrelon
