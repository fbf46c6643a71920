#include <filesystem>
#include <fstream>
#include <string>

#include "gdi/GdiPicture.h"
#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr std::initializer_list<const char*> kFormats{"bmp", "gif", "ico", "jpg", "png", "wmf"};

/// Whether a pixel has a colour, but for what a lossy format changes.
bool alike(COLORREF pixel, COLORREF colour) {
    const auto close = [](int a, int b) { return std::abs(a - b) < 16; };
    return close(GetRValue(pixel), GetRValue(colour)) && close(GetGValue(pixel), GetGValue(colour)) &&
           close(GetBValue(pixel), GetBValue(colour));
}

/// A terminal window whose picture folder holds the samples.
class WindowPicture : public WindowTest {
  protected:
    fs::path pictures = addPictures(kFormats);
};

TEST_F(WindowPicture, FilesAreLoadedWhole) {
    // An image at the right of a larger canvas.
    std::fstream file(pictures / "p.gif", std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(6).put(16).seekp(0x22).put(8).flush();
    const auto picture = GdiPicture::load(pictures / "p.gif");
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->size(), (Size{16, 6}));
    for (const std::wstring& name : {L"missing.gif"s, L"."s, L"p.png\0"s})
        EXPECT_EQ(GdiPicture::load((pictures / name).wstring()), nullptr);
}

TEST_F(WindowPicture, EachFormatCoversItsCells) {
    for (const std::string format : kFormats) {
        SCOPED_TRACE(format);
        const TestForm form = open();
        for (int row = 0; row < 25; ++row) form.writeAt(0, row, std::string(79, '\xDB'));
        const Rect first = form.cell(0, 0);
        const COLORREF text = form.picture().at(first.left + 2, first.top + 2);
        form->DisplayPicture(1, 20, 11, 11, 6, "p." + format);
        const WindowImage shown = form.picture();
        const auto expectAround = [&](int column, int row, COLORREF colour) {
            const Rect cell = form.cell(column, row);
            const COLORREF pixel = shown.at((cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2);
            EXPECT_TRUE(alike(pixel, colour)) << column << ' ' << row;
        };
        expectAround(12, 6, RGB(255, 0, 0));
        expectAround(17, 6, RGB(0, 255, 0));
        expectAround(12, 9, RGB(0, 0, 255));
        expectAround(17, 9, format == "bmp" || format == "jpg" ? kWhite : text);
        for (const int column : {9, 20}) expectAround(column, 8, text);
        for (const int row : {4, 11}) expectAround(15, row, text);
    }
}

TEST_F(WindowPicture, ComesAndGoesWithoutALoss) {
    const TestForm form = open();
    const auto rounds = [&](int count) {
        for (int i = 0; i < count; ++i) {
            for (const std::string format : kFormats) form->DisplayPicture(1, 1, 1, 20, 10, "p." + format);
            form->DisplayPicture(2, 1, 1, 2, 2, "missing.png");
            form->ClearPicture(1);
        }
    };
    rounds(5);
    expectNothingLeftBehind([&] { rounds(170); });
}

}  // namespace
}  // namespace kavrelon
