#include "support/Conversions.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>

#include "support/AsciiText.h"
#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

/// Takes the digits off the front of `text`; the value saturates above what any caller accepts.
std::int64_t takeDigits(std::string_view& text) {
    constexpr std::int64_t kSaturated = 1'000'000'000'000;
    std::int64_t value = 0;
    while (!text.empty() && isAsciiDigit(text.front())) {
        value = value < kSaturated / 10 ? value * 10 + (text.front() - '0') : kSaturated;
        text.remove_prefix(1);
    }
    return value;
}

/// Whether a number with this whole part and these decimals rounds up in magnitude.
bool roundsUp(std::int64_t whole, std::string_view fraction) {
    if (fraction.empty() || fraction.front() < '5') return false;
    const bool exactlyHalf =
        fraction.front() == '5' && fraction.find_first_not_of('0', 1) == std::string_view::npos;
    return !exactlyHalf || whole % 2 != 0;
}

/// A decimal number, taken apart.
struct Decimal {
    bool negative = false;
    std::int64_t whole = 0;  // saturated
    std::string_view fraction;
    std::string_view unsignedText;
};

/// Nothing when the text is no decimal number.
std::optional<Decimal> findDecimal(std::string_view text) {
    text = trimSpaces(text);
    Decimal decimal;
    decimal.negative = text.starts_with('-');
    if (decimal.negative || text.starts_with('+')) text.remove_prefix(1);
    decimal.unsignedText = text;

    decimal.whole = takeDigits(text);
    bool anyDigit = text.size() < decimal.unsignedText.size();
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        const std::string_view fraction = text;
        takeDigits(text);
        decimal.fraction = fraction.substr(0, fraction.size() - text.size());
        anyDigit = anyDigit || !decimal.fraction.empty();
    }
    if (!anyDigit || !text.empty()) return std::nullopt;
    return decimal;
}

Decimal parseDecimal(std::string_view text) {
    const std::optional<Decimal> decimal = findDecimal(text);
    if (!decimal) raise(RuntimeErrorNumber::TypeMismatch);
    return *decimal;
}

std::int64_t rounded(const Decimal& decimal) {
    const std::int64_t magnitude = decimal.whole + (roundsUp(decimal.whole, decimal.fraction) ? 1 : 0);
    return decimal.negative ? -magnitude : magnitude;
}

template <class Integer>
Integer narrow(std::int64_t value) {
    if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max()) {
        raise(RuntimeErrorNumber::Overflow);
    }
    return static_cast<Integer>(value);
}

}  // namespace

std::int16_t toInt16(std::string_view text) {
    // Called for every number that is received, and nearly all of them are one to four plain digits.
    if (!text.empty() && text.size() <= 4) {
        int value = 0;
        std::size_t i = 0;
        for (; i < text.size() && isAsciiDigit(text[i]); ++i) value = value * 10 + (text[i] - '0');
        if (i == text.size()) return static_cast<std::int16_t>(value);
    }
    return narrow<std::int16_t>(rounded(parseDecimal(text)));
}

std::int32_t toInt32(std::string_view text) {
    return narrow<std::int32_t>(rounded(parseDecimal(text)));
}

float toSingle(std::string_view text) {
    const Decimal decimal = parseDecimal(text);
    // As many digits as a word holds, times a power of ten: more than a float tells apart.
    constexpr std::uint64_t kFull = 1'000'000'000'000'000'000;
    std::uint64_t digits = 0;
    int exponent = 0;
    bool inFraction = false;
    for (const char c : decimal.unsignedText) {
        if (c == '.') {
            inFraction = true;
        } else if (digits < kFull) {
            digits = digits * 10 + static_cast<unsigned>(c - '0');
            exponent -= inFraction ? 1 : 0;
        } else {
            exponent += inFraction ? 0 : 1;
        }
    }
    long double power = 1;
    for (int i = std::abs(exponent); i > 0; --i) power *= 10;
    const auto whole = static_cast<long double>(digits);
    const long double value = exponent < 0 ? whole / power : whole * power;
    // From half a step above the largest float on.
    if (value >= 0x1.ffffffp127L) raise(RuntimeErrorNumber::Overflow);
    const auto single = static_cast<float>(value);
    return decimal.negative && single != 0 ? -single : single;
}

bool isNumeric(std::string_view text) noexcept {
    return findDecimal(text).has_value();
}

std::int16_t narrowToInt16(int value) {
    return narrow<std::int16_t>(value);
}

int roundHalfToEven(double value) noexcept {
    const double below = std::floor(value);
    const double part = value - below;
    const int whole = static_cast<int>(below);
    if (part != 0.5) return part < 0.5 ? whole : whole + 1;
    return whole % 2 == 0 ? whole : whole + 1;
}

}  // namespace kavrelon
