// bare_window FILE: an empty program that shows a maximised window and plays a recorded stream on it with a
// bare terminal: what the start of a whole terminal, and a session on it, are compared with.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "bench/Streams.h"
#include "bench/win32/BareTerminal.h"
#include "gdi/GdiHandles.h"

namespace {

using namespace kavrelon;
using namespace kavrelon::bench;

constexpr const wchar_t* kClass = L"kavrelon.bareWindow";
constexpr ScreenExtent kExtent = kExtents[0];

bool paintDue = false;

LRESULT CALLBACK procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    if (id == WM_DESTROY) PostQuitMessage(0);
    // What is painted stays: it is painted only once.
    if (id == WM_ERASEBKGND) return 1;
    if (id == WM_PAINT) paintDue = true;
    return DefWindowProcW(window, id, wParam, lParam);
}

/// False once the window is closed.
bool letMessagesThrough(bool wait) {
    if (wait) WaitMessage();
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) return false;
        DispatchMessageW(&message);
    }
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    std::ifstream file(arguments[1], std::ios::binary);
    const std::string stream{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};

    WNDCLASSW description{};
    description.style = CS_OWNDC;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kClass;
    RegisterClassW(&description);
    const HWND window = CreateWindowW(kClass, L"", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, 0, CW_USEDEFAULT, 0,
                                      nullptr, nullptr, description.hInstance, nullptr);
    ShowWindow(window, SW_SHOWMAXIMIZED);
    while (!paintDue) letMessagesThrough(true);

    RECT inner{};
    GetClientRect(window, &inner);
    const Font font(CreateFontA(static_cast<int>(inner.bottom) / kExtent.lines, 0, 0, 0, FW_NORMAL, 0, 0, 0,
                                OEM_CHARSET, 0, 0, 0, FIXED_PITCH, "Liberation Mono"));
    const HDC context = GetDC(window);
    SelectObject(context, font.get());
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    const Size cell{static_cast<int>(metrics.tmAveCharWidth), static_cast<int>(metrics.tmHeight)};
    const Point corner{(static_cast<int>(inner.right) - kExtent.columns * cell.width) / 2,
                       (static_cast<int>(inner.bottom) - kExtent.lines * cell.height) / 2};
    BareTerminal terminal(context, corner, cell, {kExtent.columns, kExtent.lines});
    bool open = true;
    for (std::string_view rest = stream, block; open && !rest.empty(); rest.remove_prefix(block.size())) {
        block = BareTerminal::wholeBlock(rest);
        terminal.play(block);
        GdiFlush();
        open = letMessagesThrough(false);
    }
    while (open) open = letMessagesThrough(true);
}
