#include "samplehost/AboutText.h"

namespace kavrelon {

std::string aboutText(const AboutFacts& facts) {
    std::string text = "Kavrelon sample host " + facts.hostVersion + "\n";
    const auto tell = [&text](const std::string& what, const std::string& fact) {
        text += '\n' + what + ":\n" + fact + '\n';
    };
    if (!facts.libraryFile.empty()) {
        const std::string version = facts.libraryVersion.empty() ? "" : ' ' + facts.libraryVersion;
        tell("Library" + version, facts.libraryFile);
    }
    tell("Plug-in", facts.plugIn);
    tell("Settings file", facts.settingsFile);
    tell("Profile", facts.profile);
    if (facts.logFile) tell("Log", *facts.logFile);
    if (facts.recordFile) tell("Recording", *facts.recordFile);
    return text;
}

}  // namespace kavrelon
