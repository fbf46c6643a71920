#include "terminal/Rendition.h"

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
        {{0}, {37, 40, 0}, {0x999999, kBlack}},
        {{2}, {37, 40, 2}, {0x999999, kBlack}},
        {{4}, {37, 40, 4}, {kWhite, kBlack, false, true}},
        {{5}, {37, 40, 5}, {kWhite, kBlack, true, false}},
        {{5, 4}, {37, 40, 4}, {kWhite, kBlack, false, true}},
        {{4, 5}, {37, 40, 5}, {kWhite, kBlack, true, false}},
        {{7}, {37, 40, 7}, {kBlack, kWhite}},
        {{8}, {37, 40, 8}, {kBlack, kBlack}},
        {{30, 47}, {30, 47, 1}, {kBlack, kWhite}},
        {{31, 46}, {31, 46, 1}, {kRed, kCyan}},
        {{32, 45}, {32, 45, 1}, {kGreen, kMagenta}},
        {{33, 44}, {33, 44, 1}, {kYellow, kBlue}},
        {{34, 43}, {34, 43, 1}, {kBlue, kYellow}},
        {{35, 42}, {35, 42, 1}, {kMagenta, kGreen}},
        {{36, 41}, {36, 41, 1}, {kCyan, kRed}},
        {{31, 7}, {31, 40, 7}, {kBlack, kRed}},
        {{7, 32}, {32, 40, 1}, {kGreen, kBlack}},
        {{4, 44}, {37, 44, 4}, {kWhite, kBlue, false, true}},
        {{7, 45}, {37, 45, 7}, {kMagenta, kWhite}},
        {{8, 42}, {37, 42, 8}, {kGreen, kGreen}},
        {{0, 44}, {37, 44, 0}, {0xFF9999, kBlue}},
        {{31, 43, 2}, {31, 43, 2}, {0x0066FF, kYellow}},
        {{31, 41, 7, 48}, {37, 41, 1}, {kWhite, kRed}},
    };
    for (const auto& c : cases) {
        set({37, 40, 1});
        set(c.codes);
        EXPECT_EQ(screen().rendition().attr(), c.attr) << testing::PrintToString(c.codes);
        type("\rx");
        EXPECT_EQ(attr(0, 0), c.attr);
        EXPECT_EQ(shown(0, 0).pen, c.pen) << testing::PrintToString(c.codes);
    }
}

TEST_F(RenditionTest, OtherCodesOnlyMarkTheScreenAsWritten) {
    for (int code = 0; code < 256; ++code) {
        const bool acts = code <= 2 || code == 4 || code == 5 || code == 7 || code == 8 ||
                          (code >= 30 && code <= 37) || (code >= 40 && code <= 48);
        set({34, 45});
        form().EraseScreen();
        ASSERT_FALSE(screen().ScreenDirty());
        set({code});
        EXPECT_TRUE(screen().ScreenDirty()) << code;
        if (acts) continue;
        set({34, 45, 4, code});
        type("x");
        EXPECT_EQ(attr(0, 0), (CellAttr{34, 45, 4})) << code;
        EXPECT_EQ(shown(0, 0).pen, (Pen{kBlue, kMagenta, false, true})) << code;
    }
}

TEST_F(RenditionTest, TheFirstCharacterIsTheCode) {
    set({41});
    screen().term_setattr("\x1F tail");
    EXPECT_EQ(screen().rendition().attr(), (CellAttr{31, 41, 1}));
    screen().term_setattr("0");
    EXPECT_EQ(screen().rendition().attr(), (CellAttr{37, 41, 1}));
    EXPECT_EQ(errorOf([this] { screen().term_setattr(""); }), 5);
}

TEST(Blend, RoundsEachComponentHalfToEven) {
    const struct {
        Colour from, to;
        double fraction;
        Colour blended;
    } cases[] = {
        {kWhite, kBlack, 0.4, 0x999999}, {kBlack, kWhite, 0.4, 0x666666},      {0x010305, 0, 0.5, 0x000202},
        {0, 0x010305, 0.5, 0x000202},    {0x123456, 0x654321, 0.25, 0x273849}, {kRed, kBlue, 1.0, kBlue},
    };
    for (const auto& c : cases) EXPECT_EQ(blendColour(c.from, c.to, c.fraction), c.blended);
}

}  // namespace
}  // namespace kavrelon
