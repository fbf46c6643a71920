#include "support/win32/WideText.h"

#include <windows.h>

namespace kavrelon {

std::wstring toWide(std::string_view ansi) {
    const int bytes = static_cast<int>(ansi.size());
    const int length = bytes > 0 ? MultiByteToWideChar(CP_ACP, 0, ansi.data(), bytes, nullptr, 0) : 0;
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    if (length > 0) MultiByteToWideChar(CP_ACP, 0, ansi.data(), bytes, wide.data(), length);
    return wide;
}

}  // namespace kavrelon
