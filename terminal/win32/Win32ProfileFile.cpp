#include "terminal/win32/Win32ProfileFile.h"

#include <windows.h>

#include <algorithm>

namespace kavrelon {
namespace {

/// The platform looks for bare names in the Windows folder and takes an empty one for its own settings, so it
/// gets nothing but full paths. Empty when there is none.
std::string fullPath(const std::string& path) {
    if (path.empty()) return {};
    std::string full(GetFullPathNameA(path.c_str(), 0, nullptr, nullptr), '\0');
    full.resize(GetFullPathNameA(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

const char* textOrNull(const std::string* text) {
    return text == nullptr ? nullptr : text->c_str();
}

}  // namespace

bool Win32ProfileFile::canRead(const std::string& path) {
    const std::string full = fullPath(path);
    if (full.empty()) return false;
    // Opening a folder this way fails.
    const HANDLE file =
        CreateFileA(full.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return true;
}

std::string Win32ProfileFile::read(const std::string& path, const std::string& section,
                                   const std::string& key, const std::string& fallback, int capacity) {
    const std::string full = fullPath(path);
    if (full.empty()) return fallback;
    std::string value(static_cast<std::size_t>(std::max(capacity, 1)), '\0');
    value.resize(GetPrivateProfileStringA(section.c_str(), key.c_str(), fallback.c_str(), value.data(),
                                          static_cast<DWORD>(value.size()), full.c_str()));
    return value;
}

bool Win32ProfileFile::write(const std::string& path, const std::string& section, const std::string* key,
                             const std::string* value) {
    const std::string full = fullPath(path);
    return !full.empty() &&
           WritePrivateProfileStringA(section.c_str(), textOrNull(key), textOrNull(value), full.c_str());
}

}  // namespace kavrelon
