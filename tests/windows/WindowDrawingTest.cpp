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
    constexpr struct {
        int codes[3];
        COLORREF text, back;
    } cases[] = {{{37, 40, 0}, RGB(153, 153, 153), kBlack},
                 {{34, 43, 1}, RGB(0, 0, 255), RGB(255, 255, 0)},
                 {{32, 44, 7}, RGB(0, 0, 255), RGB(0, 255, 0)},
                 {{36, 41, 8}, RGB(255, 0, 0), RGB(255, 0, 0)}};
    const TestForm form = open();
    for (int row = 0; row < 4; ++row) {
        for (const int code : cases[row].codes) form.setRendition(code);
        form.writeAt(0, row, "\xDB ");
        const WindowImage shown = form.picture();
        const Rect block = form.cell(0, row);
        EXPECT_EQ(shown.at((block.left + block.right) / 2, (block.top + block.bottom) / 2), cases[row].text);
        EXPECT_TRUE(shown.all(form.cell(1, row), cases[row].back)) << row;
    }
}

TEST_F(WindowDrawing, EveryByteHasAPictureThatStaysInItsCell) {
    constexpr int kColumns = 40;
    for (const FontChoice& face : kFaces) {
        for (const auto rendition : {Rendition::kBold, Rendition::kUnderline, Rendition::kBlink}) {
            SCOPED_TRACE(testing::Message() << face.name << " in rendition " << int{rendition});
            const bool small = rendition == Rendition::kBold;
            const TestForm form = openWith(face, small ? Size{640, 420} : Size{900, 620});
            form.setRendition(rendition);
            for (int byte = 1; byte < 256; ++byte) {
                const char text = isDrawnAsPicture(byte) ? static_cast<char>(byte) : ' ';
                form.writeAt(byte % kColumns * 2, byte / kColumns * 2, {&text, 1});
            }
            const WindowImage shown = form.picture();
            for (int byte = 1; byte < 256; ++byte) {
                const int column = byte % kColumns * 2;
                const int row = byte / kColumns * 2;
                EXPECT_NE(shown.all(form.cell(column, row), kBlack), isDrawnAsPicture(byte) || rendition == 4)
                    << byte;
                EXPECT_TRUE(shown.all(form.cell(column + 1, row), kBlack) &&
                            shown.all(form.cell(column, row + 1), kBlack))
                    << byte;
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
            form.setRendition(Rendition::kBlink);
            for (int row = 0; row < 3; ++row) form.writeAt(10, row, "\xB3");

            const WindowImage shown = form.picture();
            const auto gap = [&](const Rect& part) { return shown.all(part, std::not_fn(isLit)); };
            SCOPED_TRACE(testing::Message() << face.name << " at width " << size.width);
            for (const int column : {0, 1, 10}) {
                const Rect cell = form.cell(column, 0);
                for (int y = cell.top; y < form.cell(0, 3).top; ++y) {
                    EXPECT_FALSE(gap({cell.left, y, cell.right, y + 1})) << "row " << y;
                }
            }
            const Rect line = form.cell(0, 4, 6);
            for (int x = line.left; x < line.right; ++x) {
                EXPECT_FALSE(gap({x, line.top, x + 1, line.bottom})) << "column " << x;
            }
            const Rect blocks = form.cell(2, 0, 3);
            EXPECT_TRUE(shown.all({blocks.left, blocks.top, blocks.right, form.cell(0, 3).top}, isLit));
        }
    }
}

TEST_F(WindowDrawing, TheCursorInvertsItsCellAlone) {
    const TestForm form = open();
    form.writeAt(4, 2, "\xDBx");
    form->screen().SetCursor(5, 2);
    const WindowImage before = form.picture();
    form->screen().ShowCursor();
    const Rect cell = form.cell(5, 2);
    EXPECT_EQ(form.picture(), before.with([&](int x, int y, COLORREF colour) {
        const bool inside = x >= cell.left && x < cell.right && y >= cell.top && y < cell.bottom;
        return colour ^ (inside ? kWhite : kBlack);
    }));
    form->screen().HideCursor();
    EXPECT_EQ(form.picture(), before);
}

TEST_F(WindowDrawing, ScrollingMovesTheGridAndNothingElse) {
    const TestForm form = open();
    for (int row = 0; row < 25; ++row) {
        form.setRendition(31 + row % 7);
        form.writeAt(0, row, std::string(80, static_cast<char>('A' + row)));
    }
    const Rect first = form.cell(0, 0);
    const Rect last = form.cell(79, 24);
    form.smear({0, 0, first.left, last.bottom});
    const WindowImage before = form.picture();
    form.writeAt(0, 24, "\n");
    EXPECT_EQ(form.picture(), before.with([&](int x, int y, COLORREF colour) {
        if (x < first.left || x >= last.right || y < first.top || y >= last.bottom) return colour;
        return y < last.top ? before.at(x, y + first.height()) : kBlack;
    }));
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
    form.paint(&strip);
    EXPECT_EQ(form.picture(), before.with([&](int x, int y, COLORREF colour) {
        return x >= from.left && x < to.right && y >= from.top && y < to.bottom ? colour : kWhite;
    }));

    form.paint();
    EXPECT_EQ(form.picture(), before);
    form->Form_MouseDown(MouseButton::Left, {from.left, from.top});
    form->Form_MouseMove(true, {to.left, to.top});
    EXPECT_FALSE(form.picture() == before);
    constexpr RECT corner{0, 0, 1, 1};
    form.paint(&corner);
    EXPECT_EQ(form.picture(), before) << "the highlight is gone, far from what was due";
}

TEST_F(WindowDrawing, WhatWaitsForPaintingScrollsAlong) {
    const TestForm form = open();
    for (int row = 0; row < 25; ++row) form.writeAt(0, row, "some text");
    const Rect cell = form.cell(3, 10);
    const RECT uncovered{cell.left, cell.top, cell.right, cell.bottom};
    // Uncovered before the first of the scrolls, and in the middle of them without a message.
    for (const char* before : {"", "\n\n"}) {
        form.writeAt(0, 24, before);
        form.smear(uncovered);
        InvalidateRect(form.window(), &uncovered, FALSE);
        form.writeAt(0, 24, "\n\n");
        UpdateWindow(form.window());
        EXPECT_TRUE(form.isPainted());
    }
}

}  // namespace
}  // namespace kavrelon
