#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "headless/HeadlessSession.h"
#include "support/RuntimeError.h"
#include "tools/ReplayOperands.h"

namespace kavrelon {

class HeadlessHelpWindow;

/// A session that a script runs, and that prints a JSON line for each thing that happens: what the host and
/// the user are told, what starts, sounds or goes to the clipboard, what fails, and what the script asks for.
class ReplaySession : private HeadlessSession {
  public:
    /// Connects the plug-in, as a host does. `out` must outlive the session.
    ReplaySession(std::ostream& out, std::string iniFile);
    ~ReplaySession();

    /// Carries out one line. Throws ReplaySyntaxError for one that makes no sense.
    void run(const ReplayLine& line);

  private:
    /// What the commands of a script do.
    struct Commands;
    /// For a command that takes any number of operands.
    static constexpr int kAny = -1;
    struct Command {
        std::string_view name;
        int operands = 0;
        void (*run)(ReplaySession&, ReplayOperands&) = nullptr;
    };
    /// Null when there is no command of this name.
    static const Command* commandNamed(std::string_view name);

    void tellOfEvents();
    /// The window of a help box, null when its slot is empty.
    HeadlessHelpWindow* boxWindow(int slot) const;
    void print(const std::string& line);
    void printError(const RuntimeError& error);
    /// Runs one call of the plug-in and prints its error.
    template <class Call>
    void attempt(Call call) {
        try {
            call();
        } catch (const RuntimeError& error) {
            printError(error);
        }
    }

    std::ostream& out_;
};

}  // namespace kavrelon
