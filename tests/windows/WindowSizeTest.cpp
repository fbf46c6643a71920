#include <functional>
#include <vector>

#include "gdi/GdiHandles.h"
#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {
namespace {

using WindowSize = WindowTest;

WNDPROC procedureBelow = nullptr;
int paints = 0;

LRESULT CALLBACK countPaints(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) ++paints;
    return CallWindowProcA(procedureBelow, window, message, wParam, lParam);
}

TEST_F(WindowSize, ShowingPaintsOnce) {
    for (const WindowState state : {WindowState::Normal, WindowState::Maximised}) {
        const std::shared_ptr<frmTerm> form = frmTerm::load(platform);
        const HWND window = FindWindowA(WindowClass::kName, nullptr);
        procedureBelow = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(countPaints)));
        paints = 0;
        form->IniFile(settings);
        form->setWindowState(state);
        form->DisplayTerminalWindows();
        form->TerminalOpen();
        platform.processMessages();
        EXPECT_EQ(paints, 1);
    }
}

TEST_F(WindowSize, TheLargestFontThatFitsIsCentredAndEveryPixelPainted) {
    const TestForm form = open();
    form.writeAt(0, 0, "top left");
    form.writeAt(70, 24, "the end\xDB\xDB\xDB");
    for (const Size size : {Size{640, 400}, Size{1270, 500}, Size{600, 780}, Size{1000, 701}, Size{60, 60}}) {
        form.smear({0, 0, 2000, 2000});
        form.setSize(size);
        const WindowImage resized = form.picture();
        EXPECT_TRUE(form.isPainted()) << size.width;
        const Rect first = form.cell(0, 0);
        const int width = 80 * first.width();
        const int height = 25 * first.height();
        EXPECT_EQ(first.left, std::max((resized.width() - width) / 2, 0));
        EXPECT_EQ(first.top, std::max((resized.height() - height) / 2, 0));
        if (size.width == 60) continue;
        EXPECT_TRUE(width <= resized.width() && height <= resized.height()) << size.width;
        // A pixel of font height is at most two of the cell's.
        EXPECT_TRUE(width + 2 * 80 > resized.width() || height + 2 * 25 > resized.height()) << size.width;
    }
}

TEST_F(WindowSize, TheUserCannotDragItSmallerThanItsScreenButAHostCan) {
    const TestForm form = open();
    const auto dragged = [&](int edge, RECT to) {
        SendMessageA(form.window(), WM_SIZING, static_cast<WPARAM>(edge), reinterpret_cast<LPARAM>(&to));
        return to;
    };
    // The menu bar of the second has several lines.
    for (const Size cells : {Size{132, 50}, Size{30, 12}, Size{80, 25}}) {
        std::int16_t lines = static_cast<std::int16_t>(cells.height);
        form->screen().ScreenSize(static_cast<std::int16_t>(cells.width), lines);
        form.setSize({900, 620});
        const Rect cell = form.cell(0, 0);
        const RECT corner = dragged(WMSZ_TOPLEFT, {1190, 890, 1200, 900});
        EXPECT_TRUE(corner.right == 1200 && corner.bottom == 900);
        EXPECT_EQ(form.cell(0, 0), cell) << "nothing has happened yet";
        form.setSize({static_cast<int>(1200 - corner.left), static_cast<int>(900 - corner.top)});
        EXPECT_EQ(form.cell(0, 0).left + form.cell(0, 0).top, 0);
        EXPECT_EQ(form.picture().width(), form.cell(cells.width, 0).left);
        EXPECT_EQ(form.picture().height(), form.cell(0, cells.height).top);
        const RECT edge = dragged(WMSZ_RIGHT, {100, 100, 101, 700});
        EXPECT_TRUE(edge.right - edge.left == 1200 - corner.left && edge.bottom == 700) << edge.right;
    }
    form.setSize({200, 150});
    EXPECT_EQ(rectangleOf(form.window()).width(), 200);

    std::int16_t many = 1024;
    form->screen().ScreenSize(many, many);
    const RECT whole = dragged(WMSZ_BOTTOMRIGHT, {0, 0, 10, 10});
    EXPECT_LE(whole.right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_LE(whole.bottom, GetSystemMetrics(SM_CYSCREEN));
    form->screen().AutoSize(false);
    EXPECT_LT(dragged(WMSZ_BOTTOM, {0, 0, 900, 60}).bottom, 100);
}

TEST_F(WindowSize, TheGridComesRightAfterAShortageOfDrawingObjects) {
    const std::vector<std::function<void(const TestForm&)>> changes{
        [](const TestForm& form) {
            std::int16_t lines = 30;
            form->screen().ScreenSize(100, lines);
        },
        [](const TestForm& form) { form->mnuFontStyle_Click(4); },
        // The platform itself may have lost the inner area meanwhile: the window takes its size again.
        [](const TestForm& form) {
            for (const int width : {600, 640}) form.setSize({width, 480});
        },
        [](const TestForm& form) { form.writeAt(0, 24, "\n\n"); },
        [](const TestForm& form) {
            form->screen().UseMemoryDC(true);
            form->screen().RepaintScreen();
        },
        [](const TestForm& form) {
            form.setRendition(Rendition::kBlink);
            form.writeAt(0, 1, "slanted");
        },
    };
    for (const auto& change : changes) {
        std::vector<WindowImage> pictures;
        for (const bool scarce : {false, true}) {
            const TestForm form = open();
            form.writeAt(0, 0, "some text");
            std::vector<Font> hoard;
            const LOGFONTA any{};
            do {
                if (scarce) hoard.emplace_back(CreateFontIndirectA(&any));
            } while (!hoard.empty() && hoard.back() != nullptr);
            change(form);
            hoard.clear();
            if (&change == &changes[2]) change(form);
            form.paint();
            // Once more, where a font has come late.
            UpdateWindow(form.window());
            EXPECT_TRUE(form.isPainted());
            pictures.push_back(form.picture());
        }
        EXPECT_EQ(pictures[0], pictures[1]) << &change - changes.data();
    }
}

TEST_F(WindowSize, WithoutAutoSizeTheWindowFitsTheFont) {
    const TestForm form = open();
    form->screen().AutoSize(false);
    for (const int points : {6, 9}) {
        form->screen().ScreenFontSize(static_cast<std::int16_t>(points));
        EXPECT_EQ(form.picture().width(), form.cell(80, 0).left) << points;
        EXPECT_EQ(form.picture().height(), form.cell(0, 25).top) << points;
    }
    form->screen().ScreenFontSize(100);
    EXPECT_LE(rectangleOf(form.window()).right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_LE(rectangleOf(form.window()).bottom, GetSystemMetrics(SM_CYSCREEN));
}

TEST_F(WindowSize, StatesReachTheFormAndTheTitleBarGoesAndComes) {
    const TestForm form = open();
    form->setWindowState(WindowState::Maximised);
    EXPECT_TRUE(IsZoomed(form.window()));
    EXPECT_EQ(form->PrevWindowState(), WindowState::Maximised);
    form->setWindowState(WindowState::Minimised);
    EXPECT_TRUE(IsIconic(form.window()));
    EXPECT_FALSE(form->screen().PaintOn());
    form->setWindowState(WindowState::Normal);
    EXPECT_TRUE(form->screen().PaintOn());

    const auto style = [&] { return GetWindowLongA(form.window(), GWL_STYLE); };
    const LONG styleBefore = style();
    const Rect placeBefore = rectangleOf(form.window());
    const int height = form.picture().height();
    form->ShowTitleBar(false);
    EXPECT_EQ(style(), styleBefore & ~0xCB0000L);
    EXPECT_EQ(rectangleOf(form.window()), placeBefore);
    EXPECT_GT(form.picture().height(), height);
    form->ShowTitleBar(true);
    EXPECT_EQ(style(), styleBefore);
    EXPECT_EQ(form.picture().height(), height);
}

}  // namespace
}  // namespace kavrelon
