#include <array>
#include <string>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLineTime{90};
constexpr int kLines = 140;
constexpr int kBarColumns = 40;

constexpr std::array<std::string_view, 7> kSteps{"Closing the day's ledger", "Copying orders to the archive",
                                                 "Sorting the stock list",   "Counting open deliveries",
                                                 "Printing price labels",    "Checking customer records",
                                                 "Rebuilding the index"};
constexpr std::array<std::string_view, 5> kBranches{"Eastbridge", "Kingsport", "Northmoor", "Seaview",
                                                    "Westhill"};

/// Output that scrolls above a progress bar, as a long run on a remote system prints it.
class ScrollPage final : public DemoPage {
  public:
    std::string_view title() const override { return "Scrolling output"; }
    std::string_view summary() const override {
        return "A long run that prints its steps above a progress bar.";
    }
    bool wantsWholeScreen() const override { return true; }
    milliseconds watchTime() const override { return std::chrono::seconds(15); }

    void start(const DemoScreen& screen, bool) override {
        line_ = 0;
        sinceLine_ = {};
        paused_ = false;
        screen.out.at(0, 0).style({}).text("  Night run of the warehouse system").newLine().newLine();
        drawBar(screen.out);
    }

    void advance(const DemoScreen& screen, milliseconds elapsed) override {
        if (paused_) return;
        sinceLine_ += elapsed;
        while (sinceLine_ >= kLineTime && line_ < kLines) {
            sinceLine_ -= kLineTime;
            ++line_;
            printLine(screen.out);
            drawBar(screen.out);
        }
    }

    bool key(const DemoScreen& screen, char key) override {
        if (key != ' ') return false;
        paused_ = !paused_;
        drawBar(screen.out);
        return true;
    }

  private:
    void printLine(TerminalWriter& out) const {
        const auto line = static_cast<std::size_t>(line_);
        const int records = (line_ * 7919 + 331) % 4000 + 12;
        out.text("\r").clearToEndOfLine();
        printStatus(out);
        out.style({}).field(kSteps[line / 5 % kSteps.size()], 32);
        out.style({Ink::Cyan}).field(kBranches[line % kBranches.size()], 14);
        out.style({Ink::White, Ink::Black, Look::Dim}).text(std::to_string(records) + " records").newLine();
    }

    void printStatus(TerminalWriter& out) const {
        const bool warns = line_ % 23 == 0;
        out.style({Ink::White, Ink::Black, Look::Dim}).text("  [");
        if (warns) {
            out.style({Ink::Yellow}).text(" late ");
        } else {
            out.style({Ink::Green}).text(" done ");
        }
        out.style({Ink::White, Ink::Black, Look::Dim}).text("]  ");
    }

    void drawBar(TerminalWriter& out) const {
        const int percent = line_ * 100 / kLines;
        const int filled = line_ * kBarColumns / kLines;
        out.text("\r").clearToEndOfLine();
        out.style({Ink::White}).text(percent < 10 ? "    " : percent < 100 ? "   " : "  ");
        out.text(std::to_string(percent) + "% ");
        out.style({Ink::Green}).repeat('\xDB', filled);
        out.style({Ink::Green, Ink::Black, Look::Dim}).repeat('\xB0', kBarColumns - filled);
        out.style({Ink::White, Ink::Black, Look::Dim}).text("  ").text(note());
    }

    std::string_view note() const {
        if (line_ == kLines) return "complete     Esc: menu";
        return paused_ ? "paused       Esc: menu" : "Space: pause Esc: menu";
    }

    int line_ = 0;
    bool paused_ = false;
    milliseconds sinceLine_{0};
};

}  // namespace

std::unique_ptr<DemoPage> makeScrollPage() {
    return std::make_unique<ScrollPage>();
}

}  // namespace kavrelon
