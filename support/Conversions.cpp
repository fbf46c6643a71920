#include "support/Conversions.h"

#include <cmath>
#include <limits>

#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view trimSpaces(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Takes the digits off the front of `text`; the value saturates above what any caller accepts.
int takeDigits(std::string_view& text) {
    constexpr int kSaturated = 1'000'000;
    int value = 0;
    while (!text.empty() && isDigit(text.front())) {
        value = value < kSaturated / 10 ? value * 10 + (text.front() - '0') : kSaturated;
        text.remove_prefix(1);
    }
    return value;
}

/// Whether a number with this whole part and these digits behind its point rounds up in magnitude.
bool roundsUp(int whole, std::string_view fraction) {
    if (fraction.empty() || fraction.front() < '5') return false;
    const bool exactlyHalf =
        fraction.front() == '5' && fraction.find_first_not_of('0', 1) == std::string_view::npos;
    return !exactlyHalf || whole % 2 != 0;
}

int parseDecimal(std::string_view text) {
    text = trimSpaces(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);

    const auto before = text.size();
    int value = takeDigits(text);
    bool anyDigit = text.size() < before;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        const std::string_view fraction = text;
        takeDigits(text);
        const auto digits = fraction.size() - text.size();
        anyDigit = anyDigit || digits > 0;
        if (roundsUp(value, fraction.substr(0, digits))) ++value;
    }
    if (!anyDigit || !text.empty()) raise(RuntimeErrorNumber::TypeMismatch);
    return negative ? -value : value;
}

}  // namespace

std::int16_t toInt16(std::string_view text) {
    // Sequences carry one to four plain digits nearly always, and this stands on the receive path.
    if (!text.empty() && text.size() <= 4) {
        int value = 0;
        std::size_t i = 0;
        for (; i < text.size() && isDigit(text[i]); ++i) value = value * 10 + (text[i] - '0');
        if (i == text.size()) return static_cast<std::int16_t>(value);
    }
    return narrowToInt16(parseDecimal(text));
}

std::int16_t narrowToInt16(int value) {
    if (value < std::numeric_limits<std::int16_t>::min() ||
        value > std::numeric_limits<std::int16_t>::max()) {
        raise(RuntimeErrorNumber::Overflow);
    }
    return static_cast<std::int16_t>(value);
}

int roundHalfToEven(double value) noexcept {
    const double below = std::floor(value);
    const double part = value - below;
    const int whole = static_cast<int>(below);
    if (part != 0.5) return part < 0.5 ? whole : whole + 1;
    return whole % 2 == 0 ? whole : whole + 1;
}

}  // namespace kavrelon
