#include <array>
#include <string>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kBetweenBoxes{1500};
constexpr int kNoteRow = 3;
constexpr int kTypedRow = 22;
constexpr int kTypedColumn = 4;
constexpr std::string_view kTyped = "You typed: ";
constexpr std::size_t kTypedLength = 50;

struct Box {
    CellBox place;
    std::string_view text;
};

constexpr std::array<Box, 4> kBoxes{{
    {{3, 5, 35, 5},
     "Plain text keeps its lines^and its    spaces.^^"
     "Signs such as < and > show as they^are, and &deg; and &copy; as their signs."},
    {{41, 5, 36, 8},
     "<html><body bgcolor=\"#FFFFE1\">"
     "<h4>Text in HTML</h4>"
     "<b>Bold</b>, <i>italic</i> and <u>underlined</u>, <big>big</big> and <small>small</small>, "
     "H<sub>2</sub>O and 10<sup>6</sup>, <font color=\"red\">red</font> and "
     "<font face=\"Times New Roman\" size=\"+2\" color=\"navy\">another face</font>."
     "<p align=\"center\">A <a href=\"http://localhost/\" title=\"Opens in the browser\">link</a> "
     "opens in the browser.</p>"
     "</body></html>"},
    {{3, 12, 35, 8},
     "<html><body bgcolor=\"#E8F0E8\">"
     "<img src=\"harbour.png\" width=\"144\" height=\"88\" align=\"right\" alt=\"Harbour\">"
     "<b>Lists and pictures</b>"
     "<ul><li>points<li>with points<ul><li>of their own</ul></ul>"
     "<ol><li>numbers<li>and more of them</ol>"
     "</body></html>"},
    {{41, 15, 36, 6},
     "<html><body>"
     "<center><b>Tables, and more than fits</b></center>"
     "<table border=\"1\" width=\"100%\" cellpadding=\"3\" cellspacing=\"0\">"
     "<tr><th bgcolor=\"#C0D0E8\">Port</th><th bgcolor=\"#C0D0E8\" align=\"right\">Ships</th></tr>"
     "<tr><td>Eastbridge</td><td align=\"right\">41</td></tr>"
     "<tr><td>Harbour Lane</td><td align=\"right\">7</td></tr>"
     "<tr><td colspan=\"2\" align=\"center\">and two more</td></tr></table>"
     "<hr>"
     "<blockquote>What is longer than its box is scrolled with the mouse.</blockquote>"
     "</body></html>"},
}};

/// Shows help boxes over the screen, one after the other.
class HelpBoxPage final : public DemoPage {
  public:
    std::string_view title() const override { return "Help boxes"; }
    std::string_view summary() const override { return "Texts in little windows over the screen."; }
    std::string_view keys() const override { return "Enter: next box    Del: close all"; }
    milliseconds watchTime() const override { return std::chrono::seconds(14); }

    void start(const DemoScreen& screen, bool unattended) override {
        shown_ = 0;
        typed_.clear();
        actsItself_ = unattended;
        sinceBox_ = {};
        TerminalWriter& out = screen.out;
        out.at(kTypedColumn, kNoteRow)
            .style({Ink::White, Ink::Black, Look::Dim})
            .text("Drag a box with the left mouse button, close it with the right one.");
        out.style({Ink::Cyan, Ink::Black, Look::Dim});
        for (int row = kNoteRow + 1; row < kTypedRow; ++row) out.at(1, row).repeat('\xB0', kPageColumns - 2);
        drawTyped(out);
        if (!actsItself_) showNext(out);
    }

    void advance(const DemoScreen& screen, milliseconds elapsed) override {
        sinceBox_ += elapsed;
        if (!actsItself_ || sinceBox_ < kBetweenBoxes || shown_ == kBoxes.size()) return;
        sinceBox_ = {};
        showNext(screen.out);
    }

    bool key(const DemoScreen& screen, char key) override {
        actsItself_ = false;
        if (key == demokey::kEnter) {
            showNext(screen.out);
        } else if (key == demokey::kDelete) {
            closeAll(screen.out);
        } else if (key >= ' ' && key <= '~' && typed_.size() < kTypedLength) {
            // The boxes leave the keyboard to the terminal.
            typed_ += key;
            drawTyped(screen.out);
        } else {
            return false;
        }
        return true;
    }

  private:
    void showNext(TerminalWriter& out) {
        if (shown_ == kBoxes.size()) closeAll(out);
        const Box& box = kBoxes[shown_];
        out.helpBox(static_cast<int>(++shown_), box.place, box.text);
    }

    void closeAll(TerminalWriter& out) {
        while (shown_ > 0) out.hideHelpBox(static_cast<int>(shown_--));
    }

    void drawTyped(TerminalWriter& out) const {
        out.at(kTypedColumn, kTypedRow).style({Ink::White, Ink::Black, Look::Dim}).text(kTyped);
        out.style({Ink::Green}).text(typed_);
    }

    std::size_t shown_ = 0;
    bool actsItself_ = false;
    std::string typed_;
    milliseconds sinceBox_{0};
};

}  // namespace

std::unique_ptr<DemoPage> makeHelpBoxPage() {
    return std::make_unique<HelpBoxPage>();
}

}  // namespace kavrelon
