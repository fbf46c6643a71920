#include "gdi/pcMemDC.h"
#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {
namespace {

TEST(WindowMemDc, GrowsNeverShrinksAndFailsIntoNothing) {
    pcMemDC surface;
    surface.hWnd(GetDesktopWindow());
    surface.Width(100);
    EXPECT_FALSE(surface.IsMemDC());
    surface.Height(40);
    EXPECT_TRUE(surface.IsMemDC());
    SetPixel(surface.hDc(), 5, 5, kWhite);
    surface.Width(50);
    EXPECT_EQ(surface.Width(), 100);
    EXPECT_EQ(GetPixel(surface.hDc(), 5, 5), kWhite);
    surface.Width(200);
    EXPECT_EQ(surface.Height(), 40);
    EXPECT_EQ(GetPixel(surface.hDc(), 5, 5), kBlack);
    SetPixel(surface.hDc(), 199, 39, kWhite);
    EXPECT_EQ(GetPixel(surface.hDc(), 199, 39), kWhite);

    surface.hWnd(reinterpret_cast<HWND>(ULONG_PTR{0xBAD}));
    surface.Width(300);
    EXPECT_FALSE(surface.IsMemDC());
    EXPECT_EQ(surface.Width(), 0);
    surface.SetFont({.Name = "Arial", .Size = 8});
    surface.Cls(nullptr);
    surface.Draw(nullptr);
}

TEST(WindowMemDc, TakesPicturesAndDrawsAPartOrTheWhole) {
    constexpr COLORREF kMark = RGB(1, 2, 3);
    const OwnedContext painter(CreateCompatibleDC(nullptr));
    const Bitmap bitmap(CreateBitmap(30, 20, 1, 32, nullptr));
    {
        const Selected selected(painter.get(), bitmap.get());
        PatBlt(painter.get(), 0, 0, 30, 20, WHITENESS);
        SetPixel(painter.get(), 29, 19, kMark);
    }
    pcMemDC picture;
    picture.CreateFromPicture(bitmap.get());
    EXPECT_EQ(picture.Width(), 30);
    EXPECT_EQ(picture.Height(), 20);

    pcMemDC target;
    target.Width(60);
    target.Height(60);
    picture.Draw(target.hDc());
    picture.Draw(target.hDc(), 29, 19, 1, 1, 50, 51);
    const auto shown = [&](int x, int y) { return GetPixel(target.hDc(), x, y); };
    EXPECT_EQ(shown(0, 0), kWhite);
    EXPECT_EQ(shown(29, 19), kMark);
    EXPECT_EQ(shown(30, 19), kBlack);
    EXPECT_EQ(shown(50, 51), kMark);
    EXPECT_EQ(shown(51, 51), kBlack);
    picture.Cls(target.hDc());
    EXPECT_EQ(shown(29, 19), kBlack);
    SetPixel(picture.hDc(), 0, 0, kMark);
    EXPECT_EQ(GetPixel(picture.hDc(), 0, 0), kMark);
}

TEST(WindowMemDc, MeasuresTextInItsFontAndReleasesEverything) {
    const auto use = [] {
        pcMemDC surface;
        surface.hWnd(GetDesktopWindow());
        for (LONG size = 10; size < 100; size += 10) {
            surface.Width(size);
            surface.Height(size);
            surface.SetFont({.Name = "Arial", .Size = 8});
            surface.SetFont({.Name = "Liberation Mono", .Size = 12, .Bold = true, .Italic = true});
            surface.Cls(nullptr);
        }
        TEXTMETRICA font{};
        GetTextMetricsA(surface.hDc(), &font);
        const int dotsPerInch = GetDeviceCaps(surface.hDc(), LOGPIXELSY);
        EXPECT_EQ(font.tmHeight - font.tmInternalLeading, MulDiv(12, dotsPerInch, 72));
        EXPECT_TRUE(font.tmWeight == FW_BOLD && font.tmItalic && !font.tmUnderlined && !font.tmStruckOut);
        EXPECT_EQ(surface.TextHeight("a"), font.tmHeight + 1);
        EXPECT_EQ(surface.TextWidth("ab"), 2 * surface.TextWidth("a") - 1);
        EXPECT_EQ(surface.TextWidth(""), 1);
    };
    use();
    expectNothingLeftBehind(use);
}

}  // namespace
}  // namespace kavrelon
