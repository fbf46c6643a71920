#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "terminal/screen/GridLayout.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace rows;
using Marks = std::vector<Point>;

constexpr Pen kWhiteOnBlack{0xFFFFFF, 0x000000};

class PaintingTest : public ConnectedTest {
  protected:
    /// The drawing calls that an operation makes.
    template <class Operation>
    int drawn(Operation operation) const {
        const int before = window().drawCalls();
        operation();
        return window().drawCalls() - before;
    }
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

TEST_F(PaintingTest, RepaintDrawsEachCellOnceInItsOwnPen) {
    setSize(20, 1);
    sequence(kSetAttribute, {"31"});
    type("RRRRRRRRRR");
    sequence(kSetAttributes, {"32", "4"});
    type("GGGGGGGG");
    sequence(kSetAttributes, {"35", "46;8"});
    const int pens = window().penCalls();
    EXPECT_EQ(drawn([this] { screen().RepaintScreen(); }), 20);
    EXPECT_LE(window().penCalls() - pens, 4);
    EXPECT_EQ(shown(9, 0).pen, (Pen{0x0000FF, 0}));
    EXPECT_EQ(shown(10, 0).pen, (Pen{0x00FF00, 0, false, true}));
    EXPECT_EQ(shown(18, 0).pen, kWhiteOnBlack);
    type("x");
    EXPECT_EQ(shown(18, 0).pen, (Pen{0xFFFF00, 0xFFFF00}));
}

TEST_F(PaintingTest, SelectionIsHighlightedBetweenItsCorners) {
    setSize(6, 3);
    sequence(kSetAttributes, {"31", "44;4"});
    type("abcdefghijklmnopqr");
    const Pen normal{0x0000FF, 0xFF0000, false, true}, reversed{0xFF0000, 0x0000FF};
    for (const bool selected : {true, false}) {
        screen().SelectionShown(selected);
        EXPECT_EQ(drawn([&] { screen().RepaintScreen(true, 4, 2, 2, 3); }), 6);
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 6; ++column) {
                const bool inside = row >= 1 && column >= 1 && column <= 3;
                EXPECT_EQ(shown(column, row).pen, inside && selected ? reversed : normal);
            }
        }
    }
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

TEST_F(PaintingTest, MemoryBitmapHoldsThePictureOfTheWindow) {
    Session plain;
    plain.connect();
    screen().UseMemoryDC(true);
    for (const Session* session : {static_cast<const Session*>(this), static_cast<const Session*>(&plain)}) {
        session->setSize(30, 6);
        session->sequence(kSetAttributes, {"33", "41"});
        session->type("one\r\ntwo\r\n" + std::string(70, 'w') + "\r\n\n\nlast");
        session->sequence(kCursorPosition, {"2", "5"});
        for (const int row :
             {kClearEndOfLine, kClearLine, kCursorUp, kClearEndOfScreen, kHome, kClearBeginOfScreen}) {
            session->sequence(row, {"1"});
        }
        session->type("end\r\n\n\n\n\n\n\nscrolled");
        session->blink();
    }
    EXPECT_EQ(drawn([this] { form().Form_Paint(); }), 0);
    EXPECT_EQ(picture(), plain.picture());
    blink();
    sequence(kClearScreen);
    form().Form_Paint();
    EXPECT_EQ(picture(), std::vector<ShownCell>(std::size_t{6} * 31));
}

TEST_F(PaintingTest, MinimisedWindowDrawsNothingUntilItIsRestored) {
    type("before");
    window().setState(WindowState::Minimised);
    EXPECT_EQ(drawn([this] { type("\rafter "); }), 0);
    EXPECT_EQ(form().PrevWindowState(), WindowState::Maximised);
    window().setState(WindowState::Normal);
    EXPECT_EQ(form().PrevWindowState(), WindowState::Normal);
    EXPECT_EQ(shownRows().front().substr(0, 7), "after  ");
    form().EraseScreen();
    EXPECT_EQ(drawn([this] { window().setState(WindowState::Maximised); }), 0) << "nothing was written";
}

TEST_F(PaintingTest, PaintClearsWhatIsOutsideTheGrid) {
    setSize(20, 2);
    type(std::string(20, 'x'));
    blink();
    EXPECT_EQ(marks(), (Marks{{20, 0}}));
    // The mark is taken off without being drawn.
    screen().PaintOn(false);
    blink();
    screen().PaintOn(true);
    form().Form_Paint();
    EXPECT_EQ(marks(), Marks{});
}

TEST_F(PaintingTest, ScreenWidthMenuKeepsTheText) {
    setSize(132, 25);
    screen().SetCursor(100, 0);
    type("far");
    setSize(80, 25);
    form().mnuFileScreenWidth_Click();
    EXPECT_EQ(shownRows()[0].substr(100), "far" + std::string(29, ' '));
    form().mnuFileScreenWidth_Click();
    EXPECT_EQ(screen().CharsPerLine(), 80);
}

TEST_F(PaintingTest, FontSizeCanBeSetWhileItDoesNotFollowTheWindow) {
    const double fitted = window().askedFontSize();
    screen().ScreenFontSize(14);
    EXPECT_EQ(window().askedFontSize(), fitted);
    screen().AutoSize(false);
    EXPECT_EQ(drawn([this] { screen().ScreenFontSize(14); }), 2000);
    EXPECT_EQ(window().askedFontSize(), 14);
    EXPECT_EQ(errorOf([this] { screen().ScreenFontSize(0); }), 5);
}

/// A surface whose cells are half as wide as they are high.
class ScalingSurface final : public TermSurface {
  public:
    Size inner;
    double points = 10;

    bool drawable() const override { return true; }
    Rect dueArea() const override { return {}; }
    void drawText(Point, std::span<const std::uint8_t>) override {}
    void setPen(const Pen&) override {}
    void drawPicture(const Picture&, const Rect&, const Rect&) override {}
    void invertBlock(const Rect&) override {}
    void clear() override {}
    void clearOutsideGrid() override {}
    void setGrid(const Rect&, Size) override {}
    void scrollGrid(const Rect&) override {}
    void setFont(const FontChoice&) override {}
    void setFontSize(double size) override { points = size; }
    double fontSize() const override { return points; }
    double pointsPerPixel() const override { return 0.75; }
    Size measureCell() override {
        const int height = roundHalfToEven(points / 0.75);
        return {(height + 1) / 2, height};
    }
    Size innerSize() const override { return inner; }
    void requestInnerSize(Size) override {}
    bool hasMemory() const override { return false; }
    bool beginMemory() override { return false; }
    void endMemory() override {}
    bool clearMemory() override { return false; }
    void keepBlock(const Rect&) override {}
    void scrollMemory(const Rect&) override {}
    void showMemory() override {}
};

TEST(GridLayout, LargestFontWhoseGridFits) {
    const struct {
        Size inner;
        int columns, lines;
        double points;
        Point origin;
    } cases[] = {
        {{800, 600}, 80, 25, 15, {0, 50}},       // 20 pixels: the width decides
        {{800, 600}, 132, 25, 9, {4, 150}},      // 12 pixels
        {{400, 200}, 10, 5, 30, {100, 0}},       // 40 pixels: the height decides
        {{1920, 1080}, 80, 25, 32.25, {80, 2}},  // 43 pixels: cells 22 x 43
        {{60, 30}, 80, 25, 4.5, {0, 0}},         // the smallest font, though it does not fit
        {{0, 0}, 80, 25, 10, {0, 0}},            // a window without an area gives no measure
    };
    for (const auto& c : cases) {
        ScalingSurface surface;
        surface.inner = c.inner;
        GridLayout grid;
        grid.layOut(surface, c.columns, c.lines, true);
        EXPECT_DOUBLE_EQ(surface.points, c.points);
        EXPECT_EQ(grid.cellOrigin(0, 0), c.origin);
    }
}

}  // namespace
}  // namespace kavrelon
