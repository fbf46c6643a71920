#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace rows;

// A screen of the largest size shows that many cells in the headless window, each of them whole.
constexpr int kSeenColumns = HeadlessWindow::kInner.width / HeadlessWindow::kCell.width;
constexpr int kSeenLines = HeadlessWindow::kInner.height / HeadlessWindow::kCell.height;
constexpr int kSeen = kSeenColumns * kSeenLines;

/// What a user sees of a window: a blank shows nothing of its pen but the background.
std::string seen(const Session& session) {
    std::string all;
    for (int cell = 0; cell < kSeen; ++cell) {
        const ShownCell at = session.shown(cell % kSeenColumns, cell / kSeenColumns);
        for (const Colour colour : {at.ch == ' ' && !at.pen.underline ? 0 : at.pen.text, at.pen.back}) {
            all += std::to_string(colour) + ' ';
        }
        all += {static_cast<char>(at.ch), at.inverted ? '!' : ' ', at.picture};
    }
    return all;
}

class SeenCellsTest : public ConnectedTest {
  protected:
    void paint(const Rect& due) const {
        window().due = due;
        form().Form_Paint();
        window().due.reset();
    }
};

TEST_F(SeenCellsTest, NoSequenceDrawsMoreThanTheWindowShows) {
    constexpr std::int16_t kSize = 1024;
    platform.pictureFiles.emplace("/nowhere/Pictures/t.png", HeadlessPicture('t', false));
    for (const bool pictures : {false, true}) {
        for (std::int16_t row = 1; row <= terminal->IClientEscTree_EscTreeCount(); ++row) {
            SCOPED_TRACE(testing::Message() << "row " << row << (pictures ? " below pictures" : ""));
            if (screen().CharsPerLine() != kSize) setSize(kSize, kSize);
            screen().SetCursor(row % 2, row % 3 == 0 ? kSize : 0);
            bool processed = false;
            for (int number = 0; pictures && screen().pictures().all().size() < 3; ++number) {
                form().ProcessCmd("IMAGE 1;1;999;999;" + std::to_string(number) + ";t.png", processed);
            }
            std::vector<std::string> fields{"1", "2", "3", "4", "5", "text"};
            if (row == kSizeScreen) fields = {"1024", "1024"};
            EXPECT_LE(drawn([&] { errorOf([&] { sequence(row, fields); }); }), kSeen);
        }
    }
}

TEST_F(SeenCellsTest, AFullStackDrawsNoMoreThanOneWindow) {
    for (int depth = 1; depth <= 100; ++depth) EXPECT_LE(drawn([this] { sequence(kNewScreen); }), 2000);
    EXPECT_LE(drawn([this] { sequence(kSizeScreen, {"1024", "1024"}); }), kSeen);
    EXPECT_LE(drawn([this] { sequence(kCloseScreen); }), 2000);
}

TEST_F(SeenCellsTest, APaintDrawsTheCellsThatTheDueAreaTouches) {
    EXPECT_EQ(drawn([this] { sequence(kSizeScreen, {"1024", "1024"}); }), kSeen);
    const struct {
        Rect due;
        int cells;
    } cases[] = {{{400, 400, 410, 410}, 2}, {{399, 399, 401, 401}, 4},  {{0, 0, 8, 16}, 1},
                 {{0, 0, 1056, 1}, 132},    {{-50, -50, 0, 0}, 0},      {{1055, 799, 9999, 9999}, 1},
                 {{10, 10, 10, 99}, 0},     {{0, 0, 1056, 800}, kSeen}, {{20, 20, 8, 8}, 0}};
    blink();
    const std::string before = seen(*this);
    for (const auto& c : cases) EXPECT_EQ(drawn([&] { paint(c.due); }), c.cells) << c.due.left;
    EXPECT_TRUE(seen(*this) == before);
    setSize(10, 2);
    EXPECT_EQ(drawn([this] { paint({0, 0, 400, 300}); }), 0) << "beside the grid, which is centred";
}

TEST_F(SeenCellsTest, APaintTakesAHighlightOffWhereverItIs) {
    for (const bool memory : {false, true}) {
        screen().UseMemoryDC(memory);
        type("some text that is marked\r\n");
        const std::string before = seen(*this);
        screen().SelectionShown(true);
        screen().RepaintScreen(true, 3, 1, 12, 2);
        EXPECT_TRUE(seen(*this) != before);
        const int calls = drawn([this] { paint({400, 400, 410, 410}); });
        EXPECT_LE(calls, memory ? 2000 : 20 + 4);
        EXPECT_TRUE(seen(*this) == before);
        EXPECT_EQ(drawn([this] { paint({400, 400, 401, 401}); }), memory ? 0 : 1);
    }
}

TEST_F(SeenCellsTest, AWindowIsPaintedOnceWhenItIsShown) {
    const std::shared_ptr<frmTerm> hidden = frmTerm::load(platform);
    HeadlessWindow& unseen = *platform.windowOf(*hidden);
    for (const bool memory : {false, true}) {
        hidden->screen().UseMemoryDC(memory);
        for (const char ch : std::string("first\r\n\n\nlast" + std::string(30, '\n')))
            hidden->WriteTerm(static_cast<std::uint8_t>(ch));
        hidden->screen().ClearLine();
        std::int16_t lines = 20;
        hidden->screen().ScreenSize(70, lines);
        hidden->cursor_timer_Timer();
        hidden->Form_Paint();
        hidden->screen().SetCursor(3, 4);
        hidden->WriteTerm('x');
        hidden->cursor_timer_Timer();
    }
    EXPECT_TRUE(hidden->screen().cursorDrawn());
    EXPECT_EQ(unseen.drawCalls() + unseen.penCalls(), 0);
    EXPECT_EQ(unseen.cells().shown(3, 4), ShownCell{});
    unseen.show();
    EXPECT_EQ(unseen.drawCalls(), 70 * 20);
    EXPECT_EQ(unseen.cells().shown(3, 4).ch, 'x');
    EXPECT_TRUE(unseen.cells().shown(4, 4).inverted);
}

}  // namespace
}  // namespace kavrelon
