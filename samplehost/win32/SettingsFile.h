#pragma once

#include <string>

namespace kavrelon {

/// The full path of a settings file. (Without a folder the system would look for it in its own.)
std::string fullPath(const std::string& path);

/// The user's own settings file of this program. Its folder is there afterwards; the file appears when
/// something is first stored in it.
std::string defaultSettingsFile();

/// Puts the picture of the demo session where the plug-in looks for pictures: into the folder "Pictures"
/// beside a settings file. A file of its name stays as it is. What fails leaves the session without its
/// picture.
void storeDemoPicture(const std::string& settingsFile);

}  // namespace kavrelon
