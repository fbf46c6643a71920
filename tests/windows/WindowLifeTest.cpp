#include "terminal/BellLimit.h"
#include "terminal/FontMenu.h"
#include "terminal/win32/Bell.h"
#include "terminal/win32/Win32ProfileFile.h"
#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {
namespace {

/// A window procedure that posts a message for each that it gets.
LRESULT CALLBACK flood(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_APP) PostMessageA(window, WM_APP, 0, 0);
    return DefWindowProcA(window, message, wParam, lParam);
}

using WindowLife = WindowTest;

TEST_F(WindowLife, HoweverItIsClosedTheFormHearsItOnceAndIgnoresTheRest) {
    const std::vector<std::function<void(HWND)>> ways{
        [](HWND window) { PostMessageA(window, WM_CLOSE, 0, 0); },
        [](HWND window) { PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0); },
        [](HWND window) { SendMessageA(window, WM_ENDSESSION, TRUE, 0); },
        [](HWND window) { DestroyWindow(window); },
    };
    for (std::size_t way = 0; way < ways.size(); ++way) {
        InputLog owner;
        const TestForm form = open();
        form->SetCallback(&owner);
        form->TerminalOpen();
        ways[way](form.window());
        platform.processMessages();
        EXPECT_FALSE(form->isLoaded()) << way;
        EXPECT_FALSE(IsWindow(form.window())) << way;
        form->WriteTerm('x');
        form->mnuFontStyle_Click(3);
        form->Unload();
        EXPECT_EQ(owner.sent, "<closed>") << way;
    }
}

TEST_F(WindowLife, AWindowDestroyedFromOutsideIgnoresCalls) {
    const auto window = platform.createWindow({});
    window->show();
    DestroyWindow(FindWindowA(WindowClass::kName, nullptr));
    const std::uint8_t text = 'x';
    window->setPen({kWhite, kBlack, true, true});
    window->drawText({0, 0}, {&text, 1});
    window->scrollGrid({0, 0, 10, 10});
    EXPECT_FALSE(window->drawable() || window->beginMemory());
    window->keepBlock({0, 0, 10, 10});
    window->setFont(fontMenuEntry(2).font);
    window->setFontSize(20);
    window->enableTimer(TermTimer::cursor_timer, true);
    window->setState(WindowState::Maximised);
    window->requestInnerSize({100, 100});
    window->checkFontEntry(2);
    EXPECT_EQ(window->innerSize(), Size{});
    EXPECT_EQ(countTerminalWindows(), 0);
}

TEST_F(WindowLife, AHundredAndOneWindowsLeaveNothingBehind) {
    const auto round = [&] {
        std::vector<std::shared_ptr<frmTerm>> forms;
        for (int i = 0; i < 101; ++i) {
            forms.push_back(frmTerm::load(platform));
            if (i % 20 == 0) forms.back()->DisplayTerminalWindows();
            forms.back()->screen().UseMemoryDC(i % 20 == 0);
            for (const int code : {Rendition::kBold, Rendition::kUnderline, Rendition::kBlink}) {
                forms.back()->screen().term_setattr(std::string(1, static_cast<char>(code)));
                for (const char byte : {'a', '\xDB', '\xE1', '\n'}) {
                    forms.back()->WriteTerm(static_cast<std::uint8_t>(byte));
                }
            }
        }
        EXPECT_EQ(countTerminalWindows(), 101);
    };
    round();
    round();
    expectNothingLeftBehind(round);
    EXPECT_EQ(countTerminalWindows(), 0);
}

TEST(WindowClassLife, TheClassGoesWithItsLastPlatform) {
    const HINSTANCE module = GetModuleHandleA(nullptr);
    {
        Win32Platform first(module);
        { Win32Platform second(module); }
        EXPECT_NE(first.createWindow({}), nullptr);
    }
    WNDCLASSEXA found{};
    found.cbSize = sizeof found;
    EXPECT_FALSE(GetClassInfoExA(module, WindowClass::kName, &found));
}

TEST_F(WindowLife, TheActiveWindowBlinksItsCursor) {
    const TestForm first = open();
    const TestForm second = open();
    first->MakeActive();
    EXPECT_TRUE(first->TermActive());
    EXPECT_FALSE(second->TermActive());
    const auto drawn = [&] { return first->screen().cursorDrawn(); };
    first->TerminalOpen();
    EXPECT_TRUE(pumpUntil(drawn));
    EXPECT_TRUE(pumpUntil(std::not_fn(drawn)));
    EXPECT_TRUE(pumpUntil(drawn));
    first->TurnOnOffCursor(false);
    EXPECT_FALSE(pumpUntil(std::not_fn(drawn), 700));
}

TEST(BellLife, TheTonesDoNotSilenceEachOther) {
    Sleep(BellLimit::kQuietMilliseconds);
    EXPECT_TRUE(soundBell(Tone::Complaint));
    EXPECT_TRUE(soundBell(Tone::Bell));
    Sleep(2 * kToneSounds[0].milliseconds);
    EXPECT_FALSE(soundBell(Tone::Bell)) << "within a second";
}

TEST_F(WindowLife, LettingMessagesThroughEndsAndKeepsARequestToQuit) {
    const HWND window = CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&flood));
    PostMessageA(window, WM_APP, 0, 0);
    const DWORD start = GetTickCount();
    platform.processMessages();
    EXPECT_LT(GetTickCount() - start, 5000U);
    DestroyWindow(window);

    PostQuitMessage(7);
    platform.processMessages();
    platform.processMessages();
    MSG message{};
    ASSERT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(WindowLife, SettingsKeepToTheFileThatIsMeant) {
    Win32ProfileFile file;
    const std::string key = "key";
    const std::string value(120, 'v');
    EXPECT_TRUE(file.canRead(settings));
    EXPECT_TRUE(file.write(settings, "section", &key, &value));
    EXPECT_EQ(file.read(settings, "section", "KEY", "", 100), value.substr(0, 99));
    EXPECT_TRUE(file.write(settings, "section", &key, nullptr));
    EXPECT_EQ(file.read(settings, "section", "key", "fallback", 100), "fallback");
    for (const std::string& path : {std::string(), folder.path().string()}) {
        EXPECT_FALSE(file.canRead(path));
        EXPECT_FALSE(file.write(path, "section", &key, &value));
    }
    char before[MAX_PATH] = "";
    GetCurrentDirectoryA(MAX_PATH, before);
    SetCurrentDirectoryA(folder.path().string().c_str());
    EXPECT_TRUE(file.write("settings.ini", "section", &key, &key));
    SetCurrentDirectoryA(before);
    EXPECT_EQ(file.read(settings, "section", "key", "", 100), key);
}

}  // namespace
}  // namespace kavrelon
