#include <algorithm>
#include <array>
#include <string>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

constexpr int kNarrow = 80;
constexpr int kWide = 132;
constexpr milliseconds kFirstChange{4000};

constexpr std::array<std::string_view, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<std::string_view, 9> kArticles{"Brass lanterns", "Canvas sails",  "Deck chairs",
                                                    "Fishing nets",   "Harbour bells", "Oak barrels",
                                                    "Signal flags",   "Tarred rope",   "Tin kettles"};

constexpr int kNameColumns = 18;
constexpr int kMonthColumns = 8;
constexpr int kTotalColumns = 14;
constexpr int kTableRow = 4;

int sold(std::size_t article, std::size_t month) {
    return static_cast<int>((article * 577 + month * 389 + article * month * 31) % 900 + 40);
}

std::string rightAligned(const std::string& text, int width) {
    const auto cells = static_cast<std::size_t>(width);
    return std::string(cells - std::min(cells, text.size()), ' ') + text;
}

/// A table that is too wide for 80 columns, shown on 80 and on 132.
class WidthPage final : public DemoPage {
  public:
    std::string_view title() const override { return "80 and 132 columns"; }
    std::string_view summary() const override {
        return "A year's table, on a narrow screen and on a wide one.";
    }
    bool wantsWholeScreen() const override { return true; }
    milliseconds watchTime() const override { return std::chrono::seconds(12); }

    void start(const DemoScreen& screen, bool unattended) override {
        columnsFound_ = screen.columns;
        rows_ = screen.rows;
        wide_ = false;
        changesItself_ = unattended;
        shown_ = {};
        change(screen.out, kNarrow);
    }

    void advance(const DemoScreen& screen, milliseconds elapsed) override {
        shown_ += elapsed;
        if (!changesItself_ || shown_ < kFirstChange) return;
        changesItself_ = false;
        change(screen.out, kWide);
    }

    bool key(const DemoScreen& screen, char key) override {
        if (key != ' ') return false;
        changesItself_ = false;
        change(screen.out, wide_ ? kNarrow : kWide);
        return true;
    }

    void leave(const DemoScreen& screen) override { screen.out.sizeScreen(columnsFound_, rows_); }

  private:
    void change(TerminalWriter& out, int columns) {
        wide_ = columns == kWide;
        // Erased before as well: text of the other width in hidden columns would appear again.
        out.clearScreen().sizeScreen(columns, rows_).clearScreen();
        out.at(2, 1).style({}).text("Articles sold in a year");
        const std::string size = std::to_string(columns) + " columns";
        out.at(columns - 2 - static_cast<int>(size.size()), 1).style({Ink::Green}).text(size);
        out.style({Ink::Cyan, Ink::Black, Look::Dim}).horizontalRule(2, 2, columns - 4, FrameLines::Double);
        drawTable(out);
        drawFoot(out, columns);
    }

    std::size_t months() const { return wide_ ? kMonths.size() : 7; }

    void drawTable(TerminalWriter& out) const {
        out.at(2, kTableRow).style({Ink::White, Ink::Black, Look::Dim}).field("Article", kNameColumns);
        for (std::size_t month = 0; month < months(); ++month) {
            out.text(rightAligned(std::string(kMonths[month]), kMonthColumns));
        }
        if (wide_) out.text(rightAligned("Year", kTotalColumns));
        for (std::size_t article = 0; article < kArticles.size(); ++article) drawRow(out, article);
    }

    void drawRow(TerminalWriter& out, std::size_t article) const {
        int total = 0;
        out.at(2, kTableRow + 2 + static_cast<int>(article))
            .style({})
            .field(kArticles[article], kNameColumns);
        out.style({Ink::Cyan});
        for (std::size_t month = 0; month < months(); ++month) {
            const int value = sold(article, month);
            total += value;
            out.text(rightAligned(std::to_string(value), kMonthColumns));
        }
        if (wide_) out.style({Ink::Yellow}).text(rightAligned(std::to_string(total), kTotalColumns));
    }

    void drawFoot(TerminalWriter& out, int columns) const {
        out.at(2, kTableRow + 13).style({Ink::White, Ink::Black, Look::Dim});
        out.text(wide_ ? "The whole year fits."
                       : "Five months and the sums are missing: the screen is too narrow.");
        out.horizontalRule(2, kPageRows - 2, columns - 4, FrameLines::Single);
        out.at(2, kPageRows - 1).text("Space: change the width");
        out.at(columns - 2 - static_cast<int>(kPageKeys.size()), kPageRows - 1).text(kPageKeys);
    }

    int columnsFound_ = kNarrow;
    int rows_ = kPageRows;
    bool wide_ = false;
    bool changesItself_ = false;
    milliseconds shown_{0};
};

}  // namespace

std::unique_ptr<DemoPage> makeWidthPage() {
    return std::make_unique<WidthPage>();
}

}  // namespace kavrelon
