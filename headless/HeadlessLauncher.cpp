#include "headless/HeadlessLauncher.h"

namespace kavrelon {

long HeadlessLauncher::shellExecute(const std::string& program, const std::string& parameters,
                                    const std::string& directory, int) {
    shellStarts.push_back({program, parameters, directory});
    return shellResult;
}

long HeadlessLauncher::startProgram(const std::string& commandLine, int) {
    plainStarts.push_back(commandLine);
    return task;
}

}  // namespace kavrelon
