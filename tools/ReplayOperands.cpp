#include "tools/ReplayOperands.h"

#include "headless/NumberIn.h"

namespace kavrelon {

std::string ReplayOperands::word() {
    if (empty() || line_.words[next_].quoted) fail("a word is missing");
    return line_.words[next_++].text;
}

std::string ReplayOperands::string() {
    if (empty() || !line_.words[next_].quoted) fail("a string in double quotes is missing");
    return line_.words[next_++].text;
}

std::int16_t ReplayOperands::number() {
    const std::string text = word();
    const auto value = numberIn<std::int16_t>(text);
    if (!value) fail("\"" + text + "\" is no 16-bit number");
    return *value;
}

std::vector<std::uint8_t> ReplayOperands::bytes() {
    std::vector<std::uint8_t> bytes;
    while (!empty()) {
        const std::string text = word();
        const int byte = hexByte(text);
        if (byte < 0) fail("\"" + text + "\" is no two-digit hex byte");
        bytes.push_back(static_cast<std::uint8_t>(byte));
    }
    return bytes;
}

bool ReplayOperands::choice(const std::string& yes, const std::string& no) {
    const std::string text = word();
    if (text != yes && text != no) fail("\"" + text + "\" is neither " + yes + " nor " + no);
    return text == yes;
}

void ReplayOperands::expect(int count) const {
    const auto given = static_cast<int>(line_.words.size() - next_);
    if (given == count) return;
    fail("the command takes " + std::to_string(count) + " operands, not " + std::to_string(given));
}

}  // namespace kavrelon
