#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "headless/EscapeRows.h"
#include "headless/HeadlessSession.h"
#include "tests/unit/ErrorOf.h"

namespace kavrelon {

inline void PrintTo(const CellAttr& attr, std::ostream* out) {
    *out << int{attr.Fore} << '/' << int{attr.Back} << '/' << int{attr.Mode};
}
inline void PrintTo(const Point& point, std::ostream* out) {
    *out << '(' << point.x << ',' << point.y << ')';
}

/// A session with the views of its screen that tests compare.
class Session : public HeadlessSession {
  public:
    void setSize(std::int16_t columns, std::int16_t lines) const { screen().ScreenSize(columns, lines); }
    void blink() const { window().tick(TermTimer::cursor_timer); }

    Point cursor() const { return {screen().CursorX(), screen().CursorY()}; }
    /// The stored attribute and the shown cell, 0-based.
    CellAttr attr(int column, int row) const { return screen().buffer().record(row + 1).Attrs(column + 1); }
    ShownCell shown(int column, int row) const { return window().cells().shown(column, row); }

    /// The stored rows with the pending column, code 0 as a dot.
    Texts storedRows() const {
        return rows(screen().CharsPerLine() + 1, [this](int column, int row) {
            const std::uint8_t ch = stored(column, row);
            return static_cast<char>(ch == 0 ? '.' : ch);
        });
    }
    /// The rows as the window shows them.
    Texts shownRows() const {
        return rows(screen().CharsPerLine(),
                    [this](int column, int row) { return static_cast<char>(shown(column, row).ch); });
    }
    /// Every shown cell, row by row, the pending column's included.
    std::vector<ShownCell> picture() const {
        std::vector<ShownCell> cells;
        for (int row = 0; row < screen().LinesPerPage(); ++row) {
            for (int column = 0; column <= screen().CharsPerLine(); ++column) {
                cells.push_back(shown(column, row));
            }
        }
        return cells;
    }
    /// The cells that are inverted.
    std::vector<Point> marks() const {
        std::vector<Point> inverted;
        Point at;
        for (const ShownCell& cell : picture()) {
            if (cell.inverted) inverted.push_back(at);
            at = at.x < screen().CharsPerLine() ? Point{at.x + 1, at.y} : Point{0, at.y + 1};
        }
        return inverted;
    }
    /// The drawing calls that an operation makes on all windows.
    template <class Operation>
    int drawn(Operation operation) const {
        const int before = drawCalls();
        operation();
        return drawCalls() - before;
    }

  private:
    int drawCalls() const {
        int calls = 0;
        for (const HeadlessWindow* each : platform.desktop.terminalWindows) calls += each->drawCalls();
        return calls;
    }
    template <class CharAt>
    Texts rows(int columns, CharAt charAt) const {
        Texts texts;
        for (int row = 0; row < screen().LinesPerPage(); ++row) {
            std::string text;
            for (int column = 0; column < columns; ++column) text += charAt(column, row);
            texts.push_back(std::move(text));
        }
        return texts;
    }
};

/// Tests of a connected session: the base window is shown and open, 80 x 25.
class ConnectedTest : public testing::Test, protected Session {
  protected:
    ConnectedTest() { connect(); }
};

/// A folder that is gone after the test.
class ScratchFolder {
  public:
    ScratchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "kavrelon-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch folder");
        path_ = name;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string file(const std::string& name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

}  // namespace kavrelon
