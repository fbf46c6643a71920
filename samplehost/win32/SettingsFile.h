#pragma once

#include <string>

namespace kavrelon {

/// The full path of a settings file. (Without a folder the system would look for it in its own.)
std::string fullPath(const std::string& path);

/// The user's own settings file of this program. Its folder is there afterwards; the file appears when
/// something is first stored in it.
std::string defaultSettingsFile();

}  // namespace kavrelon
