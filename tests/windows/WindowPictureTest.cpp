#include <olectl.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "WindowTestSupport.h"
#include "gdi/GdiPicture.h"
#include "gdi/pcMemDC.h"

namespace kavrelon {
namespace {

constexpr COLORREF kBelow = RGB(255, 255, 0);
constexpr std::array<const wchar_t*, 6> kFormats{L"bmp", L"gif", L"ico", L"jpg", L"png", L"wmf"};

std::wstring sample(const std::wstring& format) {
    return L"tests/windows/pictures/quarters." + format;
}

/// A context to draw on, 100 x 80 pixels in one colour.
class Paper {
  public:
    Paper() {
        surface_.Width(100);
        surface_.Height(80);
        SelectObject(surface_.hDc(), GetStockObject(DC_BRUSH));
        SetDCBrushColor(surface_.hDc(), kBelow);
        PatBlt(surface_.hDc(), 0, 0, 100, 80, PATCOPY);
    }
    HDC get() const { return surface_.hDc(); }
    /// Whether a pixel has a colour, but for what a lossy format changes.
    bool shows(int x, int y, COLORREF colour) const {
        const COLORREF pixel = GetPixel(get(), x, y);
        const auto close = [](int a, int b) { return std::abs(a - b) < 16; };
        return close(GetRValue(pixel), GetRValue(colour)) && close(GetGValue(pixel), GetGValue(colour)) &&
               close(GetBValue(pixel), GetBValue(colour));
    }

  private:
    pcMemDC surface_;
};

void expectQuarters(const Paper& paper, COLORREF lastQuarter) {
    EXPECT_TRUE(paper.shows(20, 20, RGB(255, 0, 0)));
    EXPECT_TRUE(paper.shows(60, 20, RGB(0, 255, 0)));
    EXPECT_TRUE(paper.shows(20, 50, RGB(0, 0, 255)));
    EXPECT_TRUE(paper.shows(60, 50, lastQuarter));
    EXPECT_TRUE(paper.shows(5, 5, kBelow) && paper.shows(95, 75, kBelow));
}

class WindowPicture : public WindowTest {
  protected:
    /// Writes a file of the bytes and tries to load it.
    bool isPicture(const std::vector<char>& bytes) const {
        std::ofstream(settings, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return GdiPicture::load(std::wstring(settings.begin(), settings.end())) != nullptr;
    }
};

std::vector<char> bytesOf(const std::wstring& format) {
    std::ifstream file(std::filesystem::path(sample(format)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST_F(WindowPicture, EveryFormatIsDrawnScaledAndTransparentWhereItIs) {
    for (const std::wstring format : kFormats) {
        SCOPED_TRACE(std::string(format.begin(), format.end()));
        const auto picture = GdiPicture::load(sample(format));
        ASSERT_NE(picture, nullptr);
        EXPECT_EQ(picture->size(), (format == L"jpg" ? Size{32, 24} : Size{8, 6}));
        const bool whole = format == L"bmp" || format == L"jpg";
        EXPECT_EQ(picture->opaque(), whole);
        const Paper paper;
        picture->draw(paper.get(), {10, 10, 90, 70});
        expectQuarters(paper, whole ? kWhite : kBelow);
    }
}

TEST_F(WindowPicture, FilesThatEndEarlyOrClaimTooMuchAreNone) {
    for (const std::wstring format : kFormats) {
        const std::vector<char> whole = bytesOf(format);
        EXPECT_TRUE(isPicture(whole));
        // The last byte of all is one that an animation can do without.
        for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
            std::vector<char> part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            EXPECT_FALSE(isPicture(part)) << std::string(format.begin(), format.end()) << " " << length;
        }
    }
    EXPECT_EQ(GdiPicture::load(L"tests/windows/pictures/missing.png"), nullptr);
    EXPECT_EQ(GdiPicture::load(L"tests/windows/pictures"), nullptr);
}

}  // namespace
}  // namespace kavrelon
