#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "headless/HeadlessSession.h"
#include "support/RuntimeError.h"
#include "tools/ReplayScript.h"

namespace kavrelon {

/// A session that a script runs, and that prints a JSON line for each thing that happens: what the host is
/// told, what sounds or goes to the clipboard, what fails, and what the script asks for.
class ReplaySession : private HeadlessSession {
  public:
    /// Connects the plug-in, as a host does. `out` must outlive the session.
    ReplaySession(std::ostream& out, std::string iniFile);
    ~ReplaySession();

    /// Carries out one line. Throws ReplaySyntaxError for one that makes no sense.
    void run(const ReplayLine& line);

  private:
    class Operands;

    /// For a command that takes any number of operands.
    static constexpr int kAny = -1;
    struct Command {
        int operands = 0;
        void (*run)(ReplaySession&, Operands&) = nullptr;
    };
    static Command commandNamed(std::string_view name);

    void processSequence(Operands& operands);
    void moveMouse(Operands& operands);
    void print(const std::string& line);
    void printError(const RuntimeError& error);
    /// Runs one call of the plug-in and prints its error.
    template <class Call>
    void attempt(Call call);

    std::ostream& out_;
};

}  // namespace kavrelon
