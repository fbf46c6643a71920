#include "samplehost/win32/SettingsFile.h"

#include <windows.h>

#include <shlobj.h>

#include <array>
#include <fstream>
#include <stdexcept>

#include "samplehost/com/SystemMessage.h"

namespace kavrelon {
namespace {

constexpr WORD kRawData = 10;  // RT_RCDATA, whose macro depends on the character width
// The resource with the demo session's picture; samplehost.rc has the same number.
constexpr WORD kDemoPicture = 101;

}  // namespace

std::string fullPath(const std::string& path) {
    std::array<char, MAX_PATH> full{};
    const DWORD length =
        GetFullPathNameA(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    return length > 0 && length < full.size() ? std::string(full.data(), length) : path;
}

std::string namedSettingsFile(const std::string& path) {
    std::string full = fullPath(path);
    const std::string folder = full.substr(0, full.find_last_of("\\/") + 1);
    const DWORD attributes = GetFileAttributesA(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        throw std::runtime_error("The settings file " + path + " cannot be kept: there is no folder " +
                                 folder + '.');
    return full;
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

void storeDemoPicture(const std::string& settingsFile) {
    const HRSRC resource = FindResourceA(nullptr, MAKEINTRESOURCEA(kDemoPicture), MAKEINTRESOURCEA(kRawData));
    if (resource == nullptr) return;
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(nullptr, resource)));
    const std::string folder = settingsFile.substr(0, settingsFile.find_last_of("\\/") + 1) + "Pictures";
    CreateDirectoryA(folder.c_str(), nullptr);
    const std::string path = folder + "\\harbour.png";
    if (bytes == nullptr || GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES) return;
    std::ofstream(path, std::ios::binary)
        .write(bytes, static_cast<std::streamsize>(SizeofResource(nullptr, resource)));
}

}  // namespace kavrelon
