#pragma once

#include "terminal/modShellandWait.h"

namespace kavrelon {

/// Starts programs through the shell, or plainly.
class Win32Launcher final : public Launcher {
  public:
    long shellExecute(const std::string& program, const std::string& parameters, const std::string& directory,
                      int showStyle) override;
    long startProgram(const std::string& commandLine, int showStyle) override;
    std::string failureText(long result) override;
};

}  // namespace kavrelon
