#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/win32/Messages.h"
#include "terminal/TermOwner.h"
#include "terminal/frmTerm.h"
#include "terminal/win32/Win32Platform.h"
#include "tests/windows/ProcessUsage.h"
#include "tests/windows/TestFolder.h"
#include "tests/windows/WindowImage.h"

namespace kavrelon {

/// Calls `pump`, which lets messages through, until the condition holds; false when it does not in time.
template <class Pump>
bool pumpUntil(const std::function<bool()>& condition, DWORD milliseconds, Pump pump) {
    for (const DWORD start = GetTickCount(); !condition(); pump()) {
        if (GetTickCount() - start > milliseconds) return false;
    }
    return true;
}
inline bool pumpUntil(const std::function<bool()>& condition, DWORD milliseconds = 5000) {
    return pumpUntil(condition, milliseconds, [] {
        letMessagesThrough();
        Sleep(5);
    });
}

/// Writes down what leaves the terminal, in order.
class InputLog final : public TermOwner {
  public:
    std::string sent;
    std::function<void()> onInput = [] {};

    void WindowHasClosed() override { sent += "<closed>"; }
    std::string FuncKey(std::int16_t key) override { return "<F" + std::to_string(key) + ">"; }
    void SendBreak() override { sent += "<break>"; }
    void SendTermData(const std::string& text) override {
        sent += text;
        onInput();
    }
    void SendCommand(const std::string&) override {}
};

inline Rect rectangleOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
            static_cast<int>(place.bottom)};
}

inline int countTerminalWindows() {
    int count = 0;
    HWND window = nullptr;
    while ((window = FindWindowExA(nullptr, window, WindowClass::kName, nullptr)) != nullptr) ++count;
    return count;
}

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
    void setRendition(int code) const {
        form_->screen().term_setattr(std::string(1, static_cast<char>(code)));
    }
    void setSize(Size outer) const {
        SetWindowPos(window_, nullptr, 10, 10, outer.width, outer.height, SWP_NOZORDER);
    }
    void write(std::string_view text) const {
        for (const char ch : text) form_->WriteTerm(static_cast<std::uint8_t>(ch));
    }
    /// Fills the first 25 rows, each with a letter of its own.
    void fill() const {
        for (int row = 0; row < 25; ++row) writeAt(0, row, std::string(80, static_cast<char>('A' + row)));
    }
    /// The left button goes down over a cell, and is moved to another.
    void press(int column, int row) const { form_->Form_MouseDown(MouseButton::Left, middle(column, row)); }
    void dragTo(int column, int row) const { form_->Form_MouseMove(true, middle(column, row)); }
    void place(int x, int y) const { SetWindowPos(window_, nullptr, x, y, 0, 0, SWP_NOZORDER | SWP_NOSIZE); }
    /// Paints over a block of the inner area without the terminal's knowledge.
    void smear(const RECT& block) const {
        FillRect(GetDC(window_), &block, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    /// Has a block painted; null is all of the inner area.
    void paint(const RECT* block = nullptr) const {
        InvalidateRect(window_, block, FALSE);
        UpdateWindow(window_);
    }
    /// Another window has covered a block of cells, and is gone.
    void damage(const Rect& block) const {
        const RECT covered{block.left, block.top, block.right, block.bottom};
        smear(covered);
        paint(&covered);
    }
    /// Whether painting everything again changes nothing.
    bool isPainted() const {
        const WindowImage before = picture();
        smear({0, 0, 2000, 2000});
        paint();
        return picture() == before;
    }

    /// Where two pictures of the window differ; empty when they do not.
    std::string difference(const WindowImage& before, const WindowImage& after) const {
        if (before.width() != after.width() || before.height() != after.height()) return "the size";
        const std::optional<Point> pixel = before.differenceFrom(after);
        if (!pixel) return {};
        const Rect first = cell(0, 0);
        const auto cells = [](int pixels, int size) {
            return std::to_string(pixels < 0 ? -1 : pixels / std::max(size, 1));
        };
        char colours[40];
        std::snprintf(colours, sizeof colours, ": %06lX, then %06lX", before.at(pixel->x, pixel->y),
                      after.at(pixel->x, pixel->y));
        return "column " + cells(pixel->x - first.left, first.width()) + ", row " +
               cells(pixel->y - first.top, first.height()) + colours;
    }

  private:
    Point middle(int column, int row) const {
        const Rect block = cell(column, row);
        return {(block.left + block.right) / 2, (block.top + block.bottom) / 2};
    }

    std::shared_ptr<frmTerm> form_;
    HWND window_ = nullptr;
};

class WindowTest : public testing::Test {
  protected:
    WindowTest() { folder.write("settings.ini", ""); }

    TestForm open(Size outer = {900, 620}) { return {platform, settings, outer}; }
    /// Gives the terminal's picture folder samples p.bmp, p.gif and so on.
    std::filesystem::path addPictures(std::initializer_list<const char*> formats) const {
        std::filesystem::path pictures = folder.path() / "Pictures";
        create_directory(pictures);
        for (const std::string format : formats)
            copy_file("tests/windows/pictures/quarters." + format, pictures / ("p." + format));
        return pictures;
    }
    /// One whose cursor blinks when the test says so.
    TestForm openStill(Size outer, bool memory) {
        TestForm form = open(outer);
        form->TurnOnOffCursor(false);
        form->screen().UseMemoryDC(memory);
        return form;
    }

    Win32Platform platform{GetModuleHandleA(nullptr)};
    TestFolder folder{"kavrelon window test"};
    std::string settings = folder.file("settings.ini");
};

}  // namespace kavrelon
