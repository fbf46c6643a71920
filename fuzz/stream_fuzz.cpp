// Received bytes never make the terminal send anything but the INIT command after a logon, and never break
// it.

#include "fuzz/Input.h"
#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessWindow.h"
#include "headless/TerminalSink.h"
#include "headless/TextProfileFile.h"
#include "plugin/clsTerminal.h"
#include "recognizer/EscapeRecognizer.h"

namespace {

using namespace kavrelon;

class WatchedParent final : public HostParent {
  public:
    void ParentSendData(const std::string&) override { fuzz::require(false, "no data is sent"); }
    void ParentWindowClosed() override { fuzz::require(false, "no stream closes the base window"); }
    void ParentSendBreak() override { fuzz::require(false, "no break is sent"); }
    std::string ParentConnectionProfile() override { return "fuzz"; }
    std::string ParentIniFile() override { return "/nonexistent/settings.ini"; }
    void ParentSendCommand(const std::string& Value) override {
        fuzz::require(Value == "INIT", "no command but INIT is sent");
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    TextProfileFile profiles;
    HeadlessPlatform platform(profiles);
    clsTerminal terminal(platform, "1.0.0");
    const auto parent = std::make_shared<WatchedParent>();
    terminal.IClientMain_SetClientParent(parent);
    terminal.IClientMain_InitializeClass();
    terminal.IClientMain_OnConnection();
    terminal.currentWindow().screen().PaintOn(input.control % 2 != 0);

    TerminalSink sink(terminal);
    EscapeRecognizer recognizer(fuzz::pluginTree(), sink);
    fuzz::feedInBlocks(input.stream, input.blockLength(), [&](fuzz::Bytes block) {
        recognizer.feed(block);
        terminal.IClientReceive_ReceiveEnd();
        const Screen& screen = terminal.currentWindow().screen();
        fuzz::require(screen.CursorX() >= 0 && screen.CursorX() <= screen.CharsPerLine() &&
                          screen.CursorY() >= 0 && screen.CursorY() < screen.LinesPerPage(),
                      "the cursor stays on the screen");
    });
    return 0;
}
