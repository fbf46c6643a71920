#include <array>
#include <string>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kForbidsAfter{3000};
constexpr milliseconds kAllowsAfter{7000};

constexpr int kColumn = 6;
constexpr CellBox kFrame{6, 4, 68, 7};
constexpr std::array<std::string_view, 3> kLines{
    "Mark a part of these lines with the left mouse button, and copy",
    "it with Ctrl+C or from the menu of the right one. Paste it, and",
    "it arrives below. What is forbidden is grey in that menu.",
};
constexpr int kCopyingRow = 13;
constexpr int kPastingRow = 15;
constexpr int kReceivedRow = 18;
constexpr int kLabelColumns = 12;
constexpr std::size_t kReceivedColumns = 54;

/// Forbids and allows copying and pasting, and shows what arrives.
class ClipboardPage final : public DemoPage {
  public:
    std::string_view title() const override { return "Copying and pasting"; }
    std::string_view summary() const override { return "The remote system may forbid either."; }
    std::string_view keys() const override { return "Home: copying    End: pasting"; }
    milliseconds watchTime() const override { return std::chrono::seconds(10); }

    void start(const DemoScreen& screen, bool unattended) override {
        actsItself_ = unattended;
        shown_ = {};
        received_.clear();
        TerminalWriter& out = screen.out;
        out.style({Ink::Cyan, Ink::Black, Look::Dim}).frame(kFrame, FrameLines::Single);
        for (std::size_t line = 0; line < kLines.size(); ++line) {
            out.at(kFrame.column + 2, kFrame.row + 2 + static_cast<int>(line)).style({}).text(kLines[line]);
        }
        out.style({Ink::White, Ink::Black, Look::Dim});
        out.at(kColumn, kCopyingRow).text("Copying");
        out.at(kColumn, kPastingRow).text("Pasting");
        out.at(kColumn, kReceivedRow).text("Received");
        allow(out, true, true);
    }

    void advance(const DemoScreen& screen, milliseconds elapsed) override {
        shown_ += elapsed;
        if (!actsItself_) return;
        const bool allowed = shown_ < kForbidsAfter || shown_ >= kAllowsAfter;
        if (allowed != copying_) allow(screen.out, allowed, allowed);
    }

    bool key(const DemoScreen& screen, char key) override {
        actsItself_ = false;
        if (key == demokey::kEscape || key == demokey::kLeft || key == demokey::kRight) return false;
        // Keys that no pasted text has.
        if (key == demokey::kHome) {
            allow(screen.out, !copying_, pasting_);
        } else if (key == demokey::kEnd) {
            allow(screen.out, copying_, !pasting_);
        } else {
            received_ += spelledOut({&key, 1});
            if (received_.size() > kReceivedColumns) received_.erase(0, received_.size() - kReceivedColumns);
            drawReceived(screen.out);
        }
        return true;
    }

    void leave(const DemoScreen& screen) override { screen.out.allowCopying(true).allowPasting(true); }

  private:
    void allow(TerminalWriter& out, bool copying, bool pasting) {
        copying_ = copying;
        pasting_ = pasting;
        out.allowCopying(copying).allowPasting(pasting);
        drawState(out, kCopyingRow, copying);
        drawState(out, kPastingRow, pasting);
        drawReceived(out);
    }

    static void drawState(TerminalWriter& out, int row, bool allowed) {
        out.at(kColumn + kLabelColumns, row);
        out.style({allowed ? Ink::Green : Ink::Red}).field(allowed ? "allowed" : "forbidden", 9);
    }

    /// Leaves the cursor behind the text.
    void drawReceived(TerminalWriter& out) const {
        const int column = kColumn + kLabelColumns;
        out.at(column, kReceivedRow).style({Ink::Yellow, Ink::Black, Look::Underline});
        out.field(received_, static_cast<int>(kReceivedColumns) + 1);
        out.at(column + static_cast<int>(received_.size()), kReceivedRow);
    }

    bool copying_ = true;
    bool pasting_ = true;
    bool actsItself_ = false;
    milliseconds shown_{0};
    std::string received_;
};

}  // namespace

std::unique_ptr<DemoPage> makeClipboardPage() {
    return std::make_unique<ClipboardPage>();
}

}  // namespace kavrelon
