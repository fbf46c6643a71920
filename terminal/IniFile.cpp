#include "terminal/IniFile.h"

#include "support/RuntimeError.h"
#include "terminal/ProfileFile.h"

namespace kavrelon::IniFile {
namespace {

constexpr int kResultCapacity = 100;

void store(ProfileFile& profiles, const std::string& file, const std::string& section, const std::string* key,
           const std::string* value, const char* source) {
    if (!profiles.write(file, section, key, value)) raise(RuntimeErrorNumber::PathFileAccess, source);
}

}  // namespace

void ReadIni(ProfileFile& profiles, const std::string& file, const std::string& section,
             const std::string& key, std::string& result, const std::string& fallback) {
    result = fallback;
    if (!profiles.canRead(file)) raise(RuntimeErrorNumber::FileNotFound, "IniFile::ReadIni");
    result = storedValue(profiles, file, section, key, fallback);
}

std::string storedValue(ProfileFile& profiles, const std::string& file, const std::string& section,
                        const std::string& key, const std::string& fallback) {
    std::string value = profiles.read(file, section, key, fallback, kResultCapacity);
    // Only leading blanks go: trailing ones were inside the quotes of the value.
    value.erase(0, value.find_first_not_of(' '));
    return value;
}

void WriteIni(ProfileFile& profiles, const std::string& file, const std::string& section,
              const std::string& key, const std::string& value) {
    // A file that says so already is left alone: it keeps its layout and its date.
    const std::string other = value + '.';
    const auto capacity = static_cast<int>(other.size() + 1);
    if (profiles.canRead(file) && profiles.read(file, section, key, other, capacity) == value) return;
    store(profiles, file, section, &key, &value, "IniFile::WriteIni");
}

void DeleteIni(ProfileFile& profiles, const std::string& file, const std::string& section,
               const std::string& key) {
    const std::string empty;
    store(profiles, file, section, &key, &empty, "IniFile::DeleteIni");
}

void DeleteIniAll(ProfileFile& profiles, const std::string& file, const std::string& section) {
    store(profiles, file, section, nullptr, nullptr, "IniFile::DeleteIniAll");
}

}  // namespace kavrelon::IniFile
