#include <array>
#include <vector>

#include "terminal/MenuItems.h"
#include "tests/windows/CountedCalls.h"
#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {
namespace {

using F = const TestForm&;
constexpr RECT kAll{0, 0, 3000, 3000};

void useColours(F form, int fore, int back, int rendition = Rendition::kBold) {
    for (const int code : {fore, back, rendition}) form.setRendition(code);
}

void choose(F form, MenuCommand command) {
    SendMessageA(form.window(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void fillScreen(F form) {
    for (int row = 0; row < form->screen().LinesPerPage(); ++row) {
        useColours(form, 31 + row % 7, 40 + row % 3, row % 9);
        form.writeAt(0, row,
                     std::string(static_cast<std::size_t>(form->screen().CharsPerLine()),
                                 static_cast<char>('A' + row)));
    }
}

void setScreen(F form, std::int16_t columns, std::int16_t lines) {
    form->screen().ScreenSize(columns, lines);
    fillScreen(form);
}

/// A session that uses all ways to draw, step by step. Erased cells differ from what the buffer holds until
/// they are repainted, so these steps end with that.
struct Step {
    const char* name;
    std::function<void(F)> play;
};
const std::vector<Step> kSteps{
    {"text in every rendition", fillScreen},
    {"every byte",
     [](F form) {
         form->screen().SetCursor(0, 0);
         for (int byte = 1; byte < 256; ++byte) form.write({std::string(1, static_cast<char>(byte))});
     }},
    {"a wrap at the last row", [](F form) { form.writeAt(70, 24, std::string(15, '\xDB')); }},
    {"scrolls", [](F form) { form.writeAt(5, 24, "\n\nlast\nline\n"); }},
    {"slanted and underlined, over the edges",
     [](F form) {
         for (const auto mode : {Rendition::kBlink, Rendition::kUnderline}) {
             useColours(form, 33, 44, mode);
             form.writeAt(mode, mode, "Wfj\xDB\xC4\xB3 gy");
             form.writeAt(76, 24, "Wfjy\xDB\n");
         }
     }},
    {"erased ends",
     [](F form) {
         form.setRendition(Rendition::kReverse);
         form->screen().SetCursor(40, 20);
         form->screen().ClearEndOfScreen();
         form->screen().SetCursor(30, 10);
         form->screen().ClearEndOfLine();
     }},
    {"erased starts",
     [](F form) {
         useColours(form, 32, 41, Rendition::kUnderline);
         form->screen().ClearStartOfLine();
         form->screen().SetCursor(3, 4);
         form->screen().ClearBeginOfScreen();
     }},
    {"erased rows scroll",
     [](F form) {
         form->screen().SetCursor(3, 24);
         form->screen().ClearLine();
         form.write("\n\n");
     }},
    {"a repaint", [](F form) { form->screen().RepaintScreen(); }},
    {"the mark", [](F form) { form->screen().ShowCursor(); }},
    {"a paint of half a mark",
     [](F form) {
         const Rect cell = form.cell(form->screen().CursorX(), 24);
         form.damage({0, cell.top, cell.left + 3, cell.bottom - 1});
     }},
    {"a mark elsewhere",
     [](F form) {
         form->screen().SetCursor(80, 12);
         form->screen().blinkCursor();
         form->screen().blinkCursor();
         form.damage({0, 0, 2000, 2000});
     }},
    {"text under the mark", [](F form) { form.writeAt(10, 10, "text"); }},
    {"a scroll with the mark",
     [](F form) {
         form->screen().ShowCursor();
         form.writeAt(10, 24, "\n");
         form->screen().ShowCursor();
     }},
    {"a drag",
     [](F form) {
         form.press(20, 10);
         for (const int column : {30, 60, 40}) form.dragTo(column, 14);
     }},
    {"output into the highlight", [](F form) { form.writeAt(18, 12, "new text"); }},
    {"a scroll under the drag", [](F form) { form.writeAt(0, 24, "\n\n"); }},
    {"the drag goes on", [](F form) { form.dragTo(35, 16); }},
    {"the drag comes back", [](F form) { form.dragTo(20, 10); }},
    {"a paint afterwards", [](F form) { form.damage(form.cell(0, 0)); }},
    {"another drag",
     [](F form) {
         form.press(10, 3);
         form.dragTo(5, 20);
     }},
    {"a paint elsewhere ends it", [](F form) { form.damage(form.cell(70, 1)); }},
    {"a paint of where it was", [](F form) { form.damage(form.cell(5, 3, 6)); }},
    {"reset ends a drag",
     [](F form) {
         form.press(10, 3);
         form.dragTo(5, 20);
         form->mnuFileRest_Click();
     }},
    {"pictures",
     [](F form) {
         form->DisplayPicture(1, 11, 6, 20, 11, "p.png");
         form->DisplayPicture(2, 15, 9, 90, 30, "p.bmp");
         form->DisplayPicture(3, -5, -5, 4, 3, "p.gif");
     }},
    {"text below pictures", [](F form) { form.writeAt(5, 8, std::string(30, '\xDB')); }},
    {"pictures stay while text scrolls", [](F form) { form.writeAt(0, 24, "\n\nmore"); }},
    {"a paint of pictures", [](F form) { form.damage(form.cell(12, 9, 10)); }},
    {"a picture goes", [](F form) { form->ClearPicture(2); }},
    {"132 columns", [](F form) { choose(form, MenuCommand::mnuFileScreenWidth); }},
    {"text in the wide screen", fillScreen},
    {"a larger window",
     [](F form) {
         form.setSize({1000, 640});
     }},
    {"text in it", [](F form) { form.writeAt(120, 24, std::string(20, 'x')); }},
    {"a smaller window",
     [](F form) {
         form.setSize({500, 300});
     }},
    {"scrolls in it", [](F form) { form.writeAt(0, 24, "\n1\n2\n3"); }},
    {"80 columns", [](F form) { choose(form, MenuCommand::mnuFileScreenWidth); }},
    {"the menu's faces",
     [](F form) {
         for (std::size_t entry = 8; entry > 0; --entry) choose(form, MenuCommand::mnuFontStyle + entry);
         fillScreen(form);
     }},
    {"a grid larger than the window",
     [](F form) {
         form->screen().AutoSize(false);
         form->screen().ScreenFontSize(12);
         form.setSize({700, 400});
         setScreen(form, 200, 90);
     }},
    {"rows come in from below", [](F form) { form.writeAt(60, 89, "\n\n\n"); }},
    {"a paint of it",
     [](F form) {
         form.damage({0, 300, 700, 400});
     }},
    {"a small grid",
     [](F form) {
         form->screen().AutoSize(true);
         setScreen(form, 20, 5);
     }},
    {"off the desktop",
     [](F form) {
         form.place(-200, 10);
         form.writeAt(0, 4, "abcdef\nghi");
         form.place(10, 10);
         letMessagesThrough();
     }},
    {"what was not painted",
     [](F form) {
         form->screen().PaintOn(false);
         form.writeAt(0, 4, "not\nseen");
         form->screen().PaintOn(true);
         form.write("seen\n");
         form.damage({0, 0, 2000, 2000});
     }},
    {"a new screen",
     [](F form) {
         form->EraseScreen();
         form.write("bold");
     }},
    {"half of it erased",
     [](F form) {
         useColours(form, 37, 40);
         form.writeAt(0, 2, std::string(20, '\xDB'));
         form->screen().SetCursor(10, 2);
         form->screen().ClearStartOfLine();
         form.write("after");
     }},
};

using WindowMemory = WindowTest;

TEST_F(WindowMemory, ThePixelsAreTheSameWithAndWithoutIt) {
    addPictures({"bmp", "gif", "png"});
    const Size size{700, 460};
    const TestForm plain = openStill(size, false);
    const TestForm kept = openStill(size, true);
    for (const Step& step : kSteps) {
        step.play(plain);
        const WindowImage expected = plain.picture();
        step.play(kept);
        EXPECT_EQ(kept.difference(expected, kept.picture()), "") << step.name;
        EXPECT_EQ(kept->screen().CursorX(), plain->screen().CursorX()) << step.name;
        // A paint would end it.
        if (kept->screen().SelectionShown()) continue;
        kept.smear(kAll);
        kept.paint();
        EXPECT_EQ(kept.difference(expected, kept.picture()), "") << "painted after " << step.name;
    }
}

TEST_F(WindowMemory, APaintIsOneCopyAndAScrollMovesTheBitmap) {
    // Copies, texts, fills and scrolls.
    using Calls = std::array<int, 4>;
    const struct {
        const char* name;
        bool memory;
        std::function<void(F)> play;
        Calls onWindow;
    } cases[] = {
        {"a paint", true, [](F form) { form.paint(); }, {1, 0, 0, 0}},
        {"a paint of a part", true, [](F form) { form.damage(form.cell(3, 3)); }, {1, 0, 0, 0}},
        {"a repaint on demand", true, [](F form) { form->Redrawscreen(true); }, {1, 0, 0, 0}},
        {"a paint of what was not drawn",
         true,
         [](F form) {
             form->screen().PaintOn(false);
             form->screen().PaintOn(true);
             form.paint();
         },
         {1, 0, 0, 0}},
        {"a scroll", true, [](F form) { form.writeAt(0, 24, "\n"); }, {1, 0, 0, 0}},
        {"a scroll without", false, [](F form) { form.writeAt(0, 24, "\n"); }, {0, 0, 1, 1}},
        {"two characters", true, [](F form) { form.writeAt(0, 0, "ab"); }, {0, 2, 0, 0}},
    };
    for (const auto& c : cases) {
        const TestForm form = openStill({640, 420}, c.memory);
        fillScreen(form);
        useColours(form, 37, 40);
        const HDC window = GetDC(form.window());
        const CountedCalls copies(&BitBlt);
        const CountedCalls texts(&ExtTextOutA);
        const CountedCalls wideTexts(&ExtTextOutW);
        const CountedCalls fills(&PatBlt);
        const CountedCalls scrolls(&ScrollDC);
        c.play(form);
        EXPECT_EQ((Calls{copies.on(window), texts.on(window) + wideTexts.on(window), fills.on(window),
                         scrolls.on(window)}),
                  c.onWindow)
            << c.name;
    }
}

TEST_F(WindowMemory, TakesNoMemoryWhenItIsTurnedOff) {
    const TestForm other = openStill({640, 420}, true);
    const TestForm form = openStill({640, 420}, false);
    expectNothingLeftBehind([&] {
        form->screen().UseMemoryDC(true);
        form->screen().UseMemoryDC(false);
    });
}

}  // namespace
}  // namespace kavrelon
