#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;

/// Pictures over a small screen that is full of dots.
class PictureTest : public ConnectedTest {
  protected:
    PictureTest() {
        for (const char letter : {'A', 'B', 'C', 't'}) {
            platform.pictureFiles.emplace("/nowhere/Pictures/"s + letter + ".png",
                                          HeadlessPicture(letter, letter != 't'));
        }
        setSize(8, 4);
        for (int row = 0; row < 4; ++row) {
            screen().SetCursor(0, row);
            type("........");
        }
    }
    void command(const std::string& text) const {
        bool processed = false;
        form().ProcessCmd(text, processed);
        EXPECT_TRUE(processed);
    }
    /// The rows as seen: a picture's letter hides the text below it.
    std::string seen() const {
        std::string text;
        for (int row = 0; row < screen().LinesPerPage(); ++row) {
            if (row > 0) text += '/';
            for (int column = 0; column < screen().CharsPerLine(); ++column) {
                const ShownCell cell = shown(column, row);
                text += cell.picture != 0 ? cell.picture : static_cast<char>(cell.ch);
            }
        }
        return text;
    }
};

TEST_F(PictureTest, StandsBetweenItsCornersUntilItIsReplacedOrCleared) {
    const std::vector<std::pair<std::string, std::string>> steps{
        {"image 2;2;3;3;7;A.png", "......../.AA...../.AA...../........"},
        {"IMAGE 3;4;3;2;8;B.png", "......../.AB...../.AB...../..B....."},
        {"IMAGE 3;3;4;3;-1;C.png", "......../.AB...../.ABC..../..B....."},
        {"IMAGECLEAR 8", "......../.AA...../.AAC..../........"},
        {"IMAGE -5;-5;1;1;7;A.png", "A......./......../..CC..../........"},
        {"IMAGE 8;4;300;300;7;A.png", "......../......../..CC..../.......A"},
        {"IMAGE 1;1;1;1;7;A.png", "A......./......../..CC..../........"},
        {"IMAGE 1;1;1;1;7;missing.png", "......../......../..CC..../........"},
        {"IMAGE 1;1;1;1;7;../Pictures/A.png", "......../......../..CC..../........"},
    };
    for (const auto& [text, picture] : steps) {
        command(text);
        EXPECT_EQ(seen(), picture) << text;
    }
    EXPECT_EQ(platform.picturesLookedFor.size(), 7);
    EXPECT_EQ(platform.picturesLookedFor.back(), "/nowhere/Pictures/missing.png");
    for (int number = 0; number < 1000; ++number)
        command("IMAGE 1;1;1;1;" + std::to_string(number) + ";A.png");
    EXPECT_EQ(screen().pictures().all().size(), Pictures::kMost);
}

TEST_F(PictureTest, DrawnAgainItLeavesRenditionAndSelectionAsTheyAre) {
    sequence(rows::kSetAttributes, {"33", "44", "4"});
    form().Form_MouseDown(MouseButton::Left, screen().grid().cellOrigin(3, 1));
    form().Form_MouseMove(true, screen().grid().cellOrigin(5, 2));
    const auto highlighted = [this] {
        std::string rows(4, '.');
        for (int row = 0; row < 4; ++row)
            rows[static_cast<std::size_t>(row)] = shown(4, row).pen.back == 0 ? '.' : 'x';
        return rows;
    };
    EXPECT_EQ(highlighted(), ".xx.");
    command("IMAGE 1;1;8;4;1;t.png");
    EXPECT_EQ(highlighted(), ".xx.");
    screen().SetCursor(0, 3);
    type("\n");
    EXPECT_EQ(highlighted(), "xx..") << "the highlight moves with its rows";
    command("IMAGECLEAR 1");
    EXPECT_EQ(highlighted(), "xx..");
    EXPECT_EQ(screen().rendition().CurAttr(), (CellAttr{33, 44, 4}));
}

TEST_F(PictureTest, GoesWithTheScreenTheSessionAndTheLogin) {
    const std::vector<std::function<void()>> ends{[this] { form().EraseScreen(); },
                                                  [this] { form().TerminalClose(); },
                                                  [this] { form().Logon(false); }};
    for (const auto& end : ends) {
        command("IMAGE 1;1;8;4;1;A.png");
        EXPECT_EQ(seen().find_first_not_of("A/"), std::string::npos);
        const std::weak_ptr<const Picture> kept = screen().pictures().all().begin()->second.picture;
        end();
        EXPECT_EQ(seen().find('A'), std::string::npos);
        EXPECT_TRUE(kept.expired());
    }
}

TEST_F(PictureTest, WindowAndMemoryBitmapShowWhatARepaintWould) {
    // Whatever happens in whatever order, the window shows what it would if all of it were drawn again.
    std::mt19937 random(20);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    const auto text = [&](int most) { return std::to_string(upTo(most)); };
    const int erases[] = {rows::kClearEndOfLine, rows::kClearLine, rows::kClearEndOfScreen,
                          rows::kClearBeginOfScreen, rows::kClearScreen};
    const auto cells = [this] {
        std::string result;
        for (const ShownCell& cell : picture()) (result += static_cast<char>(cell.ch)) += cell.picture;
        return result;
    };
    for (int step = 0; step < 2000; ++step) {
        if (step == 1000) screen().UseMemoryDC(true);
        switch (upTo(6)) {
            case 0:
                command("IMAGE " + text(9) + ";" + text(5) + ";" + text(9) + ";" + text(5) + ";" + text(2) +
                        ";" + "ABt"[upTo(2)] + ".png");
                break;
            case 1:
                command("IMAGECLEAR " + text(2));
                break;
            case 2:
                screen().SetCursor(upTo(7), upTo(3));
                sequence(erases[upTo(4)]);
                break;
            case 3: {  // what could not be drawn is drawn by the next paint
                const bool minimised = upTo(1) == 0;
                minimised ? window().setState(WindowState::Minimised) : screen().PaintOn(false);
                type("missed\n");
                minimised ? window().setState(WindowState::Normal) : screen().PaintOn(true);
                type("\r\nseen");
                form().Form_Paint();
                break;
            }
            default:
                type(std::string(1, static_cast<char>('a' + upTo(25))) + (upTo(3) == 0 ? "\r\n" : ""));
        }
        if (upTo(1) == 0) blink();
        if (upTo(1) == 0) form().Form_Paint();
        EXPECT_EQ(marks().size(), screen().cursorDrawn() ? 1 : 0);
        screen().HideCursor();
        const auto before = cells();
        screen().layOutAndRepaint();
        ASSERT_EQ(cells(), before) << "step " << step << ": " << seen();
    }
}

}  // namespace
}  // namespace kavrelon
