#include "headless/HeadlessLauncher.h"

#include <utility>

namespace kavrelon {

long HeadlessLauncher::answer(std::string_view program, long otherwise) {
    constexpr std::pair<std::string_view, long> kFailing[] = {{"missing", 2}, {"denied", 5}, {"unknown", 31}};
    if (program.starts_with('"')) program.remove_prefix(1);
    for (const auto& [beginning, result] : kFailing) {
        if (program.starts_with(beginning)) return result;
    }
    return otherwise;
}

long HeadlessLauncher::shellExecute(const std::string& program, const std::string& parameters,
                                    const std::string& directory, int) {
    const long result = answer(program, shellResult);
    shellStarts.push_back({program, parameters, directory});
    onShellExecute({program, parameters, directory}, result);
    return result;
}

long HeadlessLauncher::startProgram(const std::string& commandLine, int) {
    const long result = answer(commandLine, task);
    plainStarts.push_back(commandLine);
    onStart(commandLine, result);
    return result;
}

}  // namespace kavrelon
