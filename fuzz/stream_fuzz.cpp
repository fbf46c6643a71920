// Received bytes never make the terminal send anything but the INIT command after a logon, and never break
// it.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Input.h"
#include "headless/HeadlessSession.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kavrelon;
    const fuzz::Input input(data, size);
    HeadlessSession session;
    session.parent->onCall = [](std::string_view member, const std::string* value) {
        fuzz::require(member == "ParentSendCommand" && *value == "INIT",
                      "the host is told nothing but the INIT command");
    };
    session.connect();
    session.screen().PaintOn(input.control % 2 != 0);

    fuzz::feedInBlocks(input.stream, input.blockLength(), [&](fuzz::Bytes block) {
        session.feed(block);
        session.terminal->IClientReceive_ReceiveEnd();
        const Screen& screen = session.screen();
        fuzz::require(screen.CursorX() >= 0 && screen.CursorX() <= screen.CharsPerLine() &&
                          screen.CursorY() >= 0 && screen.CursorY() < screen.LinesPerPage(),
                      "the cursor stays on the screen");
    });
    return 0;
}
