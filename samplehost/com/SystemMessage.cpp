#include "samplehost/com/SystemMessage.h"

#include <array>
#include <cstdio>

namespace kavrelon {

std::string errorCode(DWORD code) {
    std::array<char, 11> digits{};
    std::snprintf(digits.data(), digits.size(), "0x%08lX", static_cast<unsigned long>(code));
    return digits.data();
}

std::string systemMessage(DWORD code) {
    std::array<char, 512> text{};
    const DWORD length = FormatMessageA(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
        code, 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    std::string message(text.data(), length);
    message.erase(message.find_last_not_of(" .\r\n") + 1);
    return message.empty() ? "error " + errorCode(code) : message;
}

}  // namespace kavrelon
