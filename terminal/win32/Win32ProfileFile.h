#pragma once

#include "terminal/ProfileFile.h"

namespace kavrelon {

/// Initialisation files through the platform's own calls. Relative paths mean the current directory.
class Win32ProfileFile final : public ProfileFile {
  public:
    bool canRead(const std::string& path) override;
    std::string read(const std::string& path, const std::string& section, const std::string& key,
                     const std::string& fallback, int capacity) override;
    bool write(const std::string& path, const std::string& section, const std::string* key,
               const std::string* value) override;
};

}  // namespace kavrelon
