#include <array>

#include "tests/windows/WindowTestSupport.h"

namespace kavrelon {
namespace {

/// A fixed-pitch entry of the menu, a proportional face, and a fixed-pitch one whose blocks leave gaps.
constexpr std::array<FontChoice, 3> kFaces{
    {{"MS LineDraw", 1}, {"Liberation Serif", 255}, {"Liberation Mono", 1}}};

bool isLit(COLORREF pixel) {
    return GetGValue(pixel) >= 128;
}

bool isDrawnAsPicture(int byte) {
    return isgraph(byte) || (byte >= 128 && byte != 255);
}

class WindowDrawing : public WindowTest {
  protected:
    TestForm openWith(const FontChoice& face, Size outer) {
        TestForm form = open(outer);
        form->screen().setFont(face);
        form->screen().layOutAndRepaint();
        return form;
    }
};

TEST_F(WindowDrawing, CellsHaveTheColoursOfTheirRendition) {
    struct Case {
        std::array<std::uint8_t, 3> codes;
        COLORREF text, back;
    };
    constexpr std::array<Case, 4> cases{{{{37, 40, 0}, RGB(153, 153, 153), kBlack},
                                         {{34, 43, 1}, RGB(0, 0, 255), RGB(255, 255, 0)},
                                         {{32, 44, 7}, RGB(0, 0, 255), RGB(0, 255, 0)},
                                         {{36, 41, 8}, RGB(255, 0, 0), RGB(255, 0, 0)}}};
    const TestForm form = open();
    for (std::size_t row = 0; row < cases.size(); ++row) {
        for (const std::uint8_t code : cases[row].codes)
            form->screen().term_setattr(std::string(1, static_cast<char>(code)));
        form.writeAt(0, static_cast<int>(row), "\xDB ");
    }
    const WindowImage shown = form.picture();
    for (std::size_t row = 0; row < cases.size(); ++row) {
        const Rect block = form.cell(0, static_cast<int>(row));
        EXPECT_EQ(shown.at((block.left + block.right) / 2, (block.top + block.bottom) / 2), cases[row].text);
        EXPECT_TRUE(shown.all(form.cell(1, static_cast<int>(row)), cases[row].back)) << row;
    }
}

TEST_F(WindowDrawing, EveryByteHasAPictureThatStaysInItsCell) {
    constexpr int kColumns = 40;
    for (const FontChoice& face : kFaces) {
        for (const auto rendition : {Rendition::kBold, Rendition::kUnderline, Rendition::kBlink}) {
            const TestForm form =
                openWith(face, rendition == Rendition::kBold ? Size{640, 420} : Size{900, 620});
            form->screen().term_setattr(std::string(1, static_cast<char>(rendition)));
            for (int byte = 1; byte < 256; ++byte) {
                const char text = isDrawnAsPicture(byte) ? static_cast<char>(byte) : ' ';
                form.writeAt(byte % kColumns * 2, byte / kColumns * 2, {&text, 1});
            }
            const WindowImage shown = form.picture();
            for (int byte = 1; byte < 256; ++byte) {
                const int column = byte % kColumns * 2;
                const int row = byte / kColumns * 2;
                EXPECT_NE(shown.all(form.cell(column, row), kBlack), isDrawnAsPicture(byte) || rendition == 4)
                    << face.name << " " << byte;
                EXPECT_TRUE(shown.all(form.cell(column + 1, row), kBlack) &&
                            shown.all(form.cell(column, row + 1), kBlack))
                    << face.name << " " << byte << " in rendition " << int{rendition};
            }
        }
    }
}

TEST_F(WindowDrawing, LinesAndBlocksJoinTheirNeighbours) {
    for (const FontChoice& face : kFaces) {
        for (const Size size : {Size{700, 400}, Size{900, 620}, Size{1270, 790}}) {
            const TestForm form = openWith(face, size);
            for (int row = 0; row < 3; ++row) form.writeAt(0, row, "\xB3\xBA\xDB\xDB\xDB");
            form.writeAt(0, 4, "\xC4\xC4\xC4\xCD\xCD\xCD");
            form->screen().term_setattr(std::string(1, Rendition::kBlink));
            for (int row = 0; row < 3; ++row) form.writeAt(10, row, "\xB3");

            const WindowImage shown = form.picture();
            const auto gap = [&](const Rect& part) { return shown.all(part, std::not_fn(isLit)); };
            const auto where = ::testing::Message() << face.name << " at width " << size.width << ": ";
            for (const int column : {0, 1, 10}) {
                const Rect cell = form.cell(column, 0);
                for (int y = cell.top; y < form.cell(0, 3).top; ++y) {
                    EXPECT_FALSE(gap({cell.left, y, cell.right, y + 1})) << where << "row " << y;
                }
            }
            const Rect line = form.cell(0, 4, 6);
            for (int x = line.left; x < line.right; ++x) {
                EXPECT_FALSE(gap({x, line.top, x + 1, line.bottom})) << where << "column " << x;
            }
            const Rect blocks = form.cell(2, 0, 3);
            EXPECT_TRUE(shown.all({blocks.left, blocks.top, blocks.right, form.cell(0, 3).top}, isLit))
                << where;
        }
    }
}

TEST_F(WindowDrawing, TheCursorInvertsItsCellAlone) {
    const TestForm form = open();
    form.writeAt(4, 2, "\xDBx");
    form->screen().SetCursor(5, 2);
    const WindowImage before = form.picture();
    form->screen().ShowCursor();
    const WindowImage marked = form.picture();
    const Rect cell = form.cell(5, 2);
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            const bool inside = x >= cell.left && x < cell.right && y >= cell.top && y < cell.bottom;
            ASSERT_EQ(marked.at(x, y), before.at(x, y) ^ (inside ? kWhite : kBlack)) << x << "," << y;
        }
    }
    form->screen().HideCursor();
    EXPECT_EQ(form.picture(), before);
}

TEST_F(WindowDrawing, ScrollingMovesTheGridAndNothingElse) {
    for (const bool memory : {false, true}) {
        const TestForm form = open();
        form->screen().UseMemoryDC(memory);
        for (int row = 0; row < 25; ++row) {
            form->screen().term_setattr(std::string(1, static_cast<char>(31 + row % 7)));
            form.writeAt(0, row, std::string(80, static_cast<char>('A' + row)));
        }
        const Rect first = form.cell(0, 0);
        const Rect last = form.cell(79, 24);
        // A scroll leaves the window's margins alone, unless the memory bitmap with its own is shown.
        if (!memory) form.smear({0, 0, first.left, last.bottom});
        const WindowImage before = form.picture();
        form.writeAt(0, 24, "\n");
        const WindowImage after = form.picture();
        for (int y = first.top; y < last.bottom; ++y) {
            for (int x = 0; x < last.right; ++x) {
                const bool margin = x < first.left;
                const COLORREF moved = y < last.top ? before.at(x, y + first.height()) : kBlack;
                ASSERT_EQ(after.at(x, y), margin ? before.at(x, y) : moved) << x << "," << y << memory;
            }
        }
    }
}

TEST_F(WindowDrawing, APaintDrawsTheCellsOfItsAreaAlone) {
    const TestForm form = open();
    std::int16_t lines = 1024;
    form->screen().ScreenSize(1024, lines);
    for (int row = 0; row < 120; ++row) {
        form.writeAt(0, row, std::string(300, static_cast<char>('A' + row % 26)));
    }
    // The rows that come into the window are drawn, also those that are cut by its edge.
    form.writeAt(0, 1023, "\n\n");
    EXPECT_TRUE(form.isPainted());
    const WindowImage before = form.picture();
    const Rect from = form.cell(3, 4);
    const Rect to = form.cell(40, 5);
    const RECT strip{from.left + 1, from.bottom - 1, to.left + 1, to.top + 1};
    form.smear({0, 0, 2000, 2000});
    InvalidateRect(form.window(), &strip, FALSE);
    UpdateWindow(form.window());
    const WindowImage after = form.picture();
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            const bool due = x >= from.left && x < to.right && y >= from.top && y < to.bottom;
            ASSERT_EQ(after.at(x, y), due ? before.at(x, y) : kWhite) << x << "," << y;
        }
    }

    InvalidateRect(form.window(), nullptr, FALSE);
    UpdateWindow(form.window());
    EXPECT_EQ(form.picture(), before);
    form->Form_MouseDown(MouseButton::Left, {from.left, from.top});
    form->Form_MouseMove(true, {to.left, to.top});
    EXPECT_FALSE(form.picture() == before);
    constexpr RECT corner{0, 0, 1, 1};
    InvalidateRect(form.window(), &corner, FALSE);
    UpdateWindow(form.window());
    EXPECT_EQ(form.picture(), before) << "the highlight is gone, far from what was due";
}

TEST_F(WindowDrawing, WhatWaitsForPaintingScrollsAlong) {
    const TestForm form = open();
    for (int row = 0; row < 25; ++row) form.writeAt(0, row, "some text");
    const Rect cell = form.cell(3, 10);
    const RECT uncovered{cell.left, cell.top, cell.right, cell.bottom};
    form.smear(uncovered);
    InvalidateRect(form.window(), &uncovered, FALSE);
    form.writeAt(0, 24, "\n");
    UpdateWindow(form.window());
    EXPECT_TRUE(form.isPainted());
}

}  // namespace
}  // namespace kavrelon
