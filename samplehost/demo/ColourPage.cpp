#include <array>
#include <string>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

constexpr int kInks = 8;
constexpr std::array<std::string_view, kInks> kInkNames{"black", "red",     "green", "yellow",
                                                        "blue",  "magenta", "cyan",  "white"};

struct NamedLook {
    Look look;
    std::string_view name;
};
constexpr std::array<NamedLook, 7> kLooks{{
    {Look::Normal, "normal"},
    {Look::Bold, "bold"},
    {Look::Dim, "dim"},
    {Look::Underline, "underline"},
    {Look::Blink, "blink"},
    {Look::Reverse, "reverse"},
    {Look::Hidden, "hidden"},
}};

constexpr int kTableRow = 4;
constexpr int kTableColumn = 6;
constexpr int kLabelColumns = 12;
constexpr int kCellColumns = 7;
constexpr int kLooksRow = 15;
constexpr std::array<Ink, 4> kSampleInks{Ink::White, Ink::Cyan, Ink::Green, Ink::Yellow};
constexpr int kLooksColumn = 6;
constexpr int kLookColumns = 10;

class ColourPage final : public DemoPage {
  public:
    std::string_view title() const override { return "Colours and renditions"; }
    std::string_view summary() const override {
        return "Eight colours on eight, each bold and dim, and seven renditions.";
    }

    void start(const DemoScreen& screen, bool) override {
        drawColumnHeads(screen.out);
        for (int fore = 0; fore < kInks; ++fore) drawColourRow(screen.out, fore);
        drawLooks(screen.out);
    }

  private:
    static void drawColumnHeads(TerminalWriter& out) {
        out.at(kTableColumn + kLabelColumns, kTableRow).style({Ink::White, Ink::Black, Look::Dim});
        for (int back = 0; back < kInks; ++back) {
            out.text(" ").field(std::to_string(40 + back), kCellColumns - 1);
        }
    }

    static void drawColourRow(TerminalWriter& out, int fore) {
        out.at(kTableColumn, kTableRow + 1 + fore).style({Ink::White, Ink::Black, Look::Dim});
        out.text(std::to_string(30 + fore) + ' ');
        out.field(kInkNames[static_cast<std::size_t>(fore)], kLabelColumns - 3);
        for (int back = 0; back < kInks; ++back) {
            out.style({static_cast<Ink>(fore), static_cast<Ink>(back), Look::Bold}).text(" Ab");
            out.style({static_cast<Ink>(fore), static_cast<Ink>(back), Look::Dim})
                .field(" ab", kCellColumns - 3);
        }
    }

    static void drawLooks(TerminalWriter& out) {
        for (std::size_t i = 0; i < kLooks.size(); ++i) {
            const NamedLook& named = kLooks[i];
            const int column = kLooksColumn + static_cast<int>(i) * kLookColumns;
            out.style({Ink::White, Ink::Black, Look::Dim});
            out.at(column, kLooksRow).text(std::to_string(static_cast<int>(named.look)));
            out.at(column, kLooksRow + 1).text(named.name);
            for (std::size_t line = 0; line < kSampleInks.size(); ++line) {
                out.at(column, kLooksRow + 2 + static_cast<int>(line));
                out.style({kSampleInks[line], Ink::Black, named.look}).text("Sample");
            }
        }
    }
};

}  // namespace

std::unique_ptr<DemoPage> makeColourPage() {
    return std::make_unique<ColourPage>();
}

}  // namespace kavrelon
