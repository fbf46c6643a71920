#include "samplehost/win32/SettingsFile.h"

#include <windows.h>

#include <shlobj.h>

#include <array>
#include <stdexcept>

#include "samplehost/win32/SystemMessage.h"

namespace kavrelon {

std::string fullPath(const std::string& path) {
    std::array<char, MAX_PATH> full{};
    const DWORD length =
        GetFullPathNameA(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    return length > 0 && length < full.size() ? std::string(full.data(), length) : path;
}

std::string defaultSettingsFile() {
    std::array<char, MAX_PATH> folder{};
    if (SHGetFolderPathA(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                         folder.data()) != S_OK) {
        throw std::runtime_error("There is no folder for settings; name a settings file with --ini.");
    }
    const std::string own = std::string(folder.data()) + "\\Kavrelon Sample Host";
    if (!CreateDirectoryA(own.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
        throw std::runtime_error("The folder " + own +
                                 " could not be created: " + systemMessage(GetLastError()) + '.');
    }
    return own + "\\settings.ini";
}

}  // namespace kavrelon
