// How many calls of the platform drawing takes on a real window, how often a help box parses and lays out its
// text, and how much memory windows take. Calls are counted by replacing the functions that this program
// imports, so they are those of the terminal as it is.

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/win32/Goals.h"
#include "bench/win32/RealSession.h"
#include "gdi/PixelBitmap.h"
#include "headless/EscapeRows.h"
#include "support/win32/ReplacedImports.h"

// The linker sends the calls of these functions here, to be counted on their way.
extern "C" {
unsigned parses = 0;
unsigned measures = 0;
unsigned places = 0;
}
#define COUNT_CALLS(counter, symbol) \
    asm(".globl ___wrap_" symbol "\n___wrap_" symbol ":\n incl _" counter "\n jmp ___real_" symbol "\n")
COUNT_CALLS("parses",
            "_ZN8kavrelon12HTMLDocument11setDocumentESt17basic_string_viewIcSt11char_traitsIcEERKNS_"
            "16DocumentDefaultsE");
COUNT_CALLS("measures",
            "_ZN8kavrelon6Layout7measureERKNS_12HTMLDocumentERKNS_14LayoutDefaultsERNS_13PictureSourceERNS_"
            "6CanvasE");
COUNT_CALLS("places", "_ZN8kavrelon6Layout5placeERNS_12HTMLDocumentEii");

namespace {

using namespace kavrelon;
using namespace kavrelon::bench;

/// The calls since the last `take`. Text counts where it is drawn on a window, not on a context of memory.
struct Calls {
    int text = 0;
    int hiddenText = 0;
    int clippedText = 0;
    int updateRects = 0;
    int filesOpened = 0;
    int profileReads = 0;
} calls;

/// A function of the platform itself, also while the one that is imported is replaced.
template <class Function>
Function* real(const char* library, const char* name, Function*) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name)));
}
const auto realTextA = real("gdi32", "ExtTextOutA", &ExtTextOutA);
const auto realTextW = real("gdi32", "ExtTextOutW", &ExtTextOutW);
const auto realUpdateRect = real("user32", "GetUpdateRect", &GetUpdateRect);
const auto realCreateFile = real("kernel32", "CreateFileA", &CreateFileA);
const auto realProfileRead = real("kernel32", "GetPrivateProfileStringA", &GetPrivateProfileStringA);

void countText(HDC context, UINT options) {
    const HWND window = WindowFromDC(context);
    if (window == nullptr) return;
    ++calls.text;
    if (!IsWindowVisible(window)) ++calls.hiddenText;
    if ((options & ETO_CLIPPED) != 0) ++calls.clippedText;
}

BOOL WINAPI countedTextA(HDC context, int x, int y, UINT options, const RECT* box, LPCSTR text, UINT length,
                         const INT* advances) {
    countText(context, options);
    return realTextA(context, x, y, options, box, text, length, advances);
}

BOOL WINAPI countedTextW(HDC context, int x, int y, UINT options, const RECT* box, LPCWSTR text, UINT length,
                         const INT* advances) {
    countText(context, options);
    return realTextW(context, x, y, options, box, text, length, advances);
}

BOOL WINAPI countedUpdateRect(HWND window, LPRECT box, BOOL erase) {
    ++calls.updateRects;
    return realUpdateRect(window, box, erase);
}

HANDLE WINAPI countedCreateFile(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                                DWORD disposition, DWORD flags, HANDLE like) {
    ++calls.filesOpened;
    return realCreateFile(path, access, share, security, disposition, flags, like);
}

DWORD WINAPI countedProfileRead(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR value, DWORD size,
                                LPCSTR path) {
    ++calls.profileReads;
    return realProfileRead(section, key, fallback, value, size, path);
}

/// What a piece of work takes.
template <class Work>
Calls callsOf(Work work) {
    static const ReplacedImports replaced(
        GetModuleHandleA(nullptr),
        {{"ExtTextOutA", reinterpret_cast<void*>(&countedTextA)},
         {"ExtTextOutW", reinterpret_cast<void*>(&countedTextW)},
         {"GetUpdateRect", reinterpret_cast<void*>(&countedUpdateRect)},
         {"CreateFileA", reinterpret_cast<void*>(&countedCreateFile)},
         {"GetPrivateProfileStringA", reinterpret_cast<void*>(&countedProfileRead)}});
    calls = {};
    work();
    return calls;
}

constexpr ScreenExtent kExtent = kExtents[0];
constexpr int kCells = kExtent.columns * kExtent.lines;

void holdOpening(Goals& goals, RealSession& session) {
    const Calls opened = callsOf([&] { session.connect(); });
    goals.holdExactly("text calls that open a window", opened.text, kCells);
    const Calls pushed = callsOf([&] { session.sequence(rows::kNewScreen); });
    goals.holdExactly("text calls that push a screen", pushed.text, kCells);
    goals.hold("text calls before a window is shown", opened.hiddenText + pushed.hiddenText, 0);
    session.sequence(rows::kCloseScreen);
    Goals::tell("settings read while a window opens", opened.profileReads);
    Goals::tell("files opened while a window opens", opened.filesOpened);

    FunctionKeys keys;
    const Calls loaded = callsOf([&] { keys.LoadFunctionKeys(session.profiles(), session.settings()); });
    goals.holdExactly("looks for the settings file while the function keys load", loaded.filesOpened, 1);
}

void holdPainting(Goals& goals, RealSession& session) {
    int mostForRow = 0;
    for (const int code : {1, 4, 5}) {
        session.screen().term_setattr(std::string(1, static_cast<char>(code)));
        mostForRow = std::max(mostForRow, callsOf([&] { session.screen().ClearLine(); }).text);
    }
    goals.holdExactly("text calls of a blanked row, in any style", mostForRow, 1);

    session.screen().SetCursor(0, kExtent.lines - 1);
    const Calls scrolled = callsOf([&] {
        for (int line = 0; line < 100; ++line) session.form().WriteTerm('\n');
    });
    goals.holdExactly("GetUpdateRect for 100 lines without messages", scrolled.updateRects, 1);

    const Rect cells = session.screen().grid().cellBlock(70, 0, 3);
    const RECT strip{cells.left, 0, cells.right, 10'000};
    const Calls painted = callsOf([&] {
        InvalidateRect(RealSession::window(), &strip, FALSE);
        UpdateWindow(RealSession::window());
    });
    goals.holdExactly("text calls to paint an exposed strip of three columns", painted.text,
                      3 * kExtent.lines);
}

/// Whether a character puts a pixel outside its cell, by a look at the window.
bool reachesOut(HDC window, const Rect& cell, char ch) {
    const int width = 3 * cell.width();
    const int height = 3 * cell.height();
    const int advance = cell.width();
    PatBlt(window, cell.left - cell.width(), cell.top - cell.height(), width, height, BLACKNESS);
    realTextA(window, cell.left, cell.top, ETO_OPAQUE, nullptr, &ch, 1, &advance);
    PixelBitmap image({width, height});
    image.paint([&](HDC context) {
        BitBlt(context, 0, 0, width, height, window, cell.left - cell.width(), cell.top - cell.height(),
               SRCCOPY);
        PatBlt(context, cell.width(), cell.height(), cell.width(), cell.height(), BLACKNESS);
    });
    return std::ranges::any_of(image.pixels(), [](Pixel pixel) { return (pixel & 0xFFFFFF) != 0; });
}

/// In the fonts of the menu that have a fixed pitch, at some sizes, with and without smoothed edges.
void holdClipping(Goals& goals, RealSession& session) {
    int clipped = 0;
    int reaching = 0;
    int glyphs = 0;
    const auto look = [&] {
        const HDC context = GetDC(RealSession::window());
        TEXTMETRICA metrics{};
        GetTextMetricsA(context, &metrics);
        if ((metrics.tmPitchAndFamily & TMPF_FIXED_PITCH) != 0) return;
        session.screen().term_setattr("\x07");
        for (char ch = '!'; ch <= '~'; ++ch) {
            const auto byte = static_cast<std::uint8_t>(ch);
            session.screen().SetCursor(5, 5);
            clipped += callsOf([&] { session.form().WriteTerm(byte); }).clippedText;
            const COLORREF text = SetTextColor(context, RGB(255, 255, 255));
            const COLORREF back = SetBkColor(context, RGB(0, 0, 0));
            reaching += reachesOut(context, session.screen().grid().cellBlock(5, 5), ch) ? 1 : 0;
            SetTextColor(context, text);
            SetBkColor(context, back);
            ++glyphs;
        }
    };
    for (const BOOL smoothed : {TRUE, FALSE}) {
        SystemParametersInfoA(SPI_SETFONTSMOOTHING, static_cast<UINT>(smoothed), nullptr, 0);
        for (const Size outer : {Size{760, 420}, Size{1000, 600}, Size{1270, 790}}) {
            session.size(kExtent, outer);
            for (int entry = 1; entry <= 8; ++entry) {
                session.form().mnuFontStyle_Click(static_cast<std::int16_t>(entry));
                session.processMessages();
                look();
            }
        }
    }
    Goals::tell("glyphs drawn in fonts of the menu", glyphs);
    Goals::tell("of these, put a pixel outside their cell", reaching);
    goals.hold("of these, were drawn with a clip rectangle", clipped, reaching);
}

void holdHelpBoxes(Goals& goals, RealSession& session) {
    const auto reset = [] { parses = measures = places = 0; };
    reset();
    session.form().ShowHelpBox(1, 5, 11, 40, 6, "some words that fit");
    session.processMessages();
    goals.holdExactly("parses to open a help box", parses, 1);
    goals.holdExactly("layouts to open a help box", std::max(measures, places), 1);

    // By what a resize changed: the place alone, the width of the box, its font.
    struct Most {
        unsigned parses = 0;
        unsigned layouts = 0;
        int seen = 0;
    };
    Most most[3];
    HelpGrid before;
    reset();
    for (int width = 600; width < 900; width += 3) {
        SetWindowPos(RealSession::window(), nullptr, 0, 0, width, width * 3 / 5, SWP_NOZORDER);
        session.processMessages();
        const GridLayout& grid = session.screen().grid();
        const HelpGrid now{0, 0, grid.cellWidth(), grid.cellHeight(), {}, session.screen().ScreenFontSize()};
        const std::size_t kind = now == before ? 0 : now.fontSize == before.fontSize ? 1 : 2;
        before = now;
        most[kind] = {std::max(most[kind].parses, parses),
                      std::max(most[kind].layouts, std::max(measures, places)), most[kind].seen + 1};
        reset();
    }
    constexpr const char* kKinds[]{"place", "width", "font"};
    for (std::size_t kind = 0; kind < 3; ++kind) {
        if (most[kind].seen == 0) throw std::runtime_error("no resize changed the right part of the grid");
        const std::string change = std::string(" for another ") + kKinds[kind] + " of the grid, a box";
        goals.holdExactly("parses" + change, most[kind].parses, kind == 2 ? 1 : 0);
        goals.holdExactly("layouts" + change, most[kind].layouts, kind == 0 ? 0 : 1);
    }
    session.form().HideHelpBox(1);
}

double privateMegabytes() {
    std::size_t sum = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0; at += region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) sum += region.RegionSize;
    }
    return static_cast<double>(sum) / 0x1p20;
}

void holdMemory(Goals& goals) {
    RealSession session;
    session.connect();
    const double before = privateMegabytes();
    for (int i = 0; i < 100; ++i) session.sequence(rows::kNewScreen);
    goals.hold("megabytes of 100 more windows", privateMegabytes() - before, 11.7);
}

}  // namespace

int main() try {
    Goals goals;
    RealSession session;
    holdOpening(goals, session);
    holdMemory(goals);
    session.size(kExtent, {1000, 600});
    holdPainting(goals, session);
    holdHelpBoxes(goals, session);
    holdClipping(goals, session);
    return goals.status();
} catch (const std::exception& error) {
    std::fprintf(stderr, "paint_counts: %s\n", error.what());
    return 2;
}
