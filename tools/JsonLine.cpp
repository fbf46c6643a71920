#include "tools/JsonLine.h"

#include <charconv>
#include <iterator>

namespace kavrelon {
namespace {

void appendEscaped(std::string& out, unsigned char byte) {
    constexpr char kHex[] = "0123456789abcdef";
    if (byte == '"' || byte == '\\') {
        out += '\\';
        out += static_cast<char>(byte);
    } else if (byte >= 32 && byte <= 126) {
        out += static_cast<char>(byte);
    } else {
        out += "\\u00";
        out += kHex[byte >> 4];
        out += kHex[byte & 15];
    }
}

}  // namespace

void JsonLine::separate() {
    if (needsComma_) text_ += ',';
    needsComma_ = true;
}

void JsonLine::quote(std::string_view bytes) {
    text_ += '"';
    for (const char c : bytes) appendEscaped(text_, static_cast<unsigned char>(c));
    text_ += '"';
}

JsonLine& JsonLine::key(std::string_view name) {
    separate();
    quote(name);
    text_ += ':';
    needsComma_ = false;
    return *this;
}

JsonLine& JsonLine::value(std::string_view bytes) {
    separate();
    quote(bytes);
    return *this;
}

JsonLine& JsonLine::value(std::int64_t number) {
    separate();
    text_ += std::to_string(number);
    return *this;
}

JsonLine& JsonLine::value(bool flag) {
    separate();
    text_ += flag ? "true" : "false";
    return *this;
}

JsonLine& JsonLine::value(float number) {
    separate();
    constexpr int kDigits = 6;
    char digits[32];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::general, kDigits);
    text_.append(digits, end.ptr);
    return *this;
}

JsonLine& JsonLine::open(char bracket) {
    separate();
    text_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonLine& JsonLine::close(char bracket) {
    text_ += bracket;
    needsComma_ = true;
    return *this;
}

}  // namespace kavrelon
