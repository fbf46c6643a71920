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

TEST_F(WindowPicture, HeadersOfAbsurdSizesAreRefusedAtOnce) {
    struct Claim {
        const wchar_t* format;
        std::size_t widthAt, heightAt;
        bool bigEndian;
    };
    constexpr std::array<Claim, 4> claims{
        {{L"bmp", 18, 22, false}, {L"gif", 6, 8, false}, {L"png", 18, 22, true}, {L"ico", 26, 30, false}}};
    for (const Claim& claim : claims) {
        std::vector<char> bytes = bytesOf(claim.format);
        for (const std::size_t place : {claim.widthAt, claim.heightAt}) {
            bytes[place] = claim.bigEndian ? '\xEA' : '\x60';
            bytes[place + 1] = claim.bigEndian ? '\x60' : '\x6A';
        }
        EXPECT_FALSE(isPicture(bytes)) << claim.widthAt;
    }
    std::vector<char> padded = bytesOf(L"png");
    EXPECT_TRUE(isPicture(padded));
    padded.resize(std::size_t{20} << 20);
    EXPECT_FALSE(isPicture(padded));
}

/// A terminal window whose picture folder holds the samples.
class WindowPictureScreen : public WindowPicture {
  protected:
    WindowPictureScreen() {
        CreateDirectoryA(folder().c_str(), nullptr);
        for (const std::wstring format : kFormats) {
            CopyFileA(narrow(sample(format)).c_str(), pathOf(format).c_str(), FALSE);
        }
    }
    ~WindowPictureScreen() override {
        for (const std::wstring format : kFormats) DeleteFileA(pathOf(format).c_str());
        RemoveDirectoryA(folder().c_str());
    }
    static std::string narrow(const std::wstring& text) { return {text.begin(), text.end()}; }
    std::string folder() const { return settings.substr(0, settings.rfind('\\') + 1) + "Pictures"; }
    std::string pathOf(const std::wstring& format) const { return folder() + "\\p." + narrow(format); }
};

TEST_F(WindowPictureScreen, StaysOverItsCellsWhateverHappensBelow) {
    for (const bool memory : {false, true}) {
        for (const char* name : {"p.bmp", "p.png", "p.wmf"}) {
            SCOPED_TRACE(name);
            const TestForm form = open();
            form->screen().UseMemoryDC(memory);
            const auto quarter = [&](int column, int row) {
                const Rect cell = form.cell(column, row);
                return form.picture().at((cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2);
            };
            const auto expectPicture = [&] {
                EXPECT_EQ(quarter(12, 6), RGB(255, 0, 0));
                EXPECT_EQ(quarter(17, 6), RGB(0, 255, 0));
                EXPECT_EQ(quarter(12, 9), RGB(0, 0, 255));
                EXPECT_TRUE(form.isPainted());
            };
            for (int row = 0; row < 25; ++row) form.writeAt(0, row, std::string(79, '\xDB'));
            const WindowImage before = form.picture();
            form->DisplayPicture(1, 11, 6, 20, 11, name);
            expectPicture();
            form.writeAt(5, 6, std::string(30, 'x'));
            expectPicture();
            form->ClearPicture(1);
            form.writeAt(5, 6, std::string(30, '\xDB'));
            EXPECT_EQ(form.picture(), before);

            form->DisplayPicture(1, 20, 11, 11, 6, name);
            form.writeAt(0, 24, "\n\n\n");
            expectPicture();
            form.setSize({700, 500});
            expectPicture();
            form->DisplayPicture(2, -32768, -32768, 32767, 32767, name);
            EXPECT_TRUE(form.isPainted());
            form->EraseScreen();
            EXPECT_EQ(quarter(12, 6), kBlack);
        }
    }
}

TEST_F(WindowPictureScreen, ComesAndGoesWithoutALoss) {
    const TestForm form = open();
    const auto round = [&] {
        for (const std::wstring format : kFormats) {
            form->DisplayPicture(1, 1, 1, 20, 10, "p." + narrow(format));
            form->DisplayPicture(2, 1, 1, 2, 2, "missing.png");
        }
        form->ClearPicture(1);
    };
    const auto handles = [] {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    };
    for (int i = 0; i < 5; ++i) round();
    const int objects = countGdiObjects();
    const DWORD before = handles();
    for (int i = 0; i < 170; ++i) round();
    EXPECT_EQ(countGdiObjects(), objects);
    EXPECT_EQ(handles(), before);
}

}  // namespace
}  // namespace kavrelon
