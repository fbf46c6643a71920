#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/PictureName.h"
#include "support/PictureOutline.h"
#include "support/Pixels.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;

TEST(PictureName, OnlyAPlainFileNameIsAccepted) {
    const auto expectAll = [](bool accepted, const std::string& names) {
        std::istringstream list(names);
        for (std::string name; std::getline(list, name, ',');)
            EXPECT_EQ(isPlainFileName(name), accepted) << name;
    };
    const std::string longest(255, 'a');
    expectAll(
        true,
        "logo.bmp,LOGO,a b.c.png,.hidden,sch\xF6n.jpg,x;y.gif,console.png,COMPANY.bmp,LPT.bmp,com10.gif,"
        "nul1.bmp,~1.ico,%41.png,#1.wmf,null.tar.gz,my-com1," +
            longest);
    expectAll(
        false,
        ",.,..,...,a.,a , ,a. .,/etc/passwd,..\\a.bmp,a/b,a\\b,\\a,\\\\host\\a.bmp,//host/a,\\\\?\\C:\\a,"
        "C:a.bmp,c:,a.bmp:stream,a.bmp::$DATA,file:a.bmp,http://host/a.bmp,CON,con.bmp,Nul,NUL .txt,"
        "nul.tar.gz,aux,PRN.x,COM1,com9.bmp,LPT0,lpt1 .png,COM\xB9,com\xC2\xB3.png,CONIN$,conout$.bmp,"
        "clock$,*.bmp,a?.bmp,a\"b,<a>,a|b,a\nb,a\tb,a\x7F,a\0b,"s +
            longest + 'a');
}

using Bytes = std::vector<std::uint8_t>;

Bytes sample(const std::string& format) {
    std::ifstream file("tests/windows/pictures/quarters." + format, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(PictureOutlines, OnlyWholeFilesWithinTheLimitsHaveOne) {
    for (const char* format : {"bmp", "gif", "ico", "jpg", "png", "wmf"}) {
        SCOPED_TRACE(format);
        const Bytes whole = sample(format);
        EXPECT_TRUE(outlineOf(whole));
        // Without its last byte an animation is still whole: it needs no end mark.
        for (auto end = whole.begin(); end + 1 != whole.end(); ++end)
            EXPECT_FALSE(outlineOf(Bytes(whole.begin(), end))) << end - whole.begin();
        for (std::size_t place = 0; place < whole.size(); ++place) {
            for (const int value : {0, 1, 0x7F, 0xFF}) {
                Bytes changed = whole;
                changed[place] = static_cast<std::uint8_t>(value);
                const auto outline = outlineOf(changed);
                EXPECT_TRUE(!outline || (withinPictureLimits(outline->around(outline->size)) &&
                                         outline->length <= changed.size()));
            }
        }
    }
}

TEST(PictureOutlines, SizesAreThoseOfTheContent) {
    const struct {
        const char* format;
        std::size_t place;
        std::string bytes;
        Size size;
    } cases[] = {
        {"bmp", 18, "\x60\x6A\0\0\x60\x6A"s, {}},
        {"gif", 6, "\x60\x6A\x60\x6A", {}},
        {"png", 18, "\x60\x6A\0\0\x60\x6A"s, {}},
        {"ico", 26, "\x60\x6A\0\0\x60\x6A"s, {}},
        {"gif", 6, "\x10", {16, 6}},
        {"gif", 0x22, "\x09", {17, 6}},
    };
    for (const auto& c : cases) {
        Bytes bytes = sample(c.format);
        std::ranges::copy(c.bytes, bytes.begin() + static_cast<std::ptrdiff_t>(c.place));
        const auto outline = outlineOf(bytes);
        EXPECT_EQ(outline ? outline->around(outline->size) : Size{}, c.size) << c.format << ' ' << c.place;
    }
    // Of an icon's images, both of this size, the one of more colours counts.
    Bytes icon = sample("ico");
    icon[4] = 2;
    icon[18] = 38;
    icon.insert(icon.begin() + 22, icon.begin() + 6, icon.begin() + 22);
    icon[35] = 1;
    icon.insert(icon.end(), icon.begin() + 38, icon.end());
    icon[38 + 14] = 4;
    EXPECT_EQ(outlineOf(icon)->frame, 1);
}

TEST(Pixels, ScalingKeepsEdgesAndMeansWhatItDrops) {
    constexpr Pixel red = 0xFFFF0000;
    const std::vector<Pixel> source{red, red, 0, 0, red, red, 0, 0};
    const auto scaled = [&](Size to) {
        std::vector<Pixel> target(static_cast<std::size_t>(to.width) * static_cast<std::size_t>(to.height));
        scalePixels(source, {4, 2}, target, to);
        return target;
    };
    EXPECT_EQ(scaled({2, 1}), (std::vector<Pixel>{red, 0}));
    EXPECT_EQ(scaled({3, 1}), (std::vector<Pixel>{red, 0x80800000, 0}));
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
    // Whatever happens in whatever order, the window shows what it would if all of it were drawn again.
    std::mt19937 random(20);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    const auto text = [&](int most) { return std::to_string(upTo(most)); };
    const auto cells = [this] {
        std::string result;
        for (const ShownCell& cell : picture()) (result += static_cast<char>(cell.ch)) += cell.picture;
        return result;
    };
    for (int step = 0; step < 2000; ++step) {
        screen().UseMemoryDC(step >= 1000);
        switch (upTo(5)) {
            case 0:
                command("IMAGE " + text(9) + ";" + text(5) + ";" + text(9) + ";" + text(5) + ";" + text(2) +
                        ";" + "ABt"[upTo(2)] + ".png");
                break;
            case 1:
                command("IMAGECLEAR " + text(2));
                break;
            case 2:
                screen().SetCursor(upTo(7), upTo(3));
                screen().ClearEndOfLine();
                break;
            default:
                type(std::string(1, static_cast<char>('a' + upTo(25))) + (upTo(3) == 0 ? "\r\n" : ""));
        }
        if (upTo(1) == 0) blink();
        EXPECT_EQ(marks().size(), screen().cursorDrawn() ? 1 : 0);
        screen().HideCursor();
        const auto before = cells();
        screen().layOutAndRepaint();
        ASSERT_EQ(cells(), before) << "step " << step << ": " << seen();
    }
}

}  // namespace
}  // namespace kavrelon
