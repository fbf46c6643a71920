#include "tests/windows/SampleHostRun.h"
// After the socket headers, which must come before all others of Windows.
#include <objbase.h>

#include <gdiplus.h>
#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "samplehost/win32/Connection.h"
#include "samplehost/win32/HelpMenu.h"
#include "support/com/ComText.h"
#include "terminal/EntryList.h"
#include "terminal/MenuItems.h"
#include "tests/windows/ProcessUsage.h"
#include "tests/windows/TestFolder.h"

namespace kavrelon {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

/// The colours of a picture, as 0xRRGGBB; empty when it is no picture or too small for a window.
std::set<unsigned> coloursOf(const std::string& path) {
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token, &input, nullptr);
    std::set<unsigned> colours;
    {
        Gdiplus::Bitmap picture(toBstr(path).get());
        const bool large = picture.GetWidth() > 400 && picture.GetHeight() > 300;
        const INT pixels = large ? static_cast<INT>(picture.GetWidth() * picture.GetHeight()) : 0;
        for (INT at = 0; at < pixels; at += 3) {
            const auto [y, x] = std::div(at, static_cast<INT>(picture.GetWidth()));
            Gdiplus::Color pixel;
            picture.GetPixel(x, y, &pixel);
            colours.insert(pixel.GetValue() & 0xFFFFFFU);
        }
    }
    Gdiplus::GdiplusShutdown(token);
    return colours;
}

/// A picture file of one pixel, given as blue, green and red.
std::string bitmapOf(const char* pixel) {
    return std::string("BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0", 30) +
           std::string(24, '\0') + std::string(pixel, 3) + '\0';
}

class SampleHostTest : public testing::Test {
  protected:
    /// Options that leave the user's own settings alone.
    std::string own() const { return "--ini \"" + folder.file("host.ini") + "\" "; }
    std::string log() const { return "--log \"" + folder.file("host.log") + "\" "; }
    std::string snapshot(int after) const {
        return "--snapshot \"" + folder.file("host.png") + "\" --after " + std::to_string(after) + ' ';
    }

    TestFolder folder{"samplehost_test"};
};

TEST_F(SampleHostTest, SaysInASentenceWhatIsWrong) {
    const std::string refused = TinyServer().address();
    const std::string missing = folder.file("missing");
    const struct {
        std::string arguments;
        int status;
        std::string sentence;
    } runs[] = {
        {"--help", 0, "--connect"},
        {"--colour", 2, "--colour"},
        {"--connect " + refused, 1, "There is no connection to " + refused + ": it was refused."},
        {"--play " + missing, 1, missing + " could not be read."},
        {"--help-viewer " + missing, 1, missing + " could not be read."},
        {"--library " + missing, 1, missing + " could not be loaded"},
        {"--library " + HostRun::nextToThisProgram("samplehost.exe"), 1, "has no COM classes."},
        {"--log " + missing + "\\x.log", 1, "could not be written."},
        {"--ini " + missing + "\\x.ini", 1, "there is no folder " + missing + "\\."},
        {own() + "--snapshot " + missing + "\\x.png --after 0", 1, "could not be written."},
        {own() + "--snapshot " + missing + "\\x.txt --every 9", 1, "x.txt could not be written."},
    };
    for (const auto& run : runs) {
        SCOPED_TRACE(run.arguments);
        const HostRun host(run.arguments);
        EXPECT_EQ(host.exitStatus(), run.status);
        EXPECT_THAT(host.printed(), HasSubstr(run.sentence));
    }
}

TEST_F(SampleHostTest, ShowsTheDemoWhereverTheLibraryComesFrom) {
    for (const std::string& way : {std::string(), std::string("--registered"),
                                   "--library \"" + HostRun::nextToThisProgram("kavrelon.dll") + '"'}) {
        SCOPED_TRACE(way);
        const HostRun host(own() + snapshot(700) + way);
        EXPECT_EQ(host.exitStatus(), 0);
        EXPECT_EQ(host.printed(), "");
        // The menu: text, frame and banner, highlight, clock.
        EXPECT_THAT(coloursOf(folder.file("host.png")),
                    IsSupersetOf({0x000000U, 0xFFFFFFU, 0x00FFFFU, 0x009999U, 0xFFFF00U, 0x00FF00U}));
        std::filesystem::remove(folder.file("host.png"));
    }
    EXPECT_THAT(folder.read("host.ini"), HasSubstr("FontStyle=1"));
}

TEST_F(SampleHostTest, ShowsADocumentWithThePicturesNextToIt) {
    folder.write("beside.bmp", bitmapOf("\x40\x80\xC0"));
    folder.write("elsewhere.bmp", bitmapOf("\x20\x40\x60"));
    folder.write("help.html", "<IMG SRC=beside.bmp WIDTH=50 HEIGHT=50><IMG SRC='" +
                                  folder.file("elsewhere.bmp") +
                                  "' WIDTH=50 HEIGHT=50><FONT COLOR=#A0B0C0 SIZE=7>text");
    const HostRun host(snapshot(700) + "--help-viewer \"" + folder.file("help.html") + '"');
    EXPECT_EQ(host.exitStatus(), 0);
    const auto colours = coloursOf(folder.file("host.png"));
    EXPECT_THAT(colours, IsSupersetOf({0xC08040U, 0xA0B0C0U}));
    EXPECT_EQ(colours.count(0x604020U), 0U) << "a picture with a path is shown";
}

TEST_F(SampleHostTest, CarriesOutTextCommandsOfItsUserAndOfTheRemoteSystem) {
    std::filesystem::create_directory(folder.file("Pictures"));
    folder.write("Pictures\\user.bmp", bitmapOf("\x40\x80\xC0"));
    folder.write("Pictures\\cleared.bmp", bitmapOf("\x20\x40\x60"));
    folder.write("Pictures\\harbour.png", bitmapOf("\x60\x50\x40"));
    const std::pair<std::string, std::set<unsigned>> runs[] = {
        {"--command \"IMAGE 1;1;9;9;1;user.bmp\" --command \"IMAGE 70;20;80;25;2;cleared.bmp\" "
         "--command \"IMAGECLEAR 2\"",
         {0xC08040U}},
        {"--type 8", {0x405060U}},
    };
    for (const auto& [arguments, shown] : runs) {
        SCOPED_TRACE(arguments);
        const HostRun host(own() + log() + snapshot(1500) + arguments);
        EXPECT_EQ(host.exitStatus(), 0);
        std::set<unsigned> seen;
        for (const unsigned colour : coloursOf(folder.file("host.png"))) {
            if (std::set{0xC08040U, 0x604020U, 0x405060U}.contains(colour)) seen.insert(colour);
        }
        EXPECT_EQ(seen, shown);
    }
    EXPECT_THAT(folder.read("host.log"), HasSubstr("command   \"IMAGE 38;6;77;18;1;harbour.png\"\n"));
}

TEST_F(SampleHostTest, GoesOnAfterWhatThePlugInRefuses) {
    std::string stream = "\x1B[99999;1H\x1B[38;5;1mshown";
    for (int byte = 0; byte < 256; ++byte) stream += static_cast<char>(byte);
    stream += "\x1B[32m\r\n" + std::string(200, '\xDB');
    folder.write("stream.bin", stream);
    const HostRun host(own() + log() + snapshot(700) + "--play \"" + folder.file("stream.bin") + '"');
    EXPECT_EQ(host.exitStatus(), 0);
    EXPECT_THAT(
        folder.read("host.log"),
        AllOf(HasSubstr("note      Row 2, @(,), failed: "), HasSubstr("Overflow"), HasSubstr("(0x800A0006)"),
              HasSubstr("unmatched \"\\x1B"), HasSubstr("plug-in TERM, Terminal Window, version")));
    EXPECT_EQ(coloursOf(folder.file("host.png")).count(0x00FF00U), 1U) << "the text after it is not shown";
}

TEST_F(SampleHostTest, HoldsATelnetSessionUntilItIsCutOff) {
    TinyServer server;
    const HostRun host(own() + log() + "--size 90x30 --term tiny --close-on-exit --connect " +
                       server.address());
    server.accept();
    server.send("\xFF\xFD\x1F\xFF\xFD\x18\xFF\xFA\x18\x01\xFF\xF0");
    EXPECT_TRUE(server.receives(std::string_view("\xFF\xFA\x1F\0\x5A\0\x1E\xFF\xF0", 9))) << "90 x 30";
    EXPECT_TRUE(server.receives(std::string_view("\xFF\xFA\x18\0tiny\xFF\xF0", 10))) << "terminal type";

    // In two pieces, so that only a recogniser which keeps its state finds it.
    server.send("Welcome\r\n\x1B\bSIZE 13");
    Sleep(200);
    server.send("2,40\r");
    EXPECT_TRUE(server.receives(std::string_view("\xFF\xFA\x1F\0\x84\0\x28\xFF\xF0", 9))) << "132 x 40";

    server.send("half a sequence \x1B[12;");
    server.hangUp();
    EXPECT_EQ(host.exitStatus(), 0);
    EXPECT_EQ(host.printed(), "");
    EXPECT_THAT(folder.read("host.log"),
                AllOf(HasSubstr("Welcome"), HasSubstr("half a sequence"), Not(HasSubstr("failed")),
                      HasSubstr("The server has closed the connection.")));
}

/// What `find` finds, once it finds something; null when it finds nothing in time.
HWND wait(const std::function<HWND()>& find) {
    HWND found = nullptr;
    for (DWORD start = GetTickCount(); found == nullptr && GetTickCount() - start < HostRun::kPatience;
         Sleep(20))
        found = find();
    return found;
}

/// The terminal window of a host, but for `other`, once it has a title that contains `part`; null when it
/// gets none in time.
HWND windowTitled(const std::string& part, HWND other = nullptr) {
    return wait([&part, other]() -> HWND {
        const HWND window = FindWindowA("kavrelon.frmTerm", nullptr);
        std::array<char, 300> title{};
        GetWindowTextA(window, title.data(), static_cast<int>(title.size()));
        const bool there =
            IsWindowVisible(window) && std::string_view(title.data()).find(part) != std::string_view::npos;
        return there && window != other ? window : nullptr;
    });
}

/// Waits for the sample host's message box, closes it and gives its text.
std::string closeBox() {
    const HWND box = wait([] { return FindWindowA("#32770", "Kavrelon Sample Host"); });
    constexpr int kText = 0xFFFF;
    std::array<char, 1000> text{};
    GetDlgItemTextA(box, kText, text.data(), static_cast<int>(text.size()));
    PostMessageA(box, WM_COMMAND, IDOK, 0);
    wait([box] { return IsWindow(box) ? nullptr : GetDesktopWindow(); });
    return text.data();
}

/// Chooses Help > About with keys.
void chooseAbout(HWND window) {
    SetForegroundWindow(window);
    for (const auto& [key, flags] : {std::pair<BYTE, DWORD>{VK_MENU, 0},
                                     {'H', 0},
                                     {'H', KEYEVENTF_KEYUP},
                                     {VK_MENU, KEYEVENTF_KEYUP},
                                     {'A', 0},
                                     {'A', KEYEVENTF_KEYUP}})
        keybd_event(key, 0, flags, 0);
}

TEST_F(SampleHostTest, TellsAboutItselfInAMenuOfItsOwn) {
    TinyServer server;
    const HostRun host(own() + log() + "--raw --registered --connect " + server.address());
    const auto toldIn = [](HWND window) {
        chooseAbout(window);
        return closeBox();
    };
    server.accept();
    const std::string title = server.address() + " - ";
    const HWND first = windowTitled(title);
    EXPECT_THAT(toldIn(first), AllOf(HasSubstr("Kavrelon sample host 1."),
                                     HasSubstr(HostRun::nextToThisProgram("kavrelon.dll")),
                                     HasSubstr("TERM, Terminal Window, version "),
                                     HasSubstr(folder.file("host.ini")), HasSubstr(folder.file("host.log"))));
    // A window that covers the first one, the first one again, and that of a new session.
    server.send("\x1B\bNS\r");
    const HWND covering = windowTitled(title, first);
    EXPECT_THAT(toldIn(covering), HasSubstr("TERM"));
    server.send("\x1B\bCS\r");
    EXPECT_EQ(windowTitled(title, covering), first);
    EXPECT_THAT(toldIn(first), HasSubstr("TERM"));
    server.hangUp();
    PostMessageA(windowTitled(" has ended"), WM_CHAR, '\r', 0);
    server.accept();
    const HWND again = windowTitled(title);
    EXPECT_THAT(toldIn(again), HasSubstr("TERM"));
    PostMessageA(again, WM_CLOSE, 0, 0);
    EXPECT_EQ(host.exitStatus(), 0);
}

// The terminal must not take them for its own.
static_assert(HelpMenu::kFirstFreeCommand >
              static_cast<UINT>(MenuCommand::mnuRemoteConnection + EntryList::kMostEntries));

TEST(SampleHostMenuTest, IsOnceOnEachBarAndGoesWithItsOwner) {
    int chosen = 0;
    const auto bar = [](HWND window) { return GetMenuItemCount(GetMenu(window)); };
    const auto makeWindow = [] {
        const HWND window = CreateWindowA("STATIC", "", WS_OVERLAPPEDWINDOW, 0, 0, 9, 9, nullptr,
                                          CreateMenu(), nullptr, nullptr);
        AppendMenuA(GetMenu(window), MF_STRING, 1, "own");
        return window;
    };
    const HWND below = makeWindow();
    const HWND above = makeWindow();
    {
        HelpMenu menu([&chosen] { ++chosen; });
        for (const HWND window : {below, above, below, HWND{}}) menu.addTo(window);
        EXPECT_EQ(bar(below), 2);
        EXPECT_EQ(bar(above), 2);
        for (const UINT command : {1U, HelpMenu::kAbout}) SendMessageA(above, WM_COMMAND, command, 0);
        EXPECT_EQ(chosen, 1);
        DestroyWindow(above);
    }
    EXPECT_EQ(bar(below), 1);
    SendMessageA(below, WM_COMMAND, HelpMenu::kAbout, 0);
    EXPECT_EQ(chosen, 1);
    DestroyWindow(below);
}

TEST_F(SampleHostTest, TellsWhatIsWrongInABoxWhereNoConsoleIs) {
    FreeConsole();
    const HostRun asked("--colour", HostRun::Streams::None);
    EXPECT_THAT(closeBox(), HasSubstr("There is no option --colour"));
    EXPECT_EQ(asked.exitStatus(), 2);
    // A script would wait for ever.
    EXPECT_EQ(HostRun("--colour --close-on-exit", HostRun::Streams::None).exitStatus(), 2);

    ASSERT_TRUE(AllocConsole());
    EXPECT_EQ(HostRun("--colour", HostRun::Streams::None).exitStatus(), 2);
    const Handle console(CreateFileA("CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    std::array<char, 800> shown{};
    DWORD count = 0;
    ReadConsoleOutputCharacterA(console.get(), shown.data(), shown.size() - 1, {0, 0}, &count);
    EXPECT_THAT(shown.data(), HasSubstr("samplehost: There is no option --colour"));
    FreeConsole();
}

TEST_F(SampleHostTest, EndsWithTheRecording) {
    folder.write("stream.bin", "played");
    const HostRun host(own() + "--play \"" + folder.file("stream.bin") + "\" --snapshot \"" +
                       folder.file("host.txt") + "\" --every 30 --close-on-exit");
    EXPECT_EQ(host.exitStatus(), 0);
    EXPECT_THAT(folder.read("host.txt"), StartsWith("played "));
}

TEST_F(SampleHostTest, LeavesTheWindowOfASessionThatHasEndedAndStartsAgain) {
    TinyServer server;
    const HostRun host(own() + log() + "--record \"" + folder.file("host.rec") + "\" --connect " +
                       server.address());
    server.accept();
    server.send("\xFF\xFD\x1F[\xC3\xA9\x1B[m\xE2]");
    const HWND window = windowTitled(server.address() + " - ");
    PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(MenuCommand::mnuFileScreenWidth), 0);
    EXPECT_TRUE(server.receives(std::string_view("\xFF\xFA\x1F\0\x84\0\x19\xFF\xF0", 9))) << "132 x 25";
    PostMessageA(window, WM_CHAR, 0xE9, 0);
    EXPECT_TRUE(server.receives("\xC3\xA9"));
    // The Data Mark is urgent; without it in its place, what follows would be taken for a command.
    server.send("\xFF");
    server.sendUrgent("\xF2");
    server.send("after");
    server.hangUp();

    const HWND ended = windowTitled(server.address() + " has ended: ");
    EXPECT_EQ(ended, window);
    PostMessageA(ended, WM_CHAR, 'x', 0);
    PostMessageA(ended, WM_CHAR, '\r', 0);
    server.accept();
    server.send("again");
    PostMessageA(windowTitled(server.address() + " - "), WM_CLOSE, 0, 0);
    EXPECT_EQ(host.exitStatus(), 0);
    EXPECT_THAT(folder.read("host.log"),
                AllOf(HasSubstr("characters are utf-8"), HasSubstr("become the default colours"),
                      HasSubstr("after\"\n"), HasSubstr("The server has closed the connection."),
                      HasSubstr("session started again"), Not(HasSubstr("unmatched"))));
    EXPECT_THAT(folder.read("host.rec"), HasSubstr("[\x82\x1B[37;40;0m?]")) << "not what the terminal got";
}

TEST_F(SampleHostTest, CanBeClosedWhileItStartsAgain) {
    TinyServer server;
    const HostRun host(own() + "--raw --connect " + server.address());
    server.accept();
    server.hangUp();
    const HWND window = windowTitled(" has ended");
    // Nobody takes these connections, so that the next one has no answer.
    const TinyServer::Crowd crowd(server);
    for (int enter = 0; enter < 2; ++enter) PostMessageA(window, WM_CHAR, '\r', 0);
    EXPECT_EQ(windowTitled(" is being started"), window);
    Sleep(300);
    EXPECT_EQ(windowTitled(" is being started"), window);
    const DWORD asked = GetTickCount();
    PostMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(host.exitStatus(), 0);
    EXPECT_LT(GetTickCount() - asked, 8000U) << "it waits for the server";
    EXPECT_EQ(host.printed(), "");
}

TEST_F(SampleHostTest, ShowsTheScreenAsItIsAfterAFlood) {
    std::string much;
    while (much.size() < 300'000) much += "\x1B[33mmore and more and more of it\r\n";
    TinyServer server;
    const HostRun host(own() + snapshot(4000) + "--raw --connect " + server.address());
    server.accept();
    // Another screen covers the first one meanwhile, and goes when all is quiet.
    server.send(much + "\x1B[2J\x1B[1;1H\x1B[36mfirst\x1B\bNS\r" + much);
    Sleep(1500);
    server.send("\x1B\bCS\r");
    EXPECT_EQ(host.exitStatus(), 0);
    const auto colours = coloursOf(folder.file("host.png"));
    EXPECT_EQ(colours.count(0x009999U) + colours.count(0x00FFFFU), 1U) << "the first screen";
    EXPECT_EQ(colours.count(0x999900U) + colours.count(0xFFFF00U), 0U) << "the flood";
}

TEST_F(SampleHostTest, EndsWellWhenTheUserClosesTheWindowInAFlood) {
    TinyServer server;
    const HostRun host(own() + log() + "--raw --connect " + server.address());
    server.accept();
    const DWORD start = GetTickCount();
    bool asked = false;
    while (server.flood("\x1B[33mmore and more and more of it\r\n") >= 0 &&
           GetTickCount() - start < HostRun::kPatience) {
        if (asked || GetTickCount() - start < 1500) continue;
        const HWND window = FindWindowA("kavrelon.frmTerm", nullptr);
        asked = IsWindowVisible(window) && PostMessageA(window, WM_CLOSE, 0, 0);
    }
    EXPECT_TRUE(asked);
    EXPECT_EQ(host.exitStatus(), 0);
    EXPECT_EQ(host.printed(), "");
    EXPECT_THAT(folder.read("host.log"), HasSubstr("note      session closed"));
}

/// A connection to a server that has accepted it.
class SampleHostConnectionTest : public testing::Test {
  protected:
    SampleHostConnectionTest() {
        options.host = "127.0.0.1";
        options.port = server.port();
        telnet.emplace(options);
        server.accept();
    }
    bool ready(DWORD patience = 10000) const {
        return WaitForSingleObject(telnet->readyEvent(), patience) == WAIT_OBJECT_0;
    }
    std::string shown() {
        RemoteOutput output;
        telnet->advance({}, output);
        return output.bytes();
    }

    TinyServer server;
    HostOptions options;
    std::optional<Connection> telnet;
};

TEST_F(SampleHostConnectionTest, CarriesWhatTheUserTypes) {
    telnet->send("a\xFF\r", false);
    EXPECT_TRUE(server.receives(std::string_view("a\xFF\xFF\r\0", 5)));
    EXPECT_EQ(shown(), "a\xFF\r\n") << "the server does not echo, so the client has to";
    server.send("\xFF\xFB\x01");
    EXPECT_TRUE(ready());
    EXPECT_EQ(shown(), "");
    EXPECT_TRUE(server.receives("\xFF\xFD\x01"));
    telnet->send("secret", false);
    telnet->sendBreak();
    EXPECT_EQ(shown(), "");
    EXPECT_TRUE(server.receives("secret\xFF\xF3"));
}

TEST_F(SampleHostConnectionTest, TakesNothingWhileTooManyAnswersWait) {
    std::string text;
    constexpr std::string_view ask("\xFF\xFA\x18\x01\xFF\xF0", 6);
    const std::size_t answer = ask.size() + options.terminalType.size();
    std::string asks;
    while (asks.size() < 60000) asks += ask;
    server.send("\xFF\xFD\x18");

    // It asks until the connection has taken nothing more for a second.
    const std::size_t before = committedBytes();
    const auto grown = [before] { return committedBytes() > before + 8'000'000; };
    std::size_t asked = 0;
    for (DWORD last = GetTickCount(); GetTickCount() - last < 1000 && !grown(); text += shown()) {
        const int taken = server.flood(std::string_view(asks).substr(asked % ask.size()));
        if (taken > 0) last = GetTickCount();
        asked += static_cast<std::size_t>(taken);
    }
    EXPECT_FALSE(grown()) << asked << " bytes of questions";

    // It begins to read, and gets every answer.
    const std::string rest = std::string(ask.substr(asked % ask.size())) + "done";
    std::size_t due = 3 + (asked / ask.size() + 1) * answer;
    std::size_t sent = 0;
    const DWORD start = GetTickCount();
    while ((due > 0 || text != "done") && GetTickCount() - start < HostRun::kPatience) {
        due -= static_cast<std::size_t>(server.drain());
        if (sent < rest.size()) sent += static_cast<std::size_t>(server.flood(rest.substr(sent)));
        if (ready(0)) text += shown();
    }
    EXPECT_EQ(due, 0U);
    EXPECT_EQ(text, "done");
    EXPECT_FALSE(telnet->ending());
}

}  // namespace
}  // namespace kavrelon
