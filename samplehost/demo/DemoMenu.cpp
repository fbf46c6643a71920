#include "samplehost/demo/DemoMenu.h"

#include <array>

namespace kavrelon {

namespace {

// The banner in pixels. Two of them, one above the other, make a cell.
constexpr int kBannerPixelRows = 8;
constexpr std::array<std::string_view, kBannerPixelRows> kBanner{
    "##   ##   ###   ##   ## ######  ####### ##       #####  ##   ##",
    "##  ##   ## ##  ##   ## ##   ## ##      ##      ##   ## ###  ##",
    "## ##   ##   ## ##   ## ##   ## ##      ##      ##   ## #### ##",
    "####    ##   ## ##   ## ######  #####   ##      ##   ## ## ####",
    "####    #######  ## ##  ## ##   ##      ##      ##   ## ##  ###",
    "## ##   ##   ##  ## ##  ##  ##  ##      ##      ##   ## ##   ##",
    "##  ##  ##   ##   ###   ##   ## ##      ##      ##   ## ##   ##",
    "##   ## ##   ##    #    ##   ## ####### #######  #####  ##   ##",
};
constexpr std::array<Style, kBannerPixelRows / 2> kBannerStyles{{
    {Ink::White, Ink::Black, Look::Bold},
    {Ink::Cyan, Ink::Black, Look::Bold},
    {Ink::Cyan, Ink::Black, Look::Bold},
    {Ink::Cyan, Ink::Black, Look::Dim},
}};
constexpr std::string_view kSubtitle = "a remote system to try the terminal with";

constexpr int kBannerRow = 1;
constexpr int kSubtitleRow = 6;
constexpr int kFrameColumn = 20;
constexpr int kFrameColumns = 40;
constexpr int kFrameRow = 8;
constexpr int kFirstEntryRow = kFrameRow + 1;
constexpr int kEntryColumn = kFrameColumn + 3;
constexpr int kEntryColumns = kFrameColumns - 6;
// Next to the highlight: inside it the block would look like a hole.
constexpr int kCursorColumn = kEntryColumn - 2;
constexpr int kSummaryRow = 21;
constexpr int kRuleRow = 22;
constexpr int kFootRow = 23;
constexpr int kMargin = 2;
constexpr int kClockColumns = 18;
constexpr int kNoteColumns = kPageColumns - 2 * kMargin - kClockColumns;

char halfBlock(bool upper, bool lower) {
    if (upper && lower) return '\xDB';
    if (upper) return '\xDF';
    return lower ? '\xDC' : ' ';
}

int centred(std::size_t length) {
    return (kPageColumns - static_cast<int>(length)) / 2;
}

std::string twoDigits(long long value) {
    const std::string digits = std::to_string(value);
    return digits.size() < 2 ? '0' + digits : digits;
}

}  // namespace

void DemoMenu::draw(const DemoScreen& screen, std::chrono::milliseconds connected) {
    drawBanner(screen);
    screen.out.style({Ink::Cyan, Ink::Black, Look::Dim});
    screen.out.frame({kFrameColumn, kFrameRow, kFrameColumns, size() + 2}, FrameLines::Double);
    for (int entry = 0; entry < size(); ++entry) drawEntry(screen, entry);
    screen.out.style({Ink::White, Ink::Black, Look::Dim});
    screen.out.horizontalRule(kMargin, kRuleRow, kPageColumns - 2 * kMargin, FrameLines::Single);
    drawSummary(screen);
    showClock(screen, connected);
}

void DemoMenu::highlight(const DemoScreen& screen, int entry) {
    const int previous = highlighted_;
    highlighted_ = (entry + size()) % size();
    if (highlighted_ == previous) return;
    drawEntry(screen, previous);
    drawEntry(screen, highlighted_);
    drawSummary(screen);
    parkCursor(screen);
}

void DemoMenu::showNote(const DemoScreen& screen, std::string_view note) {
    screen.out.at(kMargin, kFootRow).style({Ink::White, Ink::Black, Look::Dim}).field(note, kNoteColumns);
    parkCursor(screen);
}

void DemoMenu::showClock(const DemoScreen& screen, std::chrono::milliseconds connected) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(connected).count();
    const std::string clock =
        twoDigits(seconds / 3600) + ':' + twoDigits(seconds / 60 % 60) + ':' + twoDigits(seconds % 60);
    screen.out.at(kPageColumns - kMargin - kClockColumns, kFootRow);
    screen.out.style({Ink::White, Ink::Black, Look::Dim}).text("connected ");
    screen.out.style({Ink::Green}).text(clock);
    parkCursor(screen);
}

void DemoMenu::drawBanner(const DemoScreen& screen) const {
    for (std::size_t row = 0; row < kBannerStyles.size(); ++row) {
        const std::string_view upper = kBanner[2 * row];
        const std::string_view lower = kBanner[2 * row + 1];
        screen.out.at(centred(upper.size()), kBannerRow + static_cast<int>(row));
        screen.out.style(kBannerStyles[row]);
        for (std::size_t x = 0; x < upper.size(); ++x) {
            screen.out.repeat(halfBlock(upper[x] == '#', lower[x] == '#'), 1);
        }
    }
    screen.out.at(centred(kSubtitle.size()), kSubtitleRow)
        .style({Ink::White, Ink::Black, Look::Dim})
        .text(kSubtitle);
}

void DemoMenu::drawEntry(const DemoScreen& screen, int entry) const {
    const Look look = entry == highlighted_ ? Look::Reverse : Look::Bold;
    const auto& title = entries_[static_cast<std::size_t>(entry)].title;
    screen.out.at(kEntryColumn, kFirstEntryRow + entry);
    screen.out.style({Ink::Yellow, Ink::Black, look}).text("  " + std::to_string((entry + 1) % 10) + "  ");
    const Ink ink = entry == highlighted_ ? Ink::Yellow : Ink::White;
    screen.out.style({ink, Ink::Black, look}).field(title, kEntryColumns - 5);
}

void DemoMenu::drawSummary(const DemoScreen& screen) const {
    const std::string& summary = entries_[static_cast<std::size_t>(highlighted_)].summary;
    const int margin = centred(summary.size());
    screen.out.at(0, kSummaryRow).style({}).repeat(' ', margin);
    screen.out.field(summary, kPageColumns - margin);
}

void DemoMenu::parkCursor(const DemoScreen& screen) const {
    screen.out.at(kCursorColumn, kFirstEntryRow + highlighted_);
}

}  // namespace kavrelon
