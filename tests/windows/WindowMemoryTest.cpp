#include <array>

#include "tests/windows/CountedCalls.h"
#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {
namespace {

using F = const TestForm&;

using WindowMemory = WindowTest;

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
        form.fill();
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

TEST_F(WindowMemory, IsBlankAroundAGridThatBecameSmallerUnseen) {
    const TestForm form = openStill({640, 420}, true);
    form.fill();
    form->screen().PaintOn(false);
    std::int16_t lines = 2;
    form->screen().ScreenSize(20, lines);
    form->screen().PaintOn(true);
    form.paint();
    const WindowImage shown = form.picture();
    ASSERT_GT(form.cell(0, 0).top, 40);
    EXPECT_TRUE(shown.all({0, 0, shown.width(), form.cell(0, 0).top}, kBlack));
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
