#pragma once

#include <string>

namespace kavrelon {

/// The full path of a file; the path itself where the system knows none.
std::string fullPath(const std::string& path);

/// The full path of a settings file that the user has named. (The system looks for a name without a folder in
/// its own folder.) Throws with a sentence for the user when its folder
/// does not exist: nothing could be stored.
std::string namedSettingsFile(const std::string& path);

/// Path of the user's settings file for this program. Creates its folder; the file itself appears when
/// something is first stored in it. Throws with a sentence for the user.
std::string defaultSettingsFile();

/// Puts the picture of the demo session where the plug-in looks for pictures: into the folder "Pictures" next
/// to a settings file. An existing file stays as it is. After a failure the session has no picture.
void storeDemoPicture(const std::string& settingsFile);

}  // namespace kavrelon
