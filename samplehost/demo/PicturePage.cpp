#include <array>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kBetweenSteps{2000};
constexpr int kNoteRow = 3;
constexpr int kListRow = 5;
constexpr int kListColumn = 4;
constexpr int kSourceRow = 21;

/// Two pictures, of which the second lies on a corner of the first. Their shape is that of the file, at cells
/// which are about twice as high as wide.
constexpr std::array<CellBox, 2> kPictures{{{37, 5, 40, 13}, {24, 13, 19, 6}}};
constexpr std::string_view kPictureName = "harbour.png";

struct Departure {
    std::string_view time, ship, port, berth, remark;
};
constexpr std::array<Departure, 14> kDepartures{{
    {"05:40", "Amber Gull", "Northwick", "2", "mail and passengers"},
    {"06:15", "Brass Lantern", "Eastbridge", "4", "on time"},
    {"07:00", "Cormorant", "Saltmarsh", "1", "on time"},
    {"07:30", "Dora Kelling", "Eastbridge", "4", "loading"},
    {"08:10", "Evening Tide", "Greyport", "3", "on time"},
    {"09:00", "Fair Wind", "Northwick", "2", "on time"},
    {"09:45", "Grey Heron", "Low Haven", "6", "waits for the pilot"},
    {"10:20", "Hopeful", "Saltmarsh", "1", "on time"},
    {"11:05", "Iron Duchess", "Greyport", "3", "late by 20 minutes"},
    {"12:00", "Jenny Marr", "Eastbridge", "4", "on time"},
    {"13:30", "Kittiwake", "Northwick", "2", "on time"},
    {"14:15", "Lady Quill", "Low Haven", "6", "on time"},
    {"15:00", "Merry Bosun", "Saltmarsh", "1", "fog permitting"},
    {"16:40", "Night Watch", "Greyport", "3", "on time"},
}};

/// Shows pictures over text, and takes them away again.
class PicturePage final : public DemoPage {
  public:
    std::string_view title() const override { return "Pictures over the screen"; }
    std::string_view summary() const override { return "Pictures lie over the text and leave it as it was."; }
    std::string_view keys() const override { return "Enter: a picture    Del: clear one"; }
    milliseconds watchTime() const override { return kBetweenSteps * 6; }

    void start(const DemoScreen& screen, bool unattended) override {
        shown_ = 0;
        leftToDo_ = unattended ? 2 * kPictures.size() : 0;
        sinceStep_ = {};
        TerminalWriter& out = screen.out;
        out.at(kListColumn, kNoteRow)
            .style({Ink::White, Ink::Black, Look::Dim})
            .text("A text command shows a picture over these cells, another one clears it.");
        out.at(kListColumn, kSourceRow).text("From the folder Pictures next to your settings file.");
        drawList(out);
        park(out);
        if (!unattended) showNext(out);
    }

    void advance(const DemoScreen& screen, milliseconds elapsed) override {
        sinceStep_ += elapsed;
        if (leftToDo_ == 0 || sinceStep_ < kBetweenSteps) return;
        sinceStep_ = {};
        if (leftToDo_-- > kPictures.size()) {
            showNext(screen.out);
        } else {
            clearLast(screen.out);
        }
    }

    bool key(const DemoScreen& screen, char key) override {
        leftToDo_ = 0;
        if (key != demokey::kEnter && key != demokey::kDelete) return false;
        if (key == demokey::kDelete) {
            clearLast(screen.out);
        } else {
            showNext(screen.out);
        }
        return true;
    }

    void leave(const DemoScreen& screen) override {
        while (shown_ > 0) clearLast(screen.out);
    }

  private:
    void showNext(TerminalWriter& out) {
        if (shown_ == kPictures.size()) return;
        const CellBox& place = kPictures[shown_];
        out.showPicture(static_cast<int>(++shown_), place, kPictureName);
    }

    void clearLast(TerminalWriter& out) {
        if (shown_ > 0) out.clearPicture(static_cast<int>(shown_--));
    }

    static void drawList(TerminalWriter& out) {
        out.style({Ink::Cyan}).at(kListColumn, kListRow);
        drawLine(out, {"Time", "Ship", "Port", "Berth", "Remark"});
        for (std::size_t line = 0; line < kDepartures.size(); ++line) {
            out.style({line % 2 == 0 ? Ink::White : Ink::Green});
            out.at(kListColumn, kListRow + 1 + static_cast<int>(line));
            drawLine(out, kDepartures[line]);
        }
    }

    static void drawLine(TerminalWriter& out, const Departure& line) {
        out.field(line.time, 9).field(line.ship, 18).field(line.port, 16).field(line.berth, 9);
        out.field(line.remark, 20);
    }

    static void park(TerminalWriter& out) { out.style({}).at(kListColumn, kSourceRow - 1); }

    std::size_t shown_ = 0;
    std::size_t leftToDo_ = 0;
    milliseconds sinceStep_{0};
};

}  // namespace

std::unique_ptr<DemoPage> makePicturePage() {
    return std::make_unique<PicturePage>();
}

}  // namespace kavrelon
