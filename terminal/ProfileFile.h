#pragma once

#include <string>

namespace kavrelon {

/// Initialisation files as the platform reads and writes them: sections of "key=value" lines, all text
/// in single-byte characters, names compared without regard to case.
class ProfileFile {
  public:
    virtual ~ProfileFile() = default;

    /// Whether the file can be opened for reading. A folder is not a file.
    virtual bool canRead(const std::string& path) = 0;
    /// The value as stored (outer blanks and one pair of quotes are the file's, not the value's), cut to
    /// `capacity` - 1 characters; `fallback` when there is none.
    virtual std::string read(const std::string& path, const std::string& section, const std::string& key,
                             const std::string& fallback, int capacity) = 0;
    /// Stores the value, creating file and section as needed. Null removes the key; a null key removes the
    /// section. Returns false when nothing could be stored; the file is as before then.
    virtual bool write(const std::string& path, const std::string& section, const std::string* key,
                       const std::string* value) = 0;
};

}  // namespace kavrelon
