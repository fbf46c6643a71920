#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "gdi/GdiHandles.h"
#include "terminal/frmTerm.h"
#include "terminal/win32/Win32Platform.h"

namespace kavrelon {

constexpr COLORREF kBlack = 0;
constexpr COLORREF kWhite = 0xFFFFFF;

/// The drawing objects of this process, counted in the table that it shares with the platform: the platform's
/// own count is not there everywhere.
inline int countGdiObjects() {
    constexpr std::size_t kTableInProcess = 0x94, kEntries = 65536, kEntrySize = 24, kTypeInEntry = 14;
    const char* process = nullptr;
    asm("movl %%fs:0x30, %0" : "=r"(process));
    const char* table = *reinterpret_cast<const char* const*>(process + kTableInProcess);
    int count = 0;
    for (std::size_t entry = 0; entry < kEntries; ++entry) {
        if (table[entry * kEntrySize + kTypeInEntry] != 0) ++count;
    }
    return count;
}

inline int countTerminalWindows() {
    int count = 0;
    HWND window = nullptr;
    while ((window = FindWindowExA(nullptr, window, WindowClass::kName, nullptr)) != nullptr) ++count;
    return count;
}

/// What a window's inner area shows.
class WindowImage {
  public:
    explicit WindowImage(HWND window) {
        RECT inner{};
        GetClientRect(window, &inner);
        width_ = inner.right;
        height_ = inner.bottom;
        BITMAPINFO format{};
        format.bmiHeader = {sizeof format.bmiHeader, width_, -height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        const OwnedContext memory(CreateCompatibleDC(nullptr));
        void* bits = nullptr;
        const Bitmap bitmap(CreateDIBSection(memory.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
        const Selected selected(memory.get(), bitmap.get());
        BitBlt(memory.get(), 0, 0, width_, height_, GetDC(window), 0, 0, SRCCOPY);
        GdiFlush();
        for (int i = 0; i < width_ * height_; ++i) {
            const RGBQUAD pixel = static_cast<const RGBQUAD*>(bits)[i];
            pixels_.push_back(RGB(pixel.rgbRed, pixel.rgbGreen, pixel.rgbBlue));
        }
    }

    int width() const { return width_; }
    int height() const { return height_; }
    COLORREF at(int x, int y) const { return pixels_.at(static_cast<std::size_t>(y * width_ + x)); }
    /// Whether every pixel of a block answers.
    bool all(const Rect& block, const std::function<bool(COLORREF)>& answers) const {
        for (int y = block.top; y < block.bottom; ++y) {
            for (int x = block.left; x < block.right; ++x) {
                if (!answers(at(x, y))) return false;
            }
        }
        return true;
    }
    bool all(const Rect& block, COLORREF colour) const {
        return all(block, [=](COLORREF pixel) { return pixel == colour; });
    }
    bool operator==(const WindowImage& other) const = default;

  private:
    int width_ = 0;
    int height_ = 0;
    std::vector<COLORREF> pixels_;
};

/// A shown terminal form on a real window.
class TestForm {
  public:
    TestForm(Win32Platform& platform, const std::string& settings, Size outer)
        : form_(frmTerm::load(platform)) {
        form_->IniFile(settings);
        form_->DisplayTerminalWindows();
        // Shown last, it is the first of its class.
        window_ = FindWindowA(WindowClass::kName, nullptr);
        setSize(outer);
    }

    frmTerm* operator->() const { return form_.get(); }
    HWND window() const { return window_; }
    WindowImage picture() const { return WindowImage(window_); }
    Rect cell(int column, int row, int columns = 1) const {
        return form_->screen().grid().cellBlock(column, row, columns);
    }
    void writeAt(int column, int row, std::string_view text) const {
        form_->screen().SetCursor(column, row);
        for (const char ch : text) form_->WriteTerm(static_cast<std::uint8_t>(ch));
    }
    void setSize(Size outer) const {
        SetWindowPos(window_, nullptr, 10, 10, outer.width, outer.height, SWP_NOZORDER);
    }
    /// Paints over a block of the inner area, behind the terminal's back.
    void smear(const RECT& block) const {
        FillRect(GetDC(window_), &block, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    /// Whether the window shows what it does after everything has been painted again.
    bool isPainted() const {
        const WindowImage before = picture();
        smear({0, 0, 2000, 2000});
        InvalidateRect(window_, nullptr, FALSE);
        UpdateWindow(window_);
        return picture() == before;
    }

  private:
    std::shared_ptr<frmTerm> form_;
    HWND window_ = nullptr;
};

class WindowTest : public testing::Test {
  protected:
    WindowTest() {
        char folder[MAX_PATH] = "";
        char path[MAX_PATH] = "";
        GetTempPathA(MAX_PATH, folder);
        GetTempFileNameA(folder, "kav", 0, path);
        settings = path;
    }
    ~WindowTest() override { DeleteFileA(settings.c_str()); }

    TestForm open(Size outer = {900, 620}) { return {platform, settings, outer}; }

    Win32Platform platform{GetModuleHandleA(nullptr)};
    std::string settings;
};

}  // namespace kavrelon
