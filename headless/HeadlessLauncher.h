#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/modShellandWait.h"

namespace kavrelon {

/// Starts nothing: records what it was asked for, and answers what it was told to. A program whose name
/// begins with "missing", "denied" or "unknown" fails as such a one does: file not found (2), access denied
/// (5), no program for its kind of file (31).
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
    /// Called with each of them and its answer.
    std::function<void(const Start&, long)> onShellExecute = [](const Start&, long) {};
    std::function<void(const std::string&, long)> onStart = [](const std::string&, long) {};

    long shellExecute(const std::string& program, const std::string& parameters, const std::string& directory,
                      int showStyle) override;
    long startProgram(const std::string& commandLine, int showStyle) override;
    std::string failureText(long result) override { return "result " + std::to_string(result); }

  private:
    static long answer(std::string_view program, long otherwise);
};

}  // namespace kavrelon
