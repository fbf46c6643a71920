#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/PictureName.h"
#include "support/PictureOutline.h"
#include "support/Pixels.h"

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
        {"png", 16, "\0\0\x10\0\0\0\x10\0"s, {4096, 4096}},
        {"png", 16, "\0\0\x10\0\0\0\x10\x01"s, {}},
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

TEST(Pixels, ScalingMeansWhatItDropsAndIsSmoothWhereItAdds) {
    constexpr Pixel red = 0xFFFF0000;
    const std::vector<Pixel> source{red, red, 0, 0, red, red, 0, 0};
    const auto scaled = [&](Size to) {
        std::vector<Pixel> target(static_cast<std::size_t>(to.width) * static_cast<std::size_t>(to.height));
        scalePixels(source, {4, 2}, target, to);
        return target;
    };
    EXPECT_EQ(scaled({2, 1}), (std::vector<Pixel>{red, 0}));
    EXPECT_EQ(scaled({3, 1}), (std::vector<Pixel>{red, 0x80800000, 0}));
    EXPECT_EQ(scaled({8, 1}), (std::vector<Pixel>{red, red, red, 0xBFBF0000, 0x40400000, 0, 0, 0}));
}

}  // namespace
}  // namespace kavrelon
