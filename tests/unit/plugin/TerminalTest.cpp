#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "plugin/FunctionKeys.h"
#include "terminal/TitleBar.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;
using namespace rows;
using Texts = std::vector<std::string>;

class TerminalTest : public ConnectedTest {
  protected:
    void closeByUser() const { window().events()->Form_Close(); }
};

TEST_F(TerminalTest, FieldsHaveTheirIndexesWhereverTheirArrayBegins) {
    sequence(kCursorPosition, {"unused", "10", "20"}, 0);
    EXPECT_EQ(cursor(), (Point{19, 9}));
    EXPECT_EQ(errorOf([this] { sequence(kCursorPosition, {"5", "6"}, std::numeric_limits<int>::min()); }), 9);
    EXPECT_EQ(cursor(), (Point{19, 9}));
    sequence(kSetAttributes, {"31", "7"}, 0);
    EXPECT_EQ(screen().rendition().CurAttr(), (CellAttr{31, 40, 7})) << "these are read from the first on";
}

TEST_F(TerminalTest, ScreensArePushedAndPopped) {
    const frmTerm& base = form();
    sequence(kSizeScreen, {"2000", "30"});
    EXPECT_EQ(screen().CharsPerLine(), 1024);
    blink();
    // A sequence that fails leaves the mark off until what is received ends.
    EXPECT_EQ(errorOf([this] { sequence(kCursorPosition, {"x"}); }), 13);
    EXPECT_FALSE(base.screen().cursorDrawn());
    sequence(kNewScreen);
    EXPECT_EQ(form().ConnectionProfile() + form().IniFile(), "default" + parent->iniFile);
    EXPECT_EQ(window().state(), WindowState::Maximised);
    EXPECT_TRUE(window().visible() && form().sessionOpen() && form().TermActive());
    EXPECT_FALSE(base.TermActive() || platform.windowOf(base)->timerEnabled(TermTimer::cursor_timer));
    EXPECT_TRUE(base.screen().cursorDrawn());

    sequence(kCloseScreen);
    EXPECT_EQ(&form(), &base);
    EXPECT_EQ(platform.openWindows(), 1U);
    EXPECT_TRUE(base.TermActive() && window().timerEnabled(TermTimer::cursor_timer));
}

TEST_F(TerminalTest, TheStackHoldsAHundredAndOneWindows) {
    for (int i = 1; i <= 100; ++i) sequence(kNewScreen);
    EXPECT_EQ(errorOf([this] { sequence(kNewScreen); }), 9);
    EXPECT_EQ(terminal->topIndex(), 100);
    EXPECT_TRUE(window().timerEnabled(TermTimer::cursor_timer)) << "the screen that stays blinks on";
    EXPECT_EQ(platform.openWindows(), 101U);
    terminal.reset();
    EXPECT_EQ(platform.openWindows(), 0U);
    EXPECT_EQ(parent->calls, Texts{});
}

TEST_F(TerminalTest, SessionFlagsFollowOpenAndClose) {
    sequence(kShowHelpBox, {"3", "1", "2", "30", "4", "text"});
    const auto before = std::chrono::system_clock::now();
    terminal->IClientMain_OnClose();
    EXPECT_GE(form().CloseDate(), before);
    EXPECT_EQ(form().HelpBoxes().openSlots(), std::vector<int>{});
    for (const bool open : {false, true}) {
        if (open) form().TerminalOpen();
        EXPECT_EQ(form().sessionOpen(), open);
        EXPECT_EQ(form().sessionClosed(), !open);
        EXPECT_EQ(window().timerEnabled(TermTimer::cursor_timer), open);
        form().ShowTitleBar(open);
        EXPECT_EQ(window().styleBits(), open ? 0xCF0000U : 0x40000U);
    }
    for (const std::uint32_t bit : {0x80000U, 0x10000U, 0x20000U, 0xC00000U}) {
        const TitleBarSettings declared{bit == 0x80000, bit == 0x10000, bit == 0x20000, bit == 0xC00000};
        EXPECT_EQ(titleBarStyle(1, true, declared), bit | 1);
    }
}

TEST_F(TerminalTest, WindowClosedByTheUserDropsWhatReachesIt) {
    closeByUser();
    frmTerm& closed = form();
    type("text\a\r\n");
    for (int row = 1; row <= terminal->IClientEscTree_EscTreeCount(); ++row) {
        if (row != kNewScreen && row != kLogOn && row != kLogOnWithText)
            sequence(row, {"1", "1", "1", "1", "1", "1"});
    }
    using Member = void (frmTerm::*)();
    for (const auto member : std::initializer_list<Member>{
             &frmTerm::DisplayTerminalWindows, &frmTerm::ReadINIFile, &frmTerm::MakeActive,
             &frmTerm::setFocus, &frmTerm::TerminalOpen, &frmTerm::Form_Paint, &frmTerm::Form_Resize,
             &frmTerm::cursor_timer_Timer, &frmTerm::tmrBeep_Timer, &frmTerm::mnuFileScreenWidth_Click}) {
        (closed.*member)();
    }
    closed.ShowTitleBar(true);
    closed.mnuFontStyle_Click(2);
    closed.mnuPrinterType_Click(2);
    closed.Form_KeyPress('x');
    closed.mnuFileExit_Click();
    terminal->IClientMain_OnClose();
    terminal->IClientMain_DestroyClass();
    EXPECT_EQ(parent->calls, Texts{"closed"});
}

TEST_F(TerminalTest, HostMayDestroyThePlugInFromAnyWindowEvent) {
    parent->onCall = [this](const char*, const std::string*) {
        form().mnuFileExit_Click();
        terminal->IClientMain_DestroyClass();
    };
    platform.pendingMessages.push_back([this] { closeByUser(); });
    terminal->IClientReceive_ReceiveEnd();
    EXPECT_EQ(parent->calls, Texts{"closed"});
    EXPECT_EQ(platform.openWindows(), 0U);
    connect();
    EXPECT_EQ(terminal->topIndex(), 0);
}

TEST_F(TerminalTest, MembersNeedAWindowAndAParent) {
    Session fresh;
    terminal->IClientMain_DestroyClass();
    for (clsTerminal* plugIn : {fresh.terminal.get(), terminal.get()}) {
        const std::function<void()> members[] = {
            [=] { plugIn->IClientReceive_ReceiveData('x'); },
            [=] { plugIn->IClientEscTree_EscTreeProcess(kHome, {}); },
            [=] { plugIn->IClientMain_OnConnection(); },
            [=] { plugIn->IClientMain_OnClose(); },
            [=] { plugIn->SendBreak(); },
            [=] { plugIn->SendTermData("x"); },
            [=] { plugIn->SendCommand("x"); },
            [=] { plugIn->IClientMain_InitializeClass(); },
        };
        for (const auto& member : members) EXPECT_EQ(errorOf(member), 91);
        plugIn->IClientEscTree_EscTreeProcess(kSaveCursor, {});
        plugIn->IClientReceive_ReceiveEnd();
        plugIn->IClientMain_OnLogin();
        plugIn->IClientMain_OnLogOut();
        plugIn->WindowHasClosed();
        plugIn->IClientMain_DestroyClass();
    }
    EXPECT_EQ(parent->calls, Texts{});
}

TEST_F(TerminalTest, FailingHostReachesTheCallerOrIsIgnored) {
    const auto fails = [this](const char* member, auto&& call) {
        parent->failing = member;
        EXPECT_THROW(call(), std::runtime_error) << member;
    };
    fails("data", [this] { terminal->SendTermData("x"); });
    fails("break", [this] { terminal->SendBreak(); });
    fails("command", [this] { terminal->SendCommand("x"); });
    sequence(kLogOn);
    terminal->IClientMain_OnLogin();
    parent->failing = "closed";
    closeByUser();
    EXPECT_EQ(parent->calls,
              (Texts{"data x", "break", "command x", "command INIT", "command INIT", "closed"}));
    terminal->IClientMain_DestroyClass();
    for (const char* member : {"profile", "ini"}) {
        terminal->IClientMain_SetClientParent(parent);
        fails(member, [this] { terminal->IClientMain_InitializeClass(); });
        EXPECT_EQ(platform.openWindows(), 0U);
    }
}

TEST(FunctionKeys, Translation) {
    const std::pair<std::string, std::string> cases[] = {{"a<cr>b<CR>", "a\rb\r"},
                                                         {"<Cr><cR>", "<Cr><cR>"},
                                                         {"^27[A", "\x1B[A"},
                                                         {"x^", "x"},
                                                         {"^abc", "c"},
                                                         {"^ 7x", "x"},
                                                         {"^^27x", "7x"},
                                                         {"^00", "\0"s}};
    for (const auto& [text, translated] : cases)
        EXPECT_EQ(FunctionKeys::TranslateKeyString(text), translated) << text;
}

TEST_F(TerminalTest, FunctionKeySequenceStoresUntranslated) {
    const std::pair<std::string, std::int16_t> cases[] = {{"13", 13},   {"A1", 13}, {"S12", 36}, {"SA2", 38},
                                                          {"AS12", 48}, {"A40", 0}, {"0", 0},    {"49", 0}};
    for (const auto& [name, key] : cases) {
        sequence(kSetFunctionKey, {name, "^9427 " + name});
        EXPECT_EQ(terminal->FuncKey(key), key == 0 ? "" : "^27 " + name);
    }
    for (const auto key : std::initializer_list<std::int16_t>{-32768, -1, 49, 32767}) {
        EXPECT_EQ(errorOf([&] { terminal->FuncKey(key); }), 9);
    }
}

using ReceiveLaw = ConnectedTest;

TEST_F(ReceiveLaw, NothingIsSentButInitAfterALogon) {
    const std::function<void()> states[] = {[] {},
                                            [this] { terminal->IClientMain_OnLogOut(); },
                                            [this] { screen().PaintOn(false); },
                                            [this] { screen().AutoWrap(false); },
                                            [this] { sequence(kNewScreen); },
                                            [this] { terminal->IClientMain_OnClose(); },
                                            [this] { window().events()->Form_Close(); }};
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) allBytes += static_cast<char>(byte);
    const Texts shapes[] = {
        {}, {""}, {"120", "40"}, {allBytes, allBytes}, Texts(6, "5"), Texts(2, std::string(70000, '7'))};
    std::ptrdiff_t logons = 0;
    // Everything that can be received, in each state of the session.
    const auto receive = [&](int row, const Texts& shape) {
        for (const int lowerBound : {1, 0, -3}) {
            const bool done = errorOf([&] { sequence(row, shape, lowerBound); }) == 0;
            logons += done && (row == kLogOn || row == kLogOnWithText);
        }
        errorOf([&] { type("x\a\r\n\x05\x1B[c\x1BZ"); });
    };
    for (const auto& enter : states) {
        enter();
        errorOf([&] { type(allBytes); });
        for (int row = -1; row <= 101; ++row) {
            for (const Texts& shape : shapes) receive(row, shape);
        }
        terminal->IClientReceive_ReceiveEnd();
        EXPECT_TRUE(!form().isLoaded() || form().Caption() == "Terminal");
    }
    EXPECT_GT(logons, 0);
    EXPECT_EQ(std::count(parent->calls.begin(), parent->calls.end(), "command INIT"), logons);
    EXPECT_EQ(static_cast<std::ptrdiff_t>(parent->calls.size()), logons);
    const HeadlessLauncher& launcher = platform.headlessLauncher;
    EXPECT_EQ(launcher.shellStarts.size() + launcher.plainStarts.size(), 0U);
    EXPECT_TRUE(platform.desktop.clipboard.empty() && platform.headlessPrinters.printedOn.empty());
}

}  // namespace
}  // namespace kavrelon
