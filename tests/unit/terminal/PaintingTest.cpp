#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace rows;
using Marks = std::vector<Point>;

constexpr Pen kWhiteOnBlack{0xFFFFFF, 0x000000};

class PaintingTest : public ConnectedTest {
  protected:
    void selectAll() const {
        screen().SelectionShown(true);
        screen().RepaintScreen(true);
    }
};

TEST_F(PaintingTest, EachByteIsDrawnAtOnceAndThePenSetWhenItChanges) {
    type("a");
    const int pens = window().penCalls();
    sequence(kSetAttribute, {"31"});
    sequence(kSetAttributes, {"37", "44;40;7;1"});
    EXPECT_EQ(drawn([this] { type("bcdef\r\n"); }), 5);
    EXPECT_EQ(window().penCalls(), pens);
    sequence(kSetAttribute, {"31"});
    type("ijk");
    EXPECT_EQ(window().penCalls(), pens + 1);
}

TEST_F(PaintingTest, RedrawscreenDrawsForASelectionOrOnDemand) {
    const struct {
        bool selected, paintOnly, memory;
        int cells;
    } cases[] = {{false, false, false, 0},
                 {true, false, false, 2000},
                 {false, true, false, 2000},
                 {false, true, true, 0}};
    type("text");
    for (const auto& c : cases) {
        screen().UseMemoryDC(c.memory);
        if (c.selected) selectAll();
        EXPECT_EQ(drawn([&] { form().Redrawscreen(c.paintOnly); }), c.cells);
        EXPECT_FALSE(screen().SelectionShown());
        EXPECT_EQ(shown(0, 0).pen, kWhiteOnBlack);
    }
}

TEST_F(PaintingTest, NothingIsDrawnWhilePaintingIsOff) {
    type("text");
    blink();
    const auto before = picture();
    const int pens = window().penCalls();
    screen().PaintOn(false);
    type("more\r\n" + std::string(100, '\n'));
    for (const int row : {kHome, kClearEndOfLine, kClearStartOfLine, kClearLine, kClearEndOfScreen,
                          kClearBeginOfScreen, kClearScreen}) {
        sequence(row);
    }
    sequence(kSetAttribute, {"31"});
    blink();
    selectAll();
    form().Redrawscreen();
    form().Form_Paint();
    setSize(80, 25);
    screen().AutoSize(false);
    form().mnuFontStyle_Click(3);
    EXPECT_EQ(window().penCalls(), pens);
    EXPECT_EQ(picture(), before);
    EXPECT_FALSE(screen().cursorDrawn());
}

TEST_F(PaintingTest, CursorBlinksOnItsCell) {
    blink();
    screen().SetCursor(80, 5);
    EXPECT_EQ(marks(), (Marks{{0, 0}}));
    blink();
    blink();
    form().Form_Deactivate();
    blink();
    EXPECT_EQ(marks(), (Marks{{80, 5}}));
    form().Form_Activate();
    for (const bool on : {false, true}) {
        form().TurnOnOffCursor(on);
        EXPECT_EQ(window().timerEnabled(TermTimer::cursor_timer), on);
        EXPECT_EQ(marks(), (Marks{{80, 5}}));
    }
    blink();
    form().TurnOnOffCursor(true);
    EXPECT_EQ(marks(), Marks{});
}

TEST_F(PaintingTest, TheCaretFollowsTheCursorWhereABlockEnds) {
    const auto caretAt = [this](int column, int row) {
        return window().caret() == screen().grid().cellBlock(column, row);
    };
    terminal->IClientReceive_ReceiveEnd();
    type("a\r\nbc");
    sequence(kCursorPosition, {"7", "3"});
    EXPECT_TRUE(caretAt(0, 0)) << "it costs the bytes nothing";
    terminal->IClientReceive_ReceiveEnd();
    EXPECT_TRUE(caretAt(2, 6));
    const Rect before = window().caret();
    window().resize({700, 500});
    EXPECT_TRUE(caretAt(2, 6) && window().caret() != before);
    screen().SetCursor(80, 1);
    blink();
    EXPECT_TRUE(caretAt(80, 1)) << "moved by a host";
    screen().SetCursor(4, 4);
    form().Form_GotFocus();
    EXPECT_TRUE(caretAt(4, 4));
    form().Unload();
    terminal->IClientReceive_ReceiveEnd();
}

TEST_F(PaintingTest, TheLeastWindowShowsTheWholeScreen) {
    EXPECT_EQ(form().leastInnerSize(), (Size{80 * 8, 25 * 16}));
    setSize(132, 50);
    EXPECT_EQ(form().leastInnerSize(), (Size{132 * 8, 50 * 16}));
    screen().CharsPerLine(-5);
    EXPECT_EQ(form().leastInnerSize().width, 0);
    screen().AutoSize(false);
    EXPECT_EQ(form().leastInnerSize(), Size{});
}

TEST_F(PaintingTest, CursorMarkGivesWayToOutputAndComesBackAfterABurst) {
    const std::pair<std::function<void()>, Marks> cases[] = {
        {[this] { screen().CursorY(24), type("\n"); }, {}},
        {[this] { type("\b"); }, {}},
        {[this] { screen().CursorX(0), type("\b"); }, {{9, 3}}},
        {[this] { sequence(kSaveCursor); }, {{9, 3}}},
        {[this] { sequence(kClearScreen); }, {{0, 0}}},
        {[this] { form().EraseScreen(); }, {}},
        {[this] { selectAll(); }, {{9, 3}}},
        {[this] { setSize(5, 2); }, {{5, 1}}},
        {[this] { form().DataReceiveStart(), screen().RepaintScreen(), form().DataReceiveEnd(); }, {{9, 3}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << &c - cases);
        setSize(80, 25);
        form().EraseScreen();
        screen().SetCursor(9, 3);
        if (screen().cursorDrawn()) blink();
        blink();
        ASSERT_EQ(marks(), (Marks{{9, 3}}));
        c.first();
        EXPECT_EQ(marks(), c.second);
        blink();
        form().DataReceiveEnd();
        form().TurnOnOffCursor(true);
        EXPECT_EQ(marks().size(), 1 - c.second.size());
    }
}

TEST_F(PaintingTest, ABracketLeftOpenHoldsTheMarkUntilAByteIsPrinted) {
    const auto fail = [this] { EXPECT_EQ(errorOf([this] { sequence(kCursorPosition, {"x"}); }), 13); };
    const auto begin = [this] { form().DataReceiveStart(); };
    for (const auto& leaveOpen : {std::function<void()>(fail), std::function<void()>(begin)}) {
        for (const bool printed : {false, true}) {
            // While nothing is drawn, which is when bytes take the shortest way.
            screen().PaintOn(false);
            type("ab");
            leaveOpen();
            if (printed) type("c");
            screen().PaintOn(true);
            blink();
            EXPECT_EQ(screen().cursorDrawn(), printed);
        }
        blink();
    }
}

TEST_F(PaintingTest, PaintClearsWhatIsOutsideTheGrid) {
    setSize(20, 2);
    for (const bool asked : {false, true}) {
        screen().SetCursor(0, 0);
        type(std::string(20, 'x'));
        blink();
        EXPECT_EQ(marks(), (Marks{{20, 0}}));
        // The mark is taken off without being drawn.
        screen().PaintOn(false);
        blink();
        screen().PaintOn(true);
        asked ? form().Redrawscreen(true) : form().Form_Paint();
        EXPECT_EQ(marks(), Marks{});
    }
}

}  // namespace
}  // namespace kavrelon
