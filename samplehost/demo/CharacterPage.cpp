#include <array>
#include <string>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

constexpr int kTableColumn = 6;
constexpr int kTableRow = 3;
constexpr int kCodesInRow = 32;
constexpr int kFirstCode = 32;
constexpr int kLastCode = 255;
constexpr int kFramesRow = 14;

class CharacterPage final : public DemoPage {
  public:
    std::string_view title() const override { return "Characters and frames"; }
    std::string_view summary() const override {
        return "Every printable code, and what line drawing is made of.";
    }

    void start(const DemoScreen& screen, bool) override {
        drawTable(screen.out);
        drawFrames(screen.out);
        drawShades(screen.out);
    }

  private:
    static void drawTable(TerminalWriter& out) {
        for (int first = kFirstCode; first <= kLastCode; first += kCodesInRow) {
            const int row = kTableRow + (first - kFirstCode) / kCodesInRow;
            out.at(kTableColumn, row)
                .style({Ink::White, Ink::Black, Look::Dim})
                .field(std::to_string(first), 5);
            out.style({first < 128 ? Ink::White : Ink::Cyan});
            for (int code = first; code < first + kCodesInRow; ++code) {
                out.repeat(static_cast<char>(code), 1).text(" ");
            }
        }
    }

    static void drawFrames(TerminalWriter& out) {
        out.style({Ink::Cyan}).frame({6, kFramesRow, 20, 7}, FrameLines::Double);
        out.style({Ink::Yellow}).frame({9, kFramesRow + 1, 14, 5}, FrameLines::Single);
        out.at(12, kFramesRow + 3).style({}).text("frames");
        drawGrid(out, 30);
    }

    /// A grid with its crossings: three cells wide and three high.
    static void drawGrid(TerminalWriter& out, int column) {
        static constexpr std::array<std::string_view, 7> kGrid{
            "\xDA\xC4\xC4\xC4\xC2\xC4\xC4\xC4\xC2\xC4\xC4\xC4\xBF", "\xB3   \xB3   \xB3   \xB3",
            "\xC3\xC4\xC4\xC4\xC5\xC4\xC4\xC4\xC5\xC4\xC4\xC4\xB4", "\xB3   \xB3   \xB3   \xB3",
            "\xC3\xC4\xC4\xC4\xC5\xC4\xC4\xC4\xC5\xC4\xC4\xC4\xB4", "\xB3   \xB3   \xB3   \xB3",
            "\xC0\xC4\xC4\xC4\xC1\xC4\xC4\xC4\xC1\xC4\xC4\xC4\xD9",
        };
        out.style({Ink::Green});
        for (std::size_t line = 0; line < kGrid.size(); ++line) {
            out.at(column, kFramesRow + static_cast<int>(line)).text(kGrid[line]);
        }
    }

    static void drawShades(TerminalWriter& out) {
        static constexpr std::array<char, 4> kShades{'\xB0', '\xB1', '\xB2', '\xDB'};
        static constexpr std::array<Ink, 6> kInks{Ink::Red,  Ink::Yellow, Ink::Green,
                                                  Ink::Cyan, Ink::Blue,   Ink::Magenta};
        for (std::size_t line = 0; line < kInks.size(); ++line) {
            out.at(48, kFramesRow + static_cast<int>(line));
            for (const Look look : {Look::Dim, Look::Bold}) {
                out.style({kInks[line], Ink::Black, look});
                for (const char shade : kShades) out.repeat(shade, 3);
            }
        }
    }
};

}  // namespace

std::unique_ptr<DemoPage> makeCharacterPage() {
    return std::make_unique<CharacterPage>();
}

}  // namespace kavrelon
