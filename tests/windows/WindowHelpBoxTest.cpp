#include "helpbox/win32/Win32HelpWindow.h"
#include "tests/windows/WindowInputSupport.h"

namespace kavrelon {
namespace {

constexpr const char* kPage =
    "<html><body bgcolor=\"#0000FF\"><a href=\"http://localhost/\">a link that is clicked</a></body></html>";

class WindowHelpBox : public WindowInput {
  protected:
    /// Shows a box at row 5, column 11 and gives its window.
    HWND show(std::string_view text) {
        (*form)->ShowHelpBox(1, 5, 11, 20, 6, text);
        pump();
        return FindWindowA(Win32HelpWindow::kClassName, nullptr);
    }
    /// Moves the mouse to a place in pixels of the desktop.
    void moveOnDesktop(POINT place) {
        ScreenToClient(form->window(), &place);
        moveTo(static_cast<int>(place.x), static_cast<int>(place.y));
    }
    /// Whether the terminal has the keyboard and what is typed reaches the host.
    bool isTypedThrough() {
        return GetForegroundWindow() == form->window() && GetFocus() == form->window() &&
               sentBy({{'A'}}) == "a";
    }
};

TEST_F(WindowHelpBox, ItCoversItsCellsAndLeavesTheKeyboardAlone) {
    const HWND box = show("text");
    ASSERT_TRUE(IsWindowVisible(box));
    EXPECT_EQ(GetWindow(box, GW_OWNER), form->window());
    EXPECT_TRUE(isTypedThrough());

    // Half a cell to the left and above the cell in column 11 counted from 1, in row 5 counted from 0.
    const Rect cell = form->cell(10, 5);
    POINT corner{cell.left, cell.top};
    ClientToScreen(form->window(), &corner);
    const Rect place = rectangleOf(box);
    EXPECT_NEAR(place.left, corner.x - cell.width() / 2.0, 0.5);
    EXPECT_NEAR(place.top, corner.y - cell.height() / 2.0, 0.5);
    EXPECT_EQ(place.width(), 23 * cell.width());
    EXPECT_EQ(place.height(), 7 * cell.height() + 7);

    // All of it but its thin border is the page.
    const WindowImage shown(show(kPage));
    EXPECT_EQ(shown.width(), 23 * cell.width() - 2);
    EXPECT_TRUE(shown.all({0, shown.height() / 2, shown.width(), shown.height()}, RGB(0, 0, 255)));
}

TEST_F(WindowHelpBox, TheMouseDragsItAndGoesOnToTheTerminalsKeyboard) {
    const HWND box = show("text");
    const Rect start = rectangleOf(box);
    moveOnDesktop({start.left + 30, start.top + 40});
    click(MOUSEEVENTF_LEFTDOWN);
    for (const int step : {20, 40, 60}) moveOnDesktop({start.left + 30 + step, start.top + 40 - step});
    EXPECT_EQ(rectangleOf(box), start);
    click(MOUSEEVENTF_LEFTUP);
    pump();
    EXPECT_EQ(rectangleOf(box), (Rect{start.left + 60, start.top - 60, start.right + 60, start.bottom - 60}));
    EXPECT_TRUE(isTypedThrough());

    // From there it moves with the terminal's window.
    SetWindowPos(form->window(), nullptr, 10 + 7, 10 + 9, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(rectangleOf(box).left, start.left + 67);
}

TEST_F(WindowHelpBox, TheTerminalHandsTheWheelOnToIt) {
    std::string page = "<html><body>";
    for (int line = 0; line < 60; ++line) page += "line " + std::to_string(line) + "<br>";
    const HWND box = show(page);
    const WindowImage before(box);
    const Rect place = rectangleOf(box);
    SendMessageA(form->window(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA),
                 MAKELPARAM(place.left + 30, place.top + 30));
    EXPECT_NE(WindowImage(box), before);
}

TEST_F(WindowHelpBox, ItsMenuClosesIt) {
    for (const char* text : {"text", kPage}) {
        const HWND box = show(text);
        const Rect place = rectangleOf(box);
        // On the text, which in the page is a link: a right click on it must not count as a left one.
        moveOnDesktop({place.left + 20, place.top + 12});
        press({{VK_RBUTTON}});
        tryUntilDone([] {
            if (inMenu()) press({{'C'}});
            return inMenu();
        });
        EXPECT_TRUE(pumpUntil([&] { return !IsWindow(box); })) << text;
        EXPECT_EQ((*form)->HelpBoxes().openSlots(), std::vector<int>{});
        EXPECT_TRUE(isTypedThrough());
    }
}

TEST_F(WindowHelpBox, ItIsHiddenAndGoneWithTheTerminal) {
    const HWND box = show("text");
    const Rect place = rectangleOf(box);
    for (const auto& [hide, back] : {std::pair{SW_MINIMIZE, SW_RESTORE}, {SW_HIDE, SW_SHOW}}) {
        ShowWindow(form->window(), hide);
        pump();
        EXPECT_FALSE(IsWindowVisible(box));
        ShowWindow(form->window(), back);
        pump();
        EXPECT_TRUE(IsWindowVisible(box));
        EXPECT_EQ(rectangleOf(box), place);
    }
    // Below the terminal after that came to the front, it is soon above it again.
    SetWindowPos(box, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    EXPECT_TRUE(pumpUntil([&] {
        HWND below = box;
        while (below != nullptr && below != form->window()) below = GetWindow(below, GW_HWNDNEXT);
        return below != nullptr;
    }));
    DestroyWindow(form->window());
    EXPECT_FALSE(IsWindow(box));
    EXPECT_EQ((*form)->HelpBoxes().openSlots(), std::vector<int>{});
}

TEST_F(WindowHelpBox, ManyBoxesLeaveNothingBehind) {
    const auto rounds = [&](int count) {
        for (int i = 0; i < count; ++i) {
            (*form)->ShowHelpBox(static_cast<std::int16_t>(i % 3), 5, 11, 20, 6, i % 2 == 0 ? "text" : kPage);
            if (i % 7 == 0) (*form)->HideHelpBox(static_cast<std::int16_t>(i % 3));
            if (i % 50 == 0) platform.processMessages();
        }
        (*form)->EraseScreen();
    };
    rounds(200);
    expectNothingLeftBehind([&] { rounds(500); });
}

}  // namespace
}  // namespace kavrelon
