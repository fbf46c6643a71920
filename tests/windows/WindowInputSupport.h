#pragma once

#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {

inline void click(DWORD event) {
    mouse_event(event, 0, 0, 0, 0);
}

/// A key, or the right mouse button, goes down or up; 0 is none.
inline void key(int code, bool up) {
    if (code == VK_RBUTTON) return click(up ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_RIGHTDOWN);
    const bool grey = (code >= VK_PRIOR && code <= VK_DELETE) || code == VK_RMENU;
    const DWORD flags = (grey ? KEYEVENTF_EXTENDEDKEY : 0U) | (up ? KEYEVENTF_KEYUP : 0U);
    const UINT scanCode = MapVirtualKeyA(static_cast<UINT>(code), 0);
    if (code != 0) keybd_event(static_cast<BYTE>(code), static_cast<BYTE>(scanCode), flags, 0);
}

/// Keys that are pressed one after the other and let go in reverse order.
using Chord = std::vector<int>;

inline void press(const std::vector<Chord>& chords) {
    for (const Chord& chord : chords) {
        for (const int code : chord) key(code, false);
        for (auto code = chord.rbegin(); code != chord.rend(); ++code) key(*code, true);
    }
}

/// Types a character that no key of the layout has.
inline void typeCharacter(wchar_t character) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    for (const DWORD up : {0, KEYEVENTF_KEYUP}) {
        input.ki = {0, character, KEYEVENTF_UNICODE | up, 0, 0};
        SendInput(1, &input, sizeof input);
    }
}

/// Whether the mouse is at a pixel of a window's inner area; moves it there when it is not. Where the desktop
/// is slow to hear of a move it takes the next one back, so ask again.
inline std::function<bool()> mouseAt(HWND window, Point place) {
    POINT wanted{place.x, place.y};
    ClientToScreen(window, &wanted);
    return [wanted] {
        POINT now{};
        GetCursorPos(&now);
        if (now.x == wanted.x && now.y == wanted.y) return true;
        SetCursorPos(static_cast<int>(wanted.x), static_cast<int>(wanted.y));
        return false;
    };
}

inline bool inMenu() {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    return GetGUIThreadInfo(GetCurrentThreadId(), &state) && (state.flags & GUI_INMENUMODE) != 0;
}

/// The message box that is open; null when there is none.
inline HWND messageBox() {
    return FindWindowA("#32770", "Terminal");
}

/// Whether a message box is open, and its text.
inline bool readBox(std::string& text) {
    char buffer[4000] = "";
    text.assign(buffer, GetDlgItemTextA(messageBox(), 0xFFFF, buffer, sizeof buffer));
    return !text.empty();
}

/// The same, and answers it.
inline bool closedBox(std::string& text, int answer) {
    return readBox(text) && PostMessageA(messageBox(), WM_COMMAND, static_cast<WPARAM>(answer), 0) != FALSE;
}

/// A second program, in a folder whose name has a space.
class Companion {
  public:
    Companion() {
        char self[MAX_PATH] = "";
        GetModuleFileNameA(nullptr, self, MAX_PATH);
        std::filesystem::copy_file(std::filesystem::path(self).replace_filename("companion.exe"), program());
    }

    std::string folder() const { return folder_.path().string(); }
    std::string program() const { return folder_.file("companion.exe"); }
    std::string quoted() const { return '"' + program() + '"'; }
    void start(const std::string& task) const {
        std::string command = quoted() + ' ' + task;
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started{};
        ASSERT_TRUE(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                   &startup, &started));
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
    }
    /// Whether its answer is there, which is taken away then.
    bool tells(std::string& told) const {
        const std::string read = folder_.read("companion.exe.txt");
        // It is there whole or not at all, and never empty.
        if (!read.empty()) told = read;
        return std::filesystem::remove(program() + ".txt") && !read.empty();
    }

  private:
    TestFolder folder_{"kavrelon input test"};
};

/// A terminal that has the keyboard, and its user.
class WindowInput : public WindowTest {
  protected:
    WindowInput() { reopen(); }
    ~WindowInput() override {
        done = [] { return true; };
        EXPECT_EQ(std::exchange(menusLeftOpen, 0), 0);
    }

    void reopen() {
        form.reset();
        form.emplace(open());
        (*form)->SetCallback(&host);
        (*form)->TerminalOpen();
        SetForegroundWindow(form->window());
        pump();
        host.sent.clear();
    }
    /// Lets messages through until no more come. A menu that nothing closes is closed after a while.
    void pump() {
        const UINT_PTR timer = SetTimer(nullptr, 0, 3000, [](HWND, UINT, UINT_PTR, DWORD) CALLBACK {
            if (inMenu() && EndMenu()) ++menusLeftOpen;
        });
        for (int quiet = 0; quiet < 4; ++quiet) {
            Sleep(5);
            while (HIWORD(GetQueueStatus(QS_ALLINPUT)) != 0) platform.processMessages();
        }
        KillTimer(nullptr, timer);
    }
    /// The same with the message loop of a single-byte host.
    static void pumpSingleByte() {
        MSG message{};
        for (int quiet = 0; quiet < 4; ++quiet) {
            Sleep(5);
            for (; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE); quiet = 0) {
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
        }
    }
    bool pumpUntil(const std::function<bool()>& condition) {
        return kavrelon::pumpUntil(condition, 20000, [this] { pump(); });
    }
    /// Calls `attempt` from a timer until it is done, also while a menu or a message box is open.
    static void tryUntilDone(std::function<bool()> attempt) {
        done = std::move(attempt);
        SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR timer, DWORD) CALLBACK {
            if (done()) KillTimer(nullptr, timer);
        });
    }
    std::string sentBy(const std::vector<Chord>& chords) {
        host.sent.clear();
        press(chords);
        pump();
        return host.sent;
    }
    /// The text of the message box that `open` opens, which is answered with OK.
    std::string boxAfter(const std::function<void()>& open) {
        std::string text;
        tryUntilDone([&] { return closedBox(text, IDOK); });
        open();
        EXPECT_TRUE(pumpUntil([&] { return !text.empty(); }));
        return text;
    }
    std::string answerOf(const Companion& companion) {
        std::string told = "nothing";
        pumpUntil([&] { return companion.tells(told); });
        return told;
    }
    /// Puts exactly these characters on the clipboard, which keeps what it holds only when it is told to.
    template <class Text>
    void putOnClipboard(const Text& text, UINT format, bool keep = false) {
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() * sizeof(text[0]));
        std::memcpy(GlobalLock(memory), text.data(), text.size() * sizeof(text[0]));
        GlobalUnlock(memory);
        ASSERT_TRUE(OpenClipboard(form->window()) && (keep || EmptyClipboard()));
        ASSERT_TRUE(SetClipboardData(format, memory) && CloseClipboard());
    }
    void putOnClipboard(const std::string& text) { putOnClipboard(text + '\0', CF_TEXT); }
    /// Moves the mouse to a place, in pixels of the inner area.
    void moveTo(int x, int y) { EXPECT_TRUE(pumpUntil(mouseAt(form->window(), {x, y}))); }
    void moveToCell(int column, int row) {
        moveTo(form->cell(column, row).left + 2, form->cell(column, row).top + 2);
    }
    /// Ends the terminal's window and the form, as a host may at any time.
    void destroy() {
        (*form)->Unload();
        form.reset();
    }
    void mark(int row, int columns) {
        moveToCell(0, row);
        click(MOUSEEVENTF_LEFTDOWN);
        moveToCell(columns - 1, row);
        click(MOUSEEVENTF_LEFTUP);
        pump();
    }

    static inline int menusLeftOpen = 0;
    static inline std::function<bool()> done;
    InputLog host;
    std::optional<TestForm> form;
};

}  // namespace kavrelon
