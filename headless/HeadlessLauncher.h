#pragma once

#include <string>
#include <vector>

#include "terminal/modShellandWait.h"

namespace kavrelon {

/// Starts nothing: records what it was asked for, and answers what it was told to.
class HeadlessLauncher final : public Launcher {
  public:
    struct Start {
        std::string program;
        std::string parameters;
        std::string directory;
        bool operator==(const Start&) const = default;
    };
    /// What `shellExecute` and `startProgram` answer.
    long shellResult = 42;
    long task = 4711;
    /// What they were asked to start, oldest first.
    std::vector<Start> shellStarts;
    std::vector<std::string> plainStarts;

    long shellExecute(const std::string& program, const std::string& parameters, const std::string& directory,
                      int showStyle) override;
    long startProgram(const std::string& commandLine, int showStyle) override;
    std::string failureText(long result) override { return "result " + std::to_string(result); }
};

}  // namespace kavrelon
