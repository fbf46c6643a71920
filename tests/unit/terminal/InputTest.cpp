#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "terminal/BellLimit.h"
#include "terminal/modShellandWait.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;
using namespace rows;
using Texts = std::vector<std::string>;

constexpr std::int16_t kCtrl = 17;

class InputTest : public ConnectedTest {
  protected:
    /// A key going down; what is left of its code.
    std::int16_t key(std::int16_t code, std::int16_t shift = 0) const { return key(KeyStroke{code, shift}); }
    std::int16_t key(KeyStroke stroke) const {
        form().Form_KeyDown(stroke);
        return stroke.keyCode;
    }
    void drag(Point from, Point to) const {
        form().Form_MouseDown(MouseButton::Left, from);
        form().Form_MouseMove(true, to);
        form().Form_MouseUp(MouseButton::Left, to);
    }
    /// The middle of a cell, 0-based.
    Point at(int column, int row) const {
        const Point corner = screen().grid().cellOrigin(column, row);
        return {corner.x + 4, corner.y + 8};
    }
};

TEST_F(InputTest, KeysThatAreUsedUpLeaveNothingForTheWindow) {
    const std::pair<std::int16_t, bool> cases[] = {{38, false}, {65, false}, {121, true}, {115, true}};
    const std::pair<std::int16_t, bool> withCtrl[] = {{65, true},  {67, true},  {81, true}, {86, true},
                                                      {38, false}, {19, false}, {42, false}};
    for (const auto& [code, usedUp] : cases) EXPECT_EQ(key(code) == 0, usedUp) << code;
    key(kCtrl, 2);
    for (const auto& [code, usedUp] : withCtrl) EXPECT_EQ(key(code, 2) == 0, usedUp) << code << " with Ctrl";
}

TEST_F(InputTest, CtrlNeverSticks) {
    const std::function<void()> releases[] = {[this] { form().Form_KeyUp(kCtrl); },
                                              [this] { form().Form_LostFocus(); }};
    for (const auto& release : releases) {
        key(kCtrl, 2);
        form().Form_KeyUp(65);
        form().Form_KeyPress('a');
        release();
        form().Form_KeyPress('a');
    }
    EXPECT_EQ(parent->calls, (Texts{"data !", "data a", "data !", "data a"}));
}

TEST_F(InputTest, KeysTellWhetherCtrlIsMeant) {
    const KeyStroke ctrl = strokeOf(kCtrl, 2, false), alt = strokeOf(18, 6, false),
                    altGr = strokeOf(18, 6, true), altGrAgain = strokeOf(kCtrl, 6, true);
    const struct {
        const char* what;
        std::vector<KeyStroke> strokes;
        std::string sent;
    } cases[] = {{"with Alt", {ctrl, alt}, "data !"},
                 {"let go while a menu had the keyboard", {ctrl, strokeOf(27, 0, false)}, "data a"},
                 {"AltGr", {ctrl, altGr}, "data a"},
                 {"AltGr, repeating", {ctrl, altGr, altGrAgain}, "data a"},
                 {"the right Alt key first", {strokeOf(18, 4, true), altGrAgain}, "data a"},
                 {"the Pause key under its other name", {ctrl, strokeOf(3, 2, false)}, "break data !"},
                 {"held, whatever a later stroke says", {ctrl, {65, 0}}, "data \x01 data !"}};
    for (const auto& c : cases) {
        parent->calls.clear();
        for (const KeyStroke& stroke : c.strokes) key(stroke);
        form().Form_KeyPress('a');
        std::string sent;
        for (const std::string& call : parent->calls) sent += (sent.empty() ? "" : " ") + call;
        EXPECT_EQ(sent, c.sent) << c.what;
    }
}

TEST_F(InputTest, BellRingsOnceForEachTimeItIsRung) {
    int bells = 0;
    platform.desktop.onBeep = [&](int, int) { ++bells; };
    for (int round = 1; round <= 2; ++round) {
        type("\a");
        for (int i = 0; i < 3; ++i) window().tick(TermTimer::tmrBeep);
        EXPECT_EQ(bells, round);
    }
}

TEST_F(InputTest, InactiveOrLockedKeyboardsSendNothing) {
    form().InputOn(false);
    key(38);
    form().Form_KeyPress('a');
    EXPECT_EQ(key(112), 0) << "still resolved, and used up";
    EXPECT_TRUE(parent->calls.empty());
    form().InputOn(true);
    form().CRtoCRLF(true);
    form().Form_KeyPress('\r');
    form().Form_KeyPress(0);
    EXPECT_EQ(parent->calls, Texts{"data \r\n"});
    window().events()->Form_Deactivate();
    EXPECT_EQ(key(112), 112);
    EXPECT_EQ(parent->calls.size(), 1U);
}

TEST_F(InputTest, FailingHostLosesTheKeyAndNothingElse) {
    parent->failing = "data";
    key(38);
    form().Form_KeyPress('a');
    parent->failing = "break";
    key(kCtrl, 2);
    EXPECT_EQ(key(19, 2), 19);
    parent->failing.clear();
    parent->calls.clear();
    key(65, 2);
    EXPECT_EQ(parent->calls, Texts{"data \x01"});
}

TEST_F(InputTest, KeysMayArriveWhileScreensArePushedClosedAndDestroyed) {
    platform.pendingMessages = {
        [this] { form().Form_KeyPress('a'); }, [this] { sequence(kNewScreen); },
        [this] { form().Form_KeyPress('b'); }, [this] { sequence(kCloseScreen); },
        [this] { drag(at(0, 0), at(3, 3)); },  [this] { form().mnuFileExit_Click(); },
        [this] { drag(at(0, 0), at(3, 3)); },  [this] { form().mnuFilePrint_Click(); }};
    terminal->IClientReceive_ReceiveEnd();
    EXPECT_EQ(parent->calls, (Texts{"data a", "data b", "closed"}));
}

TEST_F(InputTest, HighlightFollowsTheMouseInEveryDirection) {
    setSize(6, 3);
    sequence(kSetAttributes, {"31", "44;4"});
    type("abcdefghijklmnopqr");
    const Pen normal{0x0000FF, 0xFF0000, false, true}, reversed{0xFF0000, 0x0000FF};
    const std::pair<Point, Point> corners[] = {
        {at(2, 0), at(4, 1)}, {at(4, 1), at(2, 0)}, {at(2, 1), at(4, 0)}, {at(4, 0), at(2, 1)}};
    for (const auto& [from, to] : corners) {
        form().Form_MouseDown(MouseButton::Left, from);
        form().Form_MouseMove(true, at(5, 2));
        form().Form_MouseMove(true, to);
        form().Form_MouseMove(false, at(0, 2));
        for (int cell = 0; cell < 18; ++cell) {
            const int column = cell % 6, row = cell / 6;
            const bool inside = column >= 2 && column <= 4 && row <= 1;
            EXPECT_EQ(shown(column, row).pen, inside ? reversed : normal) << cell;
        }
        form().Form_MouseUp(MouseButton::Left, to);
        form().mnuRightClickCopy_Click();
        EXPECT_EQ(platform.desktop.clipboard, "cdeijk");
        EXPECT_EQ(shown(2, 0).pen, normal);
    }
}

TEST_F(InputTest, ContextMenuFollowsWhatIsAllowed) {
    for (int allowed = 0; allowed < 8; ++allowed) {
        const bool cutOk = allowed & 1, pasteOk = allowed & 2, selected = allowed & 4;
        form().Form_MouseDown(MouseButton::Left, at(0, 0));
        form().CutOk(cutOk);
        form().PasteOk(pasteOk);
        if (selected) form().Form_MouseMove(true, at(3, 0));
        form().Form_MouseUp(MouseButton::Right, at(9, 9));
        EXPECT_EQ(window().contextMenu(), (HeadlessWindow::ContextMenu{cutOk && selected, pasteOk}));
    }
}

TEST_F(InputTest, HeldClipboardRingsAndLosesNothing) {
    std::vector<int> bells;
    platform.desktop.onBeep = [&](int frequency, int) { bells.push_back(frequency); };
    type("text");
    platform.desktop.clipboard = "before";
    platform.desktop.clipboardHeld = true;
    drag(at(0, 0), at(3, 0));
    form().mnuRightClickCopy_Click();
    form().mnuRightClickPaste_Click();
    form().mnuRightClickClear_Click();
    EXPECT_EQ(bells, (std::vector<int>{100, 100, 100}));
    EXPECT_EQ(platform.desktop.clipboard, "before");
    EXPECT_TRUE(parent->calls.empty());
    platform.desktop.clipboardHeld = false;
    form().mnuRightClickCopy_Click();
    EXPECT_EQ(platform.desktop.clipboard, "text") << "the selection is still there";

    platform.desktop.clipboard = std::string(1 << 20, 'x');
    form().mnuRightClickPaste_Click();
    EXPECT_EQ(parent->calls, Texts{"data " + platform.desktop.clipboard}) << "sent whole";
}

TEST_F(InputTest, WhatIsCopiedIsStoredAsBlanksAndNothingStaysSelectedAfterAChangeOfSize) {
    setSize(6, 2);
    type("ab");
    sequence(kClearEndOfLine);
    const auto highlighted = [this] {
        return std::ranges::count(picture(), 0xFFFFFFU, [](const ShownCell& cell) { return cell.pen.back; });
    };
    drag(at(0, 0), at(3, 0));
    EXPECT_EQ(highlighted(), 4);
    sequence(kSizeScreen, {"7", "2"});
    EXPECT_EQ(highlighted(), 0);
    form().mnuRightClickCopy_Click();
    EXPECT_EQ(platform.desktop.clipboard, "");
    EXPECT_EQ(stored(2, 0), 0);
    EXPECT_EQ(form().SelectionText(), "");
    drag(at(0, 0), at(3, 0));
    EXPECT_EQ(form().SelectionText(), "ab  ");
    EXPECT_EQ(stored(2, 0), 0) << "who only reads changes nothing";
    form().mnuRightClickCopy_Click();
    EXPECT_EQ(platform.desktop.clipboard, "ab  ");
    EXPECT_EQ(stored(2, 0), ' ');
}

TEST_F(InputTest, WhatEndsASelectionLeavesNothingToCopy) {
    const std::function<void()> ends[] = {
        [this] { form().EraseScreen(); },
        [this] { form().mnuFontStyle_Click(3); },
        [this] { form().mnuFileScreenWidth_Click(); },
        [this] {
            sequence(kSizeScreen, {"80", "25"});
        },
        [this] { screen().AutoSize(true); },
        [this] { form().Form_Resize(); },
        [this] { form().Form_Paint(); },
        [this] { form().mnuFileRest_Click(); },
        [this] { form().Form_MouseMove(true, at(2, 1)); },
    };
    for (const auto& end : ends) {
        SCOPED_TRACE(&end - ends);
        parent->calls.clear();
        platform.desktop.clipboard = "before";
        type("text");
        drag(at(2, 1), at(5, 3));
        end();
        EXPECT_EQ(shown(3, 2).pen.back, 0U);
        form().Form_MouseUp(MouseButton::Right, at(0, 0));
        EXPECT_FALSE(window().contextMenu()->copyEnabled);
        key(kCtrl, 2);
        key(67, 2);
        form().Form_KeyUp(kCtrl);
        EXPECT_EQ(parent->calls, Texts{"data \x03"});
        EXPECT_EQ(platform.desktop.clipboard, "before");
    }
    form().Form_MouseMove(true, at(2, 2));
    EXPECT_TRUE(screen().SelectionShown()) << "the mouse has left its first cell again";
}

TEST_F(InputTest, DragEndsOnTheScreenThatHasBecomeSmaller) {
    setSize(132, 5);
    form().Form_MouseDown(MouseButton::Left, at(130, 4));
    setSize(80, 3);
    form().Form_MouseMove(true, at(78, 2));
    form().mnuRightClickCopy_Click();
    EXPECT_EQ(platform.desktop.clipboard, "  ");
}

TEST(LauncherTest, TakesCommandTextsApart) {
    const struct {
        std::string text, program, parameters, directory;
    } cases[] = {
        {"a.exe  -x  y ", "a.exe", "-x  y ", ""},
        {"\"C:\\Two Words\\b.exe\"   one \"two\"", "C:\\Two Words\\b.exe", "one \"two\"", "C:\\Two Words"},
        {"\"C:\\open quote -x", "C:\\open quote -x", "", "C:"},
        {"http://localhost/x y", "http://localhost/x", "y", ""},
        {"", "", "", ""},
        {" leading", "", "leading", ""},
    };
    for (const auto& c : cases) {
        const auto command = modShellandWait::split(c.text, {});
        EXPECT_EQ(Texts({command.program, command.parameters, command.directory}),
                  Texts({c.program, c.parameters, c.directory}));
        EXPECT_EQ(modShellandWait::split(c.text, "D:\\given").directory, "D:\\given");
    }
}

TEST(LauncherTest, OnlySomeFailuresGetASecondAttempt) {
    const struct {
        long shellResult, task;
        bool secondAttempt;
        long result;
    } cases[] = {{33, 7000, false, 33}, {32, 7000, true, 7000}, {0, 7000, true, 7000}, {2, 0, true, 2},
                 {5, 7000, false, 5},   {26, 7000, false, 26},  {31, 7000, false, 31}};
    for (const auto& c : cases) {
        HeadlessLauncher launcher;
        launcher.shellResult = c.shellResult;
        launcher.task = c.task;
        EXPECT_EQ(modShellandWait::start(launcher, "a.exe  -x", 1), c.result);
        EXPECT_EQ(launcher.plainStarts, c.secondAttempt ? Texts{"a.exe  -x"} : Texts{}) << c.shellResult;
    }
}

TEST_F(InputTest, HostFilledMenusStartExactlyWhatTheHostGave) {
    HeadlessLauncher& launcher = platform.headlessLauncher;
    sequence(kAddKB, {"http://localhost/a", "A"});
    sequence(kAddRemote, {"\"C:\\My Tools\\t.exe\"  /x", "Tool"});
    EXPECT_TRUE(window().remoteMenuEnabled());
    EXPECT_TRUE(launcher.shellStarts.empty()) << "nothing starts without the user's choice";
    form().mnKnowledgeBaseLink_Click(1);
    form().mnuRemoteConnection_Click(0);
    EXPECT_EQ(launcher.shellStarts,
              (std::vector<HeadlessLauncher::Start>{{"http://localhost/a", "", ""},
                                                    {"C:\\My Tools\\t.exe", "/x", "C:\\My Tools"}}));
    EXPECT_TRUE(window().failures().empty());
    launcher.shellResult = 5;
    form().mnuRemoteConnection_Click(0);
    EXPECT_EQ(window().failures(),
              Texts{"Unable to start Program: \"C:\\My Tools\\t.exe\"  /x\nError: result 5"});
    // The items of a cleared knowledge base stay on the menu; who chooses one is told that it is gone.
    sequence(kClearKB);
    for (const auto item : std::initializer_list<std::int16_t>{1, -1, 32767})
        form().mnKnowledgeBaseLink_Click(item);
    form().mnuRemoteConnection_Click(7);
    EXPECT_EQ(launcher.shellStarts.size(), 3U);
    EXPECT_EQ(window().failures().size(), 5U);
    EXPECT_EQ(window().failures().back(), "This entry no longer exists.");
    terminal->IClientMain_OnLogOut();
    EXPECT_FALSE(window().remoteMenuEnabled());
}

TEST_F(InputTest, PrintsTheScreenOnTheChosenPrinter) {
    const ScratchFolder folder;
    form().IniFile(folder.file("settings.ini"));
    sequence(kSizeScreen, {"4", "2"});
    type("ab\r\ncd");
    form().mnuFilePrint_Click();

    HeadlessPrinters& printers = platform.headlessPrinters;
    const auto printOn = [&](const Texts& installed) {
        printers.installed = installed;
        form().mnuFilePrint_Click();
        return printers.printedOn;
    };
    printers.defaultPrinter = "Matrix";
    EXPECT_EQ(printOn({"Laser", "Matrix"}), "Matrix");
    EXPECT_EQ(printers.page, (Texts{"ab  ", "cd  "}));
    EXPECT_EQ(form().printerMenu().entries()[1].caption, "Matrix (default)");
    for (const auto entry : std::initializer_list<std::int16_t>{0, 2, -1}) form().mnuPrinter_Click(entry);
    EXPECT_TRUE(form().printerMenu().entries()[0].checked);
    printers.takesPages = false;
    EXPECT_EQ(printOn({"Laser", "Matrix"}), "Laser");
    EXPECT_EQ(window().failures(),
              (Texts{"There is no printer to print on.", "The screen could not be printed on Laser."}));
    EXPECT_EQ(printOn({"Matrix"}), "Matrix") << "the chosen one is gone";
    printers.whilePrinting = [this] { window().events()->Form_Close(); };
    printOn({"Matrix"});
    EXPECT_FALSE(form().isLoaded()) << "closed while its printer asked something";
}

TEST(BellLimitTest, TheBellRingsAtMostOnceASecond) {
    BellLimit limit;
    constexpr std::uint32_t kWrapped = 0U - 500;
    const std::pair<std::uint32_t, bool> rings[] = {{0, true},        {999, false},  {1000, true},
                                                    {1600, false},    {1999, false}, {2000, true},
                                                    {kWrapped, true}, {499, false},  {500, true}};
    for (const auto& [now, rung] : rings) EXPECT_EQ(limit.mayRing(now), rung) << now;
}

TEST(PrintersTest, TheScreenFillsThePage) {
    const struct {
        Size page;
        int columns, lines;
        Size cell;
    } cases[] = {{{4800, 6600}, 80, 25, {60, 120}},
                 {{4800, 1000}, 80, 25, {60, 40}},
                 {{6600, 4800}, 132, 100, {50, 48}},
                 {{10, 10}, 80, 25, {1, 1}},
                 {{100, 100}, 0, 0, {100, 100}}};
    for (const auto& c : cases) EXPECT_EQ(printedCell(c.page, c.columns, c.lines), c.cell) << c.columns;
}

}  // namespace
}  // namespace kavrelon
