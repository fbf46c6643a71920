#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/PictureName.h"
#include "support/Pixels.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;

std::vector<std::string> namesIn(const std::string& list) {
    std::istringstream text(list);
    std::vector<std::string> names;
    for (std::string name; std::getline(text, name, ',');) names.push_back(name);
    return names;
}

TEST(PictureName, OnlyAPlainFileNameIsAccepted) {
    const std::string longest(255, 'a');
    for (const std::string& name : namesIn(
             "logo.bmp,LOGO,a b.c.png,.hidden,sch\xF6n.jpg,x;y.gif,console.png,COMPANY.bmp,LPT.bmp,com10.gif,"
             "nul1.bmp,~1.ico,%41.png,#1.wmf,null.tar.gz,my-com1," +
             longest)) {
        EXPECT_TRUE(isPlainFileName(name)) << name;
    }
    for (const std::string& name : namesIn(
             ",.,..,...,a.,a , ,a. "
             ".,/etc/passwd,..\\a.bmp,a/b,a\\b,\\a,\\\\host\\a.bmp,//host/a,\\\\?\\C:\\a,"
             "C:a.bmp,c:,a.bmp:stream,a.bmp::$DATA,file:a.bmp,http://host/a.bmp,CON,con.bmp,Nul,NUL .txt,"
             "nul.tar.gz,aux,PRN.x,COM1,com9.bmp,LPT0,lpt1 .png,COM\xB9,com\xC2\xB3.png,CONIN$,conout$.bmp,"
             "clock$,*.bmp,a?.bmp,a\"b,<a>,a|b,a\nb,a\tb,a\x7F,a\0b,"s +
             longest + 'a')) {
        EXPECT_FALSE(isPlainFileName(name)) << name;
    }
}

TEST(Pixels, ScalingKeepsEdgesAndMeansWhatItDrops) {
    constexpr Pixel red = 0xFFFF0000;
    constexpr Pixel clear = 0;
    const std::vector<Pixel> source{red, red, clear, clear, red, red, clear, clear};
    const auto scaled = [&](Size to) {
        std::vector<Pixel> target(static_cast<std::size_t>(to.width) * static_cast<std::size_t>(to.height));
        scalePixels(source, {4, 2}, target, to);
        return target;
    };
    EXPECT_EQ(scaled({2, 1}), (std::vector<Pixel>{red, clear}));
    EXPECT_EQ(scaled({1, 1}), (std::vector<Pixel>{0x80800000}));
    EXPECT_EQ(scaled({3, 1}), (std::vector<Pixel>{red, 0x80800000, clear}));
}

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
        {"IMAGECLEAR 9", "......../.AA...../.AAC..../........"},
        {"IMAGE -5;-5;1;1;7;A.png", "A......./......../..CC..../........"},
        {"IMAGE 8;4;300;300;7;A.png", "......../......../..CC..../.......A"},
        {"IMAGE 9;1;9;9;7;A.png", "......../......../..CC..../........"},
        {"IMAGE 1;1;1;1;7;A.png", "A......./......../..CC..../........"},
        {"IMAGE 1;1;1;1;7;missing.png", "......../......../..CC..../........"},
        {"IMAGE 1;1;1;1", "......../......../..CC..../........"},
        {"IMAGE 1;1;1;1;7;A.png", "A......./......../..CC..../........"},
        {"IMAGE 1;1;1;1;7;../Pictures/A.png", "......../......../..CC..../........"},
    };
    for (const auto& [text, picture] : steps) {
        command(text);
        EXPECT_EQ(seen(), picture) << text;
    }
    EXPECT_EQ(platform.picturesLookedFor.size(), 10);
    EXPECT_EQ(platform.picturesLookedFor.back(), "/nowhere/Pictures/A.png");
    for (int number = 0; number < 1000; ++number)
        command("IMAGE 1;1;1;1;" + std::to_string(number) + ";A.png");
    EXPECT_EQ(screen().pictures().all().size(), Pictures::kMost);
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

TEST_F(PictureTest, OutputBelowItNeverShowsAndAllComesBackAsTheBufferHasIt) {
    // Whatever the order of things, the window shows what a window that is drawn anew would.
    std::mt19937 random(20);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    const auto cells = [this] {
        std::vector<std::pair<char, char>> result;
        for (const ShownCell& cell : picture()) result.emplace_back(static_cast<char>(cell.ch), cell.picture);
        return result;
    };
    for (int step = 0; step < 2000; ++step) {
        screen().UseMemoryDC(step >= 1000);
        switch (upTo(5)) {
            case 0:
                command("IMAGE " + std::to_string(upTo(9)) + ";" + std::to_string(upTo(5)) + ";" +
                        std::to_string(upTo(9)) + ";" + std::to_string(upTo(5)) + ";" +
                        std::to_string(upTo(2)) + ";" + "ABt"[upTo(2)] + ".png");
                break;
            case 1:
                command("IMAGECLEAR " + std::to_string(upTo(2)));
                break;
            case 2:
                screen().SetCursor(upTo(7), upTo(3));
                screen().ClearEndOfLine();
                break;
            default:
                type(std::string(1, static_cast<char>('a' + upTo(25))) + (upTo(3) == 0 ? "\r\n" : ""));
        }
        if (upTo(1) == 0) blink();
        const std::vector<Point> marked = marks();
        EXPECT_EQ(marked.size(), screen().cursorDrawn() ? 1 : 0);
        screen().HideCursor();
        const auto before = cells();
        screen().drawAnew();
        ASSERT_EQ(cells(), before) << "step " << step << ": " << seen();
    }
}

TEST_F(PictureTest, TheSelectionStaysAroundIt) {
    command("IMAGE 2;2;3;3;1;A.png");
    form().Form_MouseDown(MouseButton::Left, screen().grid().cellOrigin(0, 0));
    form().Form_MouseMove(true, screen().grid().cellOrigin(7, 2));
    const Pen marked = shown(0, 1).pen;
    EXPECT_NE(marked, shown(0, 3).pen);
    command("IMAGECLEAR 1");
    EXPECT_EQ(seen(), "......../......../......../........");
    EXPECT_EQ(shown(1, 1).pen, marked);
    screen().Redrawscreen();
    EXPECT_EQ(shown(1, 1).pen, shown(0, 3).pen);
}

}  // namespace
}  // namespace kavrelon
