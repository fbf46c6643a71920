#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "terminal/modShellandWait.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

constexpr int kSizeScreen = 35, kNewScreen = 36, kCloseScreen = 37, kAddKnowledgeBase = 41,
              kClearKnowledgeBase = 42, kAddRemote = 43;
constexpr std::int16_t kCtrl = 17;

class InputTest : public ConnectedTest {
  protected:
    /// A key going down; what is left of its code.
    std::int16_t key(std::int16_t code, std::int16_t shift = 0) const {
        form().Form_KeyDown(code, shift);
        return code;
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
    const struct {
        std::int16_t code;
        bool ctrl;
        bool usedUp;
    } cases[] = {
        {38, false, false}, {65, false, false}, {121, false, true}, {115, false, true},
        {65, true, true},   {67, true, true},   {81, true, true},   {86, true, true},
        {38, true, false},  {19, true, false},  {16, true, false},  {42, true, false},
    };
    for (const auto& c : cases) {
        if (c.ctrl) key(kCtrl, 2);
        EXPECT_EQ(key(c.code) == 0, c.usedUp) << c.code << (c.ctrl ? " with Ctrl" : "");
        form().Form_KeyUp(kCtrl, 0);
    }
}

TEST_F(InputTest, CtrlNeverSticks) {
    const struct {
        const char* how;
        std::function<void()> release;
        bool released;
    } cases[] = {
        {"key up", [this] { form().Form_KeyUp(kCtrl, 0); }, true},
        {"focus lost", [this] { form().Form_LostFocus(); }, true},
        {"another key up", [this] { form().Form_KeyUp(65, 2); }, false},
    };
    for (const auto& c : cases) {
        key(kCtrl, 2);
        c.release();
        parent->calls.clear();
        form().Form_KeyPress('a');
        EXPECT_EQ(parent->calls, Texts{c.released ? "data a" : "data !"}) << c.how;
    }
}

TEST_F(InputTest, InactiveOrLockedKeyboardsSendNothing) {
    form().InputOn(false);
    key(38);
    form().Form_KeyPress('a');
    key(114);  // still resolved, and used up
    EXPECT_EQ(key(112), 0);
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
    form().mnuRightClickPaste_Click();
    parent->failing = "break";
    key(kCtrl, 2);
    EXPECT_EQ(key(19, 2), 19);
    parent->failing.clear();
    parent->calls.clear();
    key(65, 2);
    EXPECT_EQ(parent->calls, Texts{"data \x01"});
}

TEST_F(InputTest, KeysMayArriveWhileScreensArePushedClosedAndDestroyed) {
    platform.pendingMessages = {[this] { form().Form_KeyPress('a'); },
                                [this] { sequence(kNewScreen); },
                                [this] { form().Form_KeyPress('b'); },
                                [this] { sequence(kCloseScreen); },
                                [this] { drag(at(0, 0), at(3, 3)); },
                                [this] { form().mnuFileExit_Click(); },
                                [this] { key(38); },
                                [this] { drag(at(0, 0), at(3, 3)); },
                                [this] { form().mnuFilePrint_Click(); }};
    terminal->IClientReceive_ReceiveEnd();
    EXPECT_EQ(parent->calls, (Texts{"data a", "data b", "closed"}));
}

TEST_F(InputTest, DragsInEveryDirectionMarkTheSameCells) {
    setSize(6, 3);
    type("abcdefghijklmnopqr");
    const Texts expected{"cdeijk"};
    const Point corners[][2] = {
        {at(2, 0), at(4, 1)}, {at(4, 1), at(2, 0)}, {at(2, 1), at(4, 0)}, {at(4, 0), at(2, 1)}};
    for (const auto& [from, to] : corners) {
        drag(from, to);
        EXPECT_EQ(shown(2, 0).pen.back, 0xFFFFFFU);
        EXPECT_EQ(shown(5, 1).pen.back, 0U);
        form().mnuRightClickCopy_Click();
        EXPECT_EQ(platform.clipboard, "cdeijk");
        EXPECT_EQ(shown(2, 0).pen.back, 0U) << "the highlight is gone after the copy";
    }
}

TEST_F(InputTest, HighlightFollowsTheMouse) {
    setSize(6, 3);
    type("abcdefghijklmnopqr");
    form().Form_MouseDown(MouseButton::Left, at(1, 0));
    form().Form_MouseMove(true, at(4, 2));
    form().Form_MouseMove(true, at(2, 1));
    int reversed = 0;
    for (const ShownCell& cell : picture()) reversed += cell.pen.back == 0xFFFFFF;
    EXPECT_EQ(reversed, 4);
    form().Form_MouseMove(false, at(5, 2));
    EXPECT_EQ(shown(5, 2).pen.back, 0U) << "without the button nothing is marked";
}

TEST_F(InputTest, ContextMenuFollowsWhatIsAllowed) {
    const struct {
        bool cutOk, pasteOk, selected;
        HeadlessWindow::ContextMenu menu;
    } cases[] = {
        {true, true, false, {false, true}},
        {true, true, true, {true, true}},
        {false, true, true, {false, true}},
        {true, false, true, {true, false}},
    };
    for (const auto& c : cases) {
        form().Form_MouseDown(MouseButton::Left, at(0, 0));
        form().CutOk(c.cutOk);
        form().PasteOk(c.pasteOk);
        if (c.selected) form().Form_MouseMove(true, at(3, 0));
        form().Form_MouseUp(MouseButton::Right, at(9, 9));
        ASSERT_TRUE(window().contextMenu());
        EXPECT_EQ(*window().contextMenu(), c.menu);
    }
}

TEST_F(InputTest, HeldClipboardRingsAndLosesNothing) {
    std::vector<int> bells;
    platform.onBeep = [&](int frequency, int) { bells.push_back(frequency); };
    type("text");
    platform.clipboard = "before";
    platform.clipboardHeld = true;
    drag(at(0, 0), at(3, 0));
    form().mnuRightClickCopy_Click();
    form().mnuRightClickPaste_Click();
    form().mnuRightClickClear_Click();
    EXPECT_EQ(bells, (std::vector<int>{100, 100, 100}));
    EXPECT_EQ(platform.clipboard, "before");
    EXPECT_TRUE(parent->calls.empty());
    platform.clipboardHeld = false;
    drag(at(0, 0), at(3, 0));
    form().mnuRightClickCopy_Click();
    EXPECT_EQ(platform.clipboard, "text");
}

TEST_F(InputTest, LargePasteIsSentWhole) {
    platform.clipboard = std::string(1 << 20, 'x');
    form().mnuRightClickPaste_Click();
    ASSERT_EQ(parent->calls.size(), 1U);
    EXPECT_EQ(parent->calls[0].size(), platform.clipboard.size() + std::string("data ").size());
}

TEST(LauncherTest, TakesCommandTextsApart) {
    const std::string longText(32000, 'x');
    const struct {
        std::string text, program, parameters, directory;
    } cases[] = {
        {"a.exe", "a.exe", "", ""},
        {"a.exe  -x  y ", "a.exe", "-x  y ", ""},
        {"\"C:\\Two Words\\b.exe\"   one \"two\"", "C:\\Two Words\\b.exe", "one \"two\"", "C:\\Two Words"},
        {"\"C:\\open quote -x", "C:\\open quote -x", "", "C:"},
        {"\"\" rest", "", "rest", ""},
        {"C:\\dir\\c.exe a", "C:\\dir\\c.exe", "a", "C:\\dir"},
        {"http://localhost/x y", "http://localhost/x", "y", ""},
        {"", "", "", ""},
        {" leading", "", "leading", ""},
        {longText, longText, "", ""},
    };
    for (const auto& c : cases) {
        const auto command = modShellandWait::split(c.text, {});
        EXPECT_EQ(command.program, c.program);
        EXPECT_EQ(command.parameters, c.parameters);
        EXPECT_EQ(command.directory, c.directory) << c.text;
        EXPECT_EQ(modShellandWait::split(c.text, "D:\\given").directory, "D:\\given");
    }
}

TEST(LauncherTest, OnlySomeFailuresGetASecondAttempt) {
    const struct {
        long shellResult;
        long task;
        bool secondAttempt;
        long result;
    } cases[] = {
        {42, 7000, false, 42}, {33, 7000, false, 33}, {32, 7000, true, 7000}, {0, 7000, true, 7000},
        {2, 0, true, 2},       {5, 7000, false, 5},   {26, 7000, false, 26},  {31, 7000, false, 31},
    };
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
    sequence(kAddKnowledgeBase, {"http://localhost/a", "A"});
    EXPECT_FALSE(window().remoteMenuEnabled());
    sequence(kAddRemote, {"\"C:\\My Tools\\t.exe\"  /x", "Tool"});
    EXPECT_TRUE(window().remoteMenuEnabled());
    EXPECT_TRUE(launcher.shellStarts.empty()) << "nothing starts without the user's choice";
    form().mnKnowledgeBaseLink_Click(1);
    form().mnuRemoteConnection_Click(0);
    EXPECT_EQ(launcher.shellStarts[0], (HeadlessLauncher::Start{"http://localhost/a", "", ""}));
    EXPECT_EQ(launcher.shellStarts[1],
              (HeadlessLauncher::Start{"C:\\My Tools\\t.exe", "/x", "C:\\My Tools"}));
    EXPECT_TRUE(window().failures().empty());

    launcher.shellResult = 5;
    form().mnuRemoteConnection_Click(0);
    EXPECT_EQ(window().failures(),
              Texts{"Unable to start Program: \"C:\\My Tools\\t.exe\"  /x\nError: result 5"});
    // The items of a cleared knowledge base stay on the menu; choosing one says what is the matter.
    sequence(kClearKnowledgeBase);
    const std::size_t starts = launcher.shellStarts.size();
    for (const auto item : std::initializer_list<std::int16_t>{1, -1, 32767})
        form().mnKnowledgeBaseLink_Click(item);
    form().mnuRemoteConnection_Click(7);
    EXPECT_EQ(launcher.shellStarts.size(), starts);
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
    EXPECT_EQ(window().failures(), Texts{"There is no printer to print on."});

    HeadlessPrinters& printers = platform.headlessPrinters;
    printers.installed = {"Laser", "Matrix"};
    printers.defaultPrinter = "Matrix";
    EXPECT_EQ(form().printerMenu().entries()[1].caption, "Matrix (default)");
    form().mnuFilePrint_Click();
    EXPECT_EQ(printers.printedOn, "Matrix");
    EXPECT_EQ(printers.page, (Texts{"ab  ", "cd  "}));

    for (const auto entry : std::initializer_list<std::int16_t>{0, 2, -1}) form().mnuPrinter_Click(entry);
    EXPECT_TRUE(form().printerMenu().entries()[0].checked);
    printers.takesPages = false;
    form().mnuFilePrint_Click();
    EXPECT_EQ(printers.printedOn, "Laser");
    EXPECT_EQ(window().failures().back(), "The screen could not be printed on Laser.");
    printers.installed = {"Matrix"};  // the chosen one is gone
    form().mnuFilePrint_Click();
    EXPECT_EQ(printers.printedOn, "Matrix");
}

}  // namespace
}  // namespace kavrelon
