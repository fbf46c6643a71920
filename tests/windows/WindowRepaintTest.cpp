#include <random>
#include <vector>

#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {
namespace {

constexpr RECT kAll{0, 0, 3000, 3000};

/// What the window shows after all of it was drawn from the buffer.
WindowImage drawnAnew(const TestForm& form) {
    form.smear(kAll);
    form->screen().RepaintScreen();
    if (!form->screen().UseMemoryDC()) form.paint();
    return form.picture();
}

/// A session of random steps. An erase in other colours than the default ones, and the end of a row that an
/// erased start takes along, show on the window what the buffer does not hold.
class RandomSession {
  public:
    RandomSession(const TestForm& form, unsigned seed) : form_(form), random_(seed) {}

    void play() {
        for (int left = 2 + below(8); left > 0; --left) step();
    }
    /// The image without the rows whose erases differ from what the buffer holds.
    WindowImage comparable(WindowImage image) const {
        for (int row = 0; row < screen().LinesPerPage(); ++row) {
            if (differs_[static_cast<std::size_t>(row)])
                image.blacken(form_.cell(0, row, screen().CharsPerLine()));
        }
        return image;
    }
    /// Everything was drawn from the buffer.
    void drawn() { differs_.assign(kMaxScreen, false); }

  private:
    Screen& screen() const { return form_->screen(); }
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    template <class... Values>
    int oneOf(Values... values) {
        const int all[] = {values...};
        return all[below(static_cast<int>(sizeof...(values)))];
    }
    Rect block() {
        const int left = below(600);
        const int top = below(350);
        return {left, top, left + below(300), top + below(200)};
    }

    void step() {
        const int choice = below(60);
        if (choice < 24) return write(oneOf(5, 40, 200));
        if (choice < 32) return screen().SetCursor(below(45), below(14));
        if (choice < 38) return form_.setRendition(oneOf(0, 1, 2, 4, 5, 7, 8, 31, 32, 34, 37, 40, 44, 48));
        if (choice < 44) return erase();
        if (choice < 46) return screen().blinkCursor();
        if (choice < 49) return form_.damage(block());
        if (choice < 51) return form_.press(below(40), below(14));
        if (choice < 53) return form_.dragTo(below(40), below(14));
        if (choice < 54) return moveOffTheDesktop();
        if (choice < 55) return movePicture();
        if (choice < 56) return form_->Redrawscreen(below(2) == 0);
        if (choice < 57) return form_->EraseScreen();
        if (choice < 58) return playUnpainted();
        change();
    }
    void write(int count) {
        while (count-- > 0) {
            const int byte = below(20) == 0 ? oneOf(8, 10, 10, 13) : 14 + below(242);
            const bool down =
                byte == 10 || (byte > 13 && byte != 17 && screen().CursorX() == screen().CharsPerLine());
            if (down && screen().CursorY() == screen().LinesPerPage() - 1) {
                differs_.erase(differs_.begin());
                differs_.push_back(false);
            }
            form_->WriteTerm(static_cast<std::uint8_t>(byte));
        }
    }
    void erase() {
        const int kind = below(5);
        const int row = screen().CursorY();
        const bool asStored = below(3) > 0 && kind != 0;
        if (asStored) {
            for (const int code : {37, 40, 1}) form_.setRendition(code);
        }
        form_->DataReceiveStart();
        if (kind == 0) screen().ClearStartOfLine();
        if (kind == 1) screen().ClearEndOfLine();
        if (kind == 2) screen().ClearLine();
        if (kind == 3) screen().ClearEndOfScreen();
        if (kind == 4) screen().ClearBeginOfScreen();
        form_->DataReceiveEnd();
        const int first = kind == 4 ? 0 : row;
        const int last = kind == 3 ? screen().LinesPerPage() - 1 : row;
        if (!asStored) std::fill(differs_.begin() + first, differs_.begin() + last + 1, true);
    }
    void movePicture() {
        const auto number = static_cast<std::int16_t>(below(3));
        const auto cell = [this] { return static_cast<std::int16_t>(below(45) - 2); };
        if (below(3) == 0) return form_->ClearPicture(number);
        const char* const names[] = {"p.png", "p.bmp", "p.gif"};
        form_->DisplayPicture(number, cell(), cell(), cell(), cell(), names[number]);
    }
    void moveOffTheDesktop() {
        const int x = oneOf(-300, 10, GetSystemMetrics(SM_CXSCREEN) - 300);
        form_.place(x, x == 10 ? -200 : 10);
        for (int left = 4; left > 0; --left) below(3) == 0 ? erase() : write(oneOf(1, 20, 200));
        form_.place(10, 10);
        letMessagesThrough();
    }
    /// What could not be drawn is drawn by the next paint.
    void playUnpainted() {
        screen().PaintOn(false);
        below(2) == 0 ? write(200) : change();
        screen().PaintOn(true);
        form_.damage({0, 0, 3000, 3000});
    }
    void change() {
        const int choice = below(5);
        if (choice == 0) form_.setSize({500 + below(3) * 150, 320 + below(3) * 100});
        if (choice == 1) form_->mnuFontStyle_Click(static_cast<std::int16_t>(below(9)));
        if (choice == 2) form_->mnuFileScreenWidth_Click();
        auto lines = static_cast<std::int16_t>(oneOf(25, 12, 12, 40));
        if (choice == 3) screen().ScreenSize(static_cast<std::int16_t>(oneOf(80, 40, 20)), lines);
        // A font that does not follow the window may make the grid larger than that.
        if (choice == 4) {
            screen().AutoSize(below(2) == 0);
            screen().ScreenFontSize(static_cast<std::int16_t>(oneOf(9, 16)));
        }
        letMessagesThrough();
        drawn();
    }

    const TestForm& form_;
    std::mt19937 random_;
    std::vector<bool> differs_ = std::vector<bool>(kMaxScreen, false);
};

using WindowRepaint = WindowTest;

TEST_F(WindowRepaint, ChangesNothingAfterRandomSessions) {
    addPictures({"bmp", "gif", "png"});
    for (unsigned seed = 1; seed <= 2; ++seed) {
        std::vector<WindowImage> plain;
        for (const bool memory : {false, true}) {
            const TestForm form = openStill({640, 420}, memory);
            RandomSession session(form, seed);
            std::int16_t lines = seed == 1 ? 12 : 25;
            form->screen().ScreenSize(seed == 1 ? 40 : 80, lines);
            for (int block = 0; block < 25; ++block) {
                session.play();
                const WindowImage played = session.comparable(form.picture());
                if (!memory) plain.push_back(played);
                ASSERT_EQ(form.difference(plain[static_cast<std::size_t>(block)], played), "")
                    << "with the memory bitmap, after block " << block << " of session " << seed;
                // A paint ends a highlight, wherever it is.
                if (form->screen().SelectionShown()) form.damage({0, 0, 1, 1});
                // The mark follows the cursor at the next blink.
                if (form->screen().cursorDrawn()) form->screen().blinkCursor();
                form->screen().ShowCursor();
                const WindowImage shown = session.comparable(form.picture());
                form.smear(kAll);
                form.paint();
                ASSERT_EQ(form.difference(shown, session.comparable(form.picture())), "")
                    << "painted after block " << block << " of session " << seed << ", memory bitmap "
                    << memory;
                ASSERT_EQ(form.difference(shown, session.comparable(drawnAnew(form))), "")
                    << "drawn anew after block " << block << " of session " << seed << ", memory bitmap "
                    << memory;
                session.drawn();
            }
        }
    }
}

/// Ways by which others take the window from sight, and give it back.
const struct {
    const char* name;
    std::function<void(const TestForm&)> away, back;
} kWays[] = {
    {"hidden", [](const TestForm& form) { ShowWindow(form.window(), SW_HIDE); },
     [](const TestForm& form) { ShowWindow(form.window(), SW_SHOWNA); }},
    {"hidden by its place",
     [](const TestForm& form) {
         SetWindowPos(form.window(), nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE);
     },
     [](const TestForm& form) {
         SetWindowPos(form.window(), nullptr, 20, 20, 0, 0, SWP_SHOWWINDOW | SWP_NOSIZE);
     }},
    {"minimised", [](const TestForm& form) { ShowWindow(form.window(), SW_SHOWMINNOACTIVE); },
     [](const TestForm& form) { ShowWindow(form.window(), SW_RESTORE); }},
    {"minimised and maximised", [](const TestForm& form) { ShowWindow(form.window(), SW_MINIMIZE); },
     [](const TestForm& form) { ShowWindow(form.window(), SW_SHOWMAXIMIZED); }},
    {"partly off the desktop", [](const TestForm& form) { form.place(-300, -100); },
     [](const TestForm& form) { form.place(10, 10); }},
    {"off the desktop", [](const TestForm& form) { form.place(5000, 10); },
     [](const TestForm& form) { form.place(10, 10); }},
    {"told not to redraw", [](const TestForm& form) { SendMessageA(form.window(), WM_SETREDRAW, FALSE, 0); },
     [](const TestForm& form) {
         SendMessageA(form.window(), WM_SETREDRAW, TRUE, 0);
         RedrawWindow(form.window(), nullptr, nullptr, RDW_INVALIDATE);
     }},
    {"covered in the middle",
     [](const TestForm& form) {
         form->ShowTitleBar(false);
         SetWindowLongA(form.window(), GWL_STYLE, GetWindowLongA(form.window(), GWL_STYLE) | WS_CLIPCHILDREN);
         form->ShowTitleBar(true);
         CreateWindowA("STATIC", "", WS_CHILD | WS_VISIBLE, 100, 100, 300, 150, form.window(), nullptr,
                       nullptr, nullptr);
     },
     [](const TestForm& form) { DestroyWindow(GetWindow(form.window(), GW_CHILD)); }},
};

TEST_F(WindowRepaint, LosesNothingThatCameWhileTheWindowWasOutOfSight) {
    for (const auto& way : kWays) {
        for (const bool memory : {false, true}) {
            const TestForm form = openStill({640, 420}, memory);
            form.fill();
            form->screen().ShowCursor();
            way.away(form);
            letMessagesThrough();
            for (int row = 2; row < 25; row += 3)
                form.writeAt(5, row, std::string(70, static_cast<char>('a' + row)));
            form.writeAt(5, 24, "\nlast\n");
            way.back(form);
            letMessagesThrough();
            const WindowImage shown = form.picture();
            EXPECT_EQ(form.difference(shown, drawnAnew(form)), "")
                << way.name << ", memory bitmap " << memory;
        }
    }
}

}  // namespace
}  // namespace kavrelon
