// screenpicture STREAM OUT.bmp [memory]: plays what a remote system sent to a terminal on a real window and
// keeps what that shows. With "memory" all of it comes from the memory bitmap, by one copy at the end.

#include <windows.h>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "headless/HeadlessSession.h"
#include "terminal/win32/Win32Platform.h"
#include "tools/win32/Page.h"

namespace kavrelon {
namespace {

constexpr int kFailed = 1;
constexpr int kMisused = 2;

int drawScreen(const std::string& path, const std::string& result, bool memory) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::cerr << path << ": cannot be opened\n";
        return kFailed;
    }
    const std::vector<std::uint8_t> stream{std::istreambuf_iterator<char>(in), {}};

    Win32Platform platform(GetModuleHandleA(nullptr));
    clsTerminal terminal(platform, HeadlessSession::kVersion);
    terminal.IClientMain_SetClientParent(std::make_shared<RecordingParent>());
    terminal.IClientMain_InitializeClass();
    terminal.IClientMain_OnConnection();
    terminal.currentWindow()->screen().UseMemoryDC(memory);
    TerminalSink sink(terminal);
    EscapeRecognizer(HeadlessSession::escapeTree(), sink).feed(stream);

    const HWND window = FindWindowA(WindowClass::kName, nullptr);
    RECT inner{};
    GetClientRect(window, &inner);
    const HDC shown = GetDC(window);
    if (memory) PatBlt(shown, 0, 0, inner.right, inner.bottom, WHITENESS);
    terminal.currentWindow()->Redrawscreen(memory);
    const Page page({static_cast<int>(inner.right), static_cast<int>(inner.bottom)});
    BitBlt(page.context(), 0, 0, inner.right, inner.bottom, shown, 0, 0, SRCCOPY);
    ReleaseDC(window, shown);
    if (page && page.write(result)) return 0;
    std::cerr << result << ": cannot be written\n";
    return kFailed;
}

}  // namespace
}  // namespace kavrelon

int main(int argc, char** argv) {
    const bool memory = argc == 4 && std::string(argv[3]) == "memory";
    if (argc != 3 && !memory) {
        std::cerr << "usage: screenpicture STREAM OUT.bmp [memory]\n";
        return kavrelon::kMisused;
    }
    return kavrelon::drawScreen(argv[1], argv[2], memory);
}
