#include <string>
#include <vector>

#include "bench/Engines.h"
#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessWindow.h"
#include "headless/TerminalSink.h"
#include "headless/TextProfileFile.h"
#include "plugin/clsTerminal.h"
#include "recognizer/EscapeRecognizer.h"
#include "recognizer/EscapeTree.h"

namespace kavrelon::bench {
namespace {

class SilentParent final : public HostParent {
  public:
    void ParentSendData(const std::string&) override {}
    void ParentWindowClosed() override {}
    void ParentSendBreak() override {}
    std::string ParentConnectionProfile() override { return "bench"; }
    std::string ParentIniFile() override { return "/nonexistent/settings.ini"; }
    void ParentSendCommand(const std::string&) override {}
};

EscapeTree treeOf(const clsTerminal& terminal) {
    std::vector<std::string> patterns;
    for (std::int16_t row = 1; row <= terminal.IClientEscTree_EscTreeCount(); ++row) {
        patterns.push_back(terminal.IClientEscTree_EscTreeString(row));
    }
    return EscapeTree(patterns);
}

class OurEngine final : public Engine {
  public:
    OurEngine(ScreenExtent extent, bool paintOn) {
        terminal_.IClientMain_SetClientParent(std::make_shared<SilentParent>());
        terminal_.IClientMain_InitializeClass();
        terminal_.IClientMain_OnConnection();
        auto lines = static_cast<std::int16_t>(extent.lines);
        screen().ScreenSize(static_cast<std::int16_t>(extent.columns), lines);
        screen().PaintOn(paintOn);
    }

    void feed(std::span<const std::uint8_t> block) override { recognizer_.feed(block); }

    char shown(int column, int line) const override {
        const std::uint8_t code = screen().buffer().record(line + 1).Chars(column + 1);
        return code == 0 ? ' ' : static_cast<char>(code);
    }

  private:
    Screen& screen() const { return terminal_.currentWindow().screen(); }

    TextProfileFile profiles_;
    HeadlessPlatform platform_{profiles_};
    clsTerminal terminal_{platform_, "1.0.0"};
    TerminalSink sink_{terminal_};
    EscapeRecognizer recognizer_{treeOf(terminal_), sink_};
};

}  // namespace

std::unique_ptr<Engine> makeOurEngine(ScreenExtent extent, bool paintOn) {
    return std::make_unique<OurEngine>(extent, paintOn);
}

}  // namespace kavrelon::bench
