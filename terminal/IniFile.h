#pragma once

#include <string>

namespace kavrelon {

class ProfileFile;

/// The settings file, by section and key. Errors carry the routine's name as their source.
namespace IniFile {

/// The stored value, at most 99 characters; `fallback` when there is none. When the file cannot be read,
/// `result` is left as `fallback` and FileNotFound is raised.
void ReadIni(ProfileFile& profiles, const std::string& file, const std::string& section,
             const std::string& key, std::string& result, const std::string& fallback);

/// The same value, of a file that is known to be readable: for who reads many and looks for the file once.
std::string storedValue(ProfileFile& profiles, const std::string& file, const std::string& section,
                        const std::string& key, const std::string& fallback);

/// Stores a value that is not in the file already, creating the file as needed. Raises PathFileAccess when it
/// cannot be stored.
void WriteIni(ProfileFile& profiles, const std::string& file, const std::string& section,
              const std::string& key, const std::string& value);

/// Empties a value; the key stays. Readers treat an empty value like a missing one.
void DeleteIni(ProfileFile& profiles, const std::string& file, const std::string& section,
               const std::string& key);

/// Removes a whole section.
void DeleteIniAll(ProfileFile& profiles, const std::string& file, const std::string& section);

}  // namespace IniFile
}  // namespace kavrelon
