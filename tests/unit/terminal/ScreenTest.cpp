#include "terminal/screen/Screen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace rows;

constexpr CellAttr kDefaultAttr{37, 40, 1};

class ScreenTest : public ConnectedTest {};

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

TEST_F(ScreenTest, SizesOutOfRange) {
    for (const auto& [asked, columns, lines] :
         {std::array<std::int16_t, 3>{0, 80, 25}, {-32768, 80, 25}, {1, 1, 1}, {1025, 1024, 1024}}) {
        std::int16_t height = asked;
        screen().ScreenSize(asked, height);
        EXPECT_EQ(screen().CharsPerLine(), columns);
        EXPECT_EQ(screen().LinesPerPage(), lines);
        EXPECT_EQ(height, lines);
    }
}

TEST_F(ScreenTest, NoSizeBreaksAnyOperation) {
    const std::int16_t sizes[] = {-32768, 0, 1, 1024, 1025, 32767};
    const auto step = [this](auto&& operation) {
        const int error = errorOf(operation);
        EXPECT_TRUE(error == 0 || error == 9) << error;
        // A screen without a column never comes to its margin.
        const int columns = screen().CharsPerLine();
        EXPECT_EQ(cursor().x, std::clamp(cursor().x, 0, columns < 1 ? 1024 : columns));
        EXPECT_EQ(cursor().y, std::clamp(cursor().y, 0, std::max(screen().LinesPerPage() - 1, 0)));
    };
    for (int pair = 0; pair < 36; ++pair) {
        const std::int16_t columns = sizes[pair / 6], lines = sizes[pair % 6];
        const bool paint = columns < 2 || lines < 2;
        screen().PaintOn(paint);
        screen().CharsPerLine(columns);
        screen().LinesPerPage(lines);
        for (const std::int16_t corner : {std::int16_t{0}, std::int16_t{32767}}) {
            SCOPED_TRACE(testing::Message() << columns << " x " << lines << " from " << corner);
            step([&] { screen().SetCursor(corner, corner); });
            for (const char* typed : {"x", "y", "\n", "\b", "\t", "z", "\n\n\n", "\r"}) {
                step([&] { type(typed); });
            }
            step([&] { screen().SetCursor(corner, corner); });
            for (const int row :
                 {kClearEndOfLine, kClearStartOfLine, kClearLine, kClearEndOfScreen, kClearBeginOfScreen,
                  kClearScreen, kCursorUp, kCursorDown, kCursorForward, kCursorBack}) {
                step([&] { sequence(row, {"1"}); });
            }
            step([&] { blink(), form().Form_Paint(); });
            if (paint) step([&] { form().Form_Resize(); });
        }
    }
}

/// A second implementation of the buffer's rules, as simple as possible: scrolling and blanking copy whole
/// rows.
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
        if (ch == 8) x = std::max(x - 1, 0);
        if (ch == 9 || ch == 13) x = 0;
        if (ch >= 10 && ch <= 12) lineFeed();
        if (ch == 0 || (ch >= 7 && ch <= 13) || ch == 17) return;
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
        if (++y < lines) return;
        --y;
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
            const CellAttr attr = screen().rendition().CurAttr();
            const auto ch = static_cast<std::uint8_t>(byte);
            ASSERT_EQ(errorOf([&] { form().DataReceive(ch); }), errorOf([&] { plain.write(ch, attr); }));
        }
    }
    void moveCursor() {
        const int column = below(plain.columns + 3) - 1;
        const int row = below(plain.lines + 3) - 1;
        sequence(kCursorPosition, {std::to_string(row + 1), std::to_string(column + 1)});
        plain.moveTo(column, row);
    }
    void changeSize() {
        const int columns = oneOf(80, 132, 20, 3, 1, 79, 1024);
        const int lines = columns == 1024 ? oneOf(2, 5) : oneOf(25, 24, 5, 2, 1, 60, 300);
        setSize(static_cast<std::int16_t>(columns), static_cast<std::int16_t>(lines));
        plain.columns = columns;
        plain.lines = lines;
        plain.moveTo(plain.x, plain.y);
    }
    /// With painting on, clearing the start of a line is left out: it blanks more on the window than in the
    /// buffer.
    void step(bool paint) {
        const int choice = below(20);
        if (choice < 12) write();
        if (choice == 12 || choice == 13) moveCursor();
        if (choice == 14) sequence(kSetAttribute, {std::to_string(oneOf(0, 1, 7, 31, 32, 44, 48))});
        if (choice == 15 && below(4) == 0) changeSize();
        if (choice == 16) blink();
        if (choice == 18) {
            ASSERT_EQ(errorOf([&] { sequence(30, {"4", "none"}); }), 13);
        }
        if (choice == 17) {
            const int row = oneOf(kClearEndOfLine, kClearLine, kClearEndOfScreen, kClearBeginOfScreen,
                                  kClearScreen, paint ? kClearLine : kClearStartOfLine);
            ASSERT_EQ(errorOf([&] { sequence(row); }), errorOf([&] { plain.erase(row); }));
        }
        ASSERT_EQ(cursor(), (Point{plain.x, plain.y}));
    }
};

TEST_F(ScreenTwin, BufferFollowsThePlainRulesAndTheWindowShowsIt) {
    for (int round = 0; round < 90; ++round) {
        SCOPED_TRACE(round);
        const bool paint = round % 3 == 0;
        screen().PaintOn(paint);
        screen().AutoWrap(plain.wrap = round % 4 != 0);
        screen().layOutAndRepaint();
        for (int i = 0; i < 60; ++i) {
            ASSERT_NO_FATAL_FAILURE(step(paint));
            if (!paint || i % 5 != 0) continue;
            // As far as the window reaches; what is stored beyond the margin is not shown.
            for (int row = 0; row < std::min(plain.lines, 50); ++row) {
                for (int column = 0; column < std::min(plain.columns + 1, 132); ++column) {
                    const std::uint8_t ch = column == plain.columns ? 0 : stored(column, row);
                    ASSERT_EQ(shown(column, row).ch, ch == 0 ? ' ' : ch) << "step " << i << ", row " << row;
                }
            }
        }
        for (int index = 0; index < kStoredCells; ++index) {
            ASSERT_EQ(screen().buffer().record(index).Cells,
                      plain.records[static_cast<std::size_t>(index)].Cells)
                << "record " << index;
        }
    }
}

}  // namespace
}  // namespace kavrelon
