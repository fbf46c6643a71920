#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessWindow.h"
#include "headless/TerminalSink.h"
#include "headless/TextProfileFile.h"
#include "plugin/clsTerminal.h"
#include "recognizer/EscapeRecognizer.h"
#include "tools/ReplayScript.h"

namespace kavrelon {

/// A scripted session: the plug-in on headless windows with a host that prints what it is told, one JSON line
/// for each thing that happens.
class ReplaySession {
  public:
    /// Connects the plug-in, as a host does. `out` must outlive the session.
    ReplaySession(std::ostream& out, std::string iniFile);
    ~ReplaySession();

    /// Carries out one line. Raises ReplaySyntaxError for one that makes no sense.
    void run(const ReplayLine& line);

  private:
    class Host;
    class Sink;
    class Operands;

    /// For a command that takes any number of operands.
    static constexpr int kAny = -1;
    struct Command {
        int operands = 0;
        void (*run)(ReplaySession&, Operands&) = nullptr;
    };
    static Command commandNamed(std::string_view name);

    frmTerm& window() const { return terminal_.currentWindow(); }
    HeadlessWindow& shownWindow() const;
    void processSequence(Operands& operands);
    void moveMouse(Operands& operands);
    void print(const std::string& line);
    void printError(const RuntimeError& error);
    /// Runs one call of the plug-in and prints its error.
    template <class Call>
    void attempt(Call call);

    std::ostream& out_;
    TextProfileFile profiles_;
    HeadlessPlatform platform_{profiles_};
    std::shared_ptr<Host> host_;
    clsTerminal terminal_;
    std::unique_ptr<Sink> sink_;
    EscapeRecognizer recognizer_;
};

}  // namespace kavrelon
