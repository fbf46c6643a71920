#include "terminal/screen/Rendition.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

class RenditionTest : public ConnectedTest {
  protected:
    void set(const std::vector<int>& codes) const {
        for (const int code : codes) screen().term_setattr(std::string(1, static_cast<char>(code)));
    }
};

TEST_F(RenditionTest, EachColourHasItsCodes) {
    constexpr Colour kColours[] = {0x000000, 0x0000FF, 0x00FF00, 0x00FFFF,
                                   0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};
    for (std::size_t i = 0; i < std::size(kColours); ++i) {
        set({30 + static_cast<int>(i), 47 - static_cast<int>(i)});
        type("\rx");
        EXPECT_EQ(shown(0, 0).pen, (Pen{kColours[i], kColours[7 - i]})) << i;
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
        EXPECT_EQ(shown(0, 0).pen, (Pen{0xFF0000, 0xFF00FF, false, true})) << code;
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
