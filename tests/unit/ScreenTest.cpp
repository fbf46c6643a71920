#include "terminal/Screen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

constexpr CellAttr kDefaultAttr{37, 40, 1};
// Table rows of the erase sequences.
constexpr int kClearEndOfLine = 19, kClearStartOfLine = 21, kClearLine = 22, kClearEndOfScreen = 23,
              kClearBeginOfScreen = 25, kClearScreen = 26;

class ScreenTest : public ConnectedTest {};

TEST_F(ScreenTest, WrapWaitsForTheNextPrintedByte) {
    setSize(4, 2);
    type("abcd\be");
    EXPECT_EQ(cursor(), (Point{4, 0}));
    type("\n\rfghi");
    EXPECT_EQ(storedRows(), (Texts{"abce ", "fghi "}));
    type("\nj");
    EXPECT_EQ(cursor(), (Point{1, 1}));
    EXPECT_EQ(storedRows(), (Texts{"     ", "j    "}));
    EXPECT_EQ(shownRows(), (Texts{"    ", "j   "}));
    screen().AutoWrap(false);
    type("klmnop");
    EXPECT_EQ(storedRows()[1], "jklmn");
    EXPECT_EQ(shown(4, 1), ShownCell{});
    EXPECT_EQ(stored(6, 1), 'p');
}

TEST_F(ScreenTest, WritingScrollingAndErasingMarkTheScreenAsWritten) {
    for (const char* typed : {"x", "\n\n", "\x1B"}) {
        setSize(80, 2);
        form().EraseScreen();
        EXPECT_FALSE(screen().ScreenDirty());
        type({"\0\a\b\t\r\n\x11", 7});
        EXPECT_FALSE(screen().ScreenDirty());
        type(typed);
        EXPECT_TRUE(screen().ScreenDirty());
    }
}

TEST_F(ScreenTest, ErasingInBufferAndWindow) {
    // The rows as stored, with the pending column, and as shown.
    const struct {
        int sequence;
        Point cursor;
        Texts stored, shown;
    } cases[] = {{kClearEndOfLine, {2, 1}, {"AAAAA", "BB...", "CCCCC"}, {"AAAA", "BB  ", "CCCC"}},
                 {kClearEndOfLine, {4, 1}, {"AAAAA", "BBBBB", "CCCCC"}, {"AAAA", "BBBB", "CCCC"}},
                 {kClearStartOfLine, {2, 1}, {"AAAAA", "   BB", "CCCCC"}, {"AAAA", "    ", "CCCC"}},
                 {kClearLine, {2, 1}, {"AAAAA", "     ", "CCCCC"}, {"AAAA", "    ", "CCCC"}},
                 {kClearEndOfScreen, {2, 1}, {"AAAAA", "BB...", "     "}, {"AAAA", "BB  ", "    "}},
                 {kClearEndOfScreen, {4, 2}, {"AAAAA", "BBBBB", "CCCCC"}, {"AAAA", "BBBB", "CCCC"}},
                 {kClearBeginOfScreen, {2, 1}, {"     ", "     ", "CCCCC"}, {"    ", "    ", "CCCC"}},
                 {kClearScreen, {2, 1}, Texts(3, "     "), Texts(3, "    ")}};
    const Pen inForce{0x0000FF, 0xFF0000, false, true};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.sequence << " at " << c.cursor.x << ',' << c.cursor.y);
        setSize(5, 3);
        form().EraseScreen();
        type("AAAAABBBBBCCCCC");
        setSize(4, 3);
        sequence(31, {"31", "44;4"});
        screen().SetCursor(c.cursor.x, c.cursor.y);
        sequence(c.sequence);
        EXPECT_EQ(storedRows(), c.stored);
        EXPECT_EQ(shownRows(), c.shown);
        EXPECT_EQ(cursor(), c.sequence == kClearScreen ? (Point{0, 0}) : c.cursor);
        EXPECT_EQ(screen().ScreenDirty(), c.sequence != kClearScreen);
        for (const ShownCell& cell : picture()) {
            EXPECT_TRUE(cell.ch != ' ' || cell.pen == (c.sequence == kClearScreen ? Pen{} : inForce));
        }
    }
    EXPECT_EQ(screen().rendition().attr(), (CellAttr{31, 44, 1}));
}

TEST_F(ScreenTest, ErasingClosesHelpBoxes) {
    const auto openAfter = [this](int erase) {
        for (const char* top : {"0", "4", "5", "20"}) {
            sequence(39, {top, top, "1", "10", "3", "text"});
        }
        screen().SetCursor(0, 5);
        sequence(erase);
        return form().helpBoxes().openSlots();
    };
    EXPECT_EQ(openAfter(kClearBeginOfScreen), (std::vector<int>{0, 4, 5, 20}));
    EXPECT_EQ(openAfter(kClearEndOfScreen), (std::vector<int>{0, 4}));
    EXPECT_EQ(openAfter(kClearScreen), std::vector<int>{});
    sequence(39, {"50", "1", "1", "10", "3", "text"});
    sequence(32);
    EXPECT_EQ(form().helpBoxes().openSlots(), std::vector<int>{});
}

TEST_F(ScreenTest, SizesOutOfRange) {
    const struct {
        std::int16_t width, height;
        int columns, lines;
    } cases[] = {
        {0, 0, 80, 25},     {-1, -32768, 80, 25}, {1, 1, 1, 1},        {1024, 2, 1024, 2},
        {1025, 2, 1024, 2}, {2, 1025, 2, 1024},   {32767, 3, 1024, 3}, {132, 0, 132, 25},
    };
    for (const auto& c : cases) {
        std::int16_t height = c.height;
        screen().ScreenSize(c.width, height);
        EXPECT_EQ(screen().CharsPerLine(), c.columns);
        EXPECT_EQ(screen().LinesPerPage(), c.lines);
        EXPECT_EQ(height, c.lines);
    }
}

TEST_F(ScreenTest, NoSizeBreaksAnyOperation) {
    const std::int16_t sizes[] = {-32768, 0, 1, 1024, 1025, 32767};
    const auto step = [this](const char* what, auto&& operation) {
        const int error = errorOf(operation);
        EXPECT_TRUE(error == 0 || error == 9) << what << " fails with " << error;
        EXPECT_GE(screen().CursorX(), 0) << what;
        // A screen without a column never comes to its margin.
        const int columns = screen().CharsPerLine();
        EXPECT_LE(screen().CursorX(), columns < 1 ? 1024 : columns) << what;
        EXPECT_GE(screen().CursorY(), 0) << what;
        EXPECT_LE(screen().CursorY(), std::max(screen().LinesPerPage() - 1, 0)) << what;
    };
    for (const std::int16_t columns : sizes) {
        for (const std::int16_t lines : sizes) {
            SCOPED_TRACE(testing::Message() << columns << " x " << lines);
            const bool paint = columns < 2 || lines < 2;
            screen().PaintOn(paint);
            screen().CharsPerLine(columns);
            screen().LinesPerPage(lines);
            for (const Point& corner : {Point{0, 0}, Point{32767, 32767}}) {
                step("SetCursor", [&] { screen().SetCursor(corner.x, corner.y); });
                for (const char* typed : {"x", "y", "\n", "\b", "\t", "z", "\n\n\n", "\r"}) {
                    step("WriteTerm", [&] { type(typed); });
                }
                step("SetCursor", [&] { screen().SetCursor(corner.x, corner.y); });
                for (const int row : {19, 21, 22, 23, 25, 26, 3, 5, 7, 9}) {
                    step("sequence", [&] { sequence(row, {"1"}); });
                }
                step("blink", [&] { blink(); });
                step("paint", [&] { form().Form_Paint(); });
                if (paint) step("resize", [&] { form().Form_Resize(); });
            }
        }
    }
}

/// The rules of the buffer once more, as plain as can be: every scroll and every blanking copies whole rows.
class PlainScreen {
  public:
    std::vector<ScreenLine> records{static_cast<std::size_t>(kStoredCells)};
    int x = 0, y = 0, columns = 80, lines = 25;
    bool wrap = true;

    PlainScreen() {
        std::fill(blank_.Cells.begin() + 1, blank_.Cells.end(), Cell{' ', kDefaultAttr});
        blankRows(0, lines - 1);
    }

    void write(std::uint8_t ch, CellAttr attr) {
        switch (ch) {
            case 0:
            case 7:
            case 17:
                return;
            case 8:
                x = std::max(x - 1, 0);
                return;
            case 9:
            case 13:
                x = 0;
                return;
            case 10:
            case 11:
            case 12:
                return lineFeed();
            default:
                break;
        }
        if (x == columns && wrap) {
            x = 0;
            lineFeed();
        }
        put(x, y, ch, attr);
        ++x;
    }
    void erase(int sequence) {
        if (sequence == kClearScreen) {
            x = y = 0;
            blankRows(0, lines - 1);
        }
        if (sequence == kClearLine) blankRows(y, y);
        if (sequence == kClearEndOfLine || sequence == kClearEndOfScreen) {
            for (int column = x; x < columns && column <= columns; ++column) put(column, y, 0, kDefaultAttr);
        }
        if (sequence == kClearEndOfScreen) blankRows(y + 1, lines - 1);
        if (sequence == kClearStartOfLine || sequence == kClearBeginOfScreen) {
            for (int column = 0; column <= x; ++column) put(column, y, ' ', kDefaultAttr);
        }
        if (sequence == kClearBeginOfScreen) blankRows(0, y);
    }
    void resize(int newColumns, int newLines) {
        columns = newColumns;
        lines = newLines;
        moveTo(x, y);
    }
    void moveTo(int column, int row) {
        x = std::clamp(column, 0, columns);
        y = std::clamp(row, 0, lines - 1);
    }

  private:
    void put(int column, int row, std::uint8_t ch, CellAttr attr) {
        if (column > 1023 || row > 1023) raise(RuntimeErrorNumber::SubscriptOutOfRange);
        records[static_cast<std::size_t>(row) + 1].Cells[static_cast<std::size_t>(column) + 1] = {ch, attr};
    }
    void lineFeed() {
        if (y < lines - 1) {
            ++y;
            return;
        }
        std::copy(records.begin() + 2, records.begin() + lines + 1, records.begin() + 1);
        blankRows(lines - 1, lines - 1);
    }
    void blankRows(int first, int last) {
        for (int row = first; row <= last; ++row) records[static_cast<std::size_t>(row) + 1] = blank_;
    }

    ScreenLine blank_;
};

/// Random operations on the screen and on its plain twin.
class ScreenTwin : public ConnectedTest {
  protected:
    PlainScreen plain;
    std::mt19937 random{20};

    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    template <class... Values>
    int oneOf(Values... values) {
        const int all[] = {values...};
        return all[below(static_cast<int>(sizeof...(values)))];
    }

    void write() {
        const int count = oneOf(1, 2, 10, 90);
        for (int i = 0; i < count; ++i) {
            const int byte = below(8) == 0 ? oneOf(8, 9, 10, 10, 10, 11, 12, 13) : below(256);
            const CellAttr attr = screen().rendition().attr();
            const auto ch = static_cast<std::uint8_t>(byte);
            ASSERT_EQ(errorOf([&] { form().DataReceive(ch); }), errorOf([&] { plain.write(ch, attr); }));
        }
    }
    void moveCursor() {
        const int column = below(plain.columns + 3) - 1;
        const int row = below(plain.lines + 3) - 1;
        sequence(2, {std::to_string(row + 1), std::to_string(column + 1)});
        plain.moveTo(column, row);
    }
    void erase(int row) {
        ASSERT_EQ(errorOf([&] { sequence(row); }), errorOf([&] { plain.erase(row); }));
    }
    void changeSize(bool properties) {
        const int columns = oneOf(80, 132, 20, 3, 1, 79, 1024);
        const int lines = columns == 1024 ? oneOf(2, 5) : oneOf(25, 24, 5, 2, 1, 60, 300);
        if (properties) {
            screen().CharsPerLine(static_cast<std::int16_t>(columns));
            screen().LinesPerPage(static_cast<std::int16_t>(lines));
        } else {
            setSize(static_cast<std::int16_t>(columns), static_cast<std::int16_t>(lines));
        }
        plain.resize(columns, lines);
    }
    void expectTwins() {
        ASSERT_EQ(cursor(), (Point{plain.x, plain.y}));
        for (int index = 0; index < kStoredCells; ++index) {
            ASSERT_EQ(screen().buffer().record(index).Cells,
                      plain.records[static_cast<std::size_t>(index)].Cells)
                << "record " << index;
        }
    }
};

TEST_F(ScreenTwin, BufferFollowsThePlainRules) {
    for (int round = 0; round < 60; ++round) {
        screen().PaintOn(round % 3 == 0);
        for (int i = 0; i < 60; ++i) {
            const int choice = below(20);
            if (choice < 12) write();
            if (choice == 12 || choice == 13) moveCursor();
            if (choice == 14) sequence(30, {std::to_string(oneOf(0, 1, 7, 31, 32, 44, 48))});
            if (choice == 15 && below(4) == 0) changeSize(below(2) == 0);
            if (choice == 16) screen().AutoWrap(plain.wrap = below(4) != 0);
            if (choice == 17) {
                erase(oneOf(kClearEndOfLine, kClearStartOfLine, kClearLine, kClearEndOfScreen,
                            kClearBeginOfScreen, kClearScreen));
            }
            if (choice == 18) blink();
            if (choice == 19 && below(4) == 0) form().Form_Paint();
            ASSERT_EQ(cursor(), (Point{plain.x, plain.y})) << "round " << round << " step " << i;
        }
        ASSERT_NO_FATAL_FAILURE(expectTwins()) << "round " << round;
    }
}

TEST_F(ScreenTwin, WindowShowsTheBuffer) {
    for (int i = 0; i < 2000; ++i) {
        const int choice = below(20);
        if (choice < 12) write();
        if (choice == 12 || choice == 13) moveCursor();
        if (choice == 14) blink();
        if (choice == 15 && below(10) == 0) changeSize(false);
        // Clearing the start of a line is left out: it blanks more on the window than in the buffer.
        if (choice == 16) {
            erase(oneOf(kClearEndOfLine, kClearLine, kClearEndOfScreen, kClearBeginOfScreen, kClearScreen));
        }
        if (i % 10 != 0) continue;
        for (int row = 0; row < plain.lines; ++row) {
            for (int column = 0; column < plain.columns; ++column) {
                const std::uint8_t ch = stored(column, row);
                ASSERT_EQ(shown(column, row).ch, ch == 0 ? ' ' : ch) << "step " << i << ", row " << row;
            }
        }
    }
}

}  // namespace
}  // namespace kavrelon
