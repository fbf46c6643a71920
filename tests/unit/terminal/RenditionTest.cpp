#include "terminal/screen/Rendition.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

constexpr Colour kBlack = 0x000000, kRed = 0x0000FF, kGreen = 0x00FF00, kYellow = 0x00FFFF, kBlue = 0xFF0000,
                 kMagenta = 0xFF00FF, kCyan = 0xFFFF00, kWhite = 0xFFFFFF;

class RenditionTest : public ConnectedTest {
  protected:
    void set(const std::vector<int>& codes) const {
        for (const int code : codes) screen().term_setattr(std::string(1, static_cast<char>(code)));
    }
};

TEST_F(RenditionTest, CodesSetAttributeAndPen) {
    const struct {
        std::vector<int> codes;
        CellAttr attr;
        Pen pen;
    } cases[] = {
        {{}, {37, 40, 1}, {kWhite, kBlack}},
        {{5, 4}, {37, 40, 4}, {kWhite, kBlack, false, true}},
        {{4, 5}, {37, 40, 5}, {kWhite, kBlack, true, false}},
        {{30, 47}, {30, 47, 1}, {kBlack, kWhite}},
        {{31, 46}, {31, 46, 1}, {kRed, kCyan}},
        {{32, 45}, {32, 45, 1}, {kGreen, kMagenta}},
        {{33, 44}, {33, 44, 1}, {kYellow, kBlue}},
        {{34, 43}, {34, 43, 1}, {kBlue, kYellow}},
        {{35, 42}, {35, 42, 1}, {kMagenta, kGreen}},
        {{36, 41}, {36, 41, 1}, {kCyan, kRed}},
        {{7, 32}, {32, 40, 1}, {kGreen, kBlack}},
        {{8, 42}, {37, 42, 8}, {kGreen, kGreen}},
        {{31, 43, 2}, {31, 43, 2}, {0x0066FF, kYellow}},
        {{31, 43, 7, 48}, {37, 43, 1}, {kWhite, kYellow}},  // a reset keeps the background
    };
    for (const auto& c : cases) {
        set({37, 40, 1});
        set(c.codes);
        type("\rx");
        EXPECT_EQ(attr(0, 0), c.attr) << testing::PrintToString(c.codes);
        EXPECT_EQ(shown(0, 0).pen, c.pen) << testing::PrintToString(c.codes);
    }
}

TEST_F(RenditionTest, OtherCodesOnlyMarkTheScreenAsWritten) {
    for (int code = 0; code < 256; ++code) {
        form().EraseScreen();
        set({code});
        EXPECT_TRUE(screen().ScreenDirty()) << code;
        if (code <= 2 || code == 4 || code == 5 || code == 7 || code == 8 || (code >= 30 && code <= 37) ||
            (code >= 40 && code <= 48)) {
            continue;
        }
        set({34, 45, 4, code});
        type("x");
        EXPECT_EQ(attr(0, 0), (CellAttr{34, 45, 4})) << code;
        EXPECT_EQ(shown(0, 0).pen, (Pen{kBlue, kMagenta, false, true})) << code;
    }
}

TEST_F(RenditionTest, TheFirstCharacterIsTheCode) {
    screen().term_setattr("\x1F tail");
    screen().term_setattr("0");
    EXPECT_EQ(screen().rendition().CurAttr(), (CellAttr{37, 40, 1}));
    EXPECT_EQ(errorOf([this] { screen().term_setattr(""); }), 5);
}

TEST(Blend, RoundsEachComponentHalfToEven) {
    EXPECT_EQ(BlendColour(0x010305, 0, 0.5), 0x000202U);
    EXPECT_EQ(BlendColour(0x123456, 0x654321, 0.25), 0x273849U);
}

}  // namespace
}  // namespace kavrelon
