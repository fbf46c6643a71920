#pragma once

#include <string>
#include <vector>

#include "terminal/ProfileFile.h"

namespace kavrelon {

/// Initialisation files read and written with plain streams, by the platform's rules. For tools and tests on
/// systems that have no such files of their own.
class TextProfileFile final : public ProfileFile {
  public:
    /// The lines of a file, without their ends; none when it cannot be read.
    static std::vector<std::string> lines(const std::string& path);

    bool canRead(const std::string& path) override;
    std::string read(const std::string& path, const std::string& section, const std::string& key,
                     const std::string& fallback, int capacity) override;
    bool write(const std::string& path, const std::string& section, const std::string* key,
               const std::string* value) override;
};

}  // namespace kavrelon
