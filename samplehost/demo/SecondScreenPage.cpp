#include <array>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kOpensAfter{3000};
constexpr milliseconds kClosesAfter{8000};

constexpr std::array<std::string_view, 7> kLetter{
    "This is a screen of its own. The one below keeps",
    "all that it shows, and is back as it was when",
    "this one is closed.",
    "",
    "A remote system uses it for what may come up at",
    "any moment: a message, a question, a list.",
    "Up to a hundred screens can lie on the first.",
};

/// Shows a second screen over the first and removes it again.
class SecondScreenPage final : public DemoPage {
  public:
    std::string_view title() const override { return "A second screen"; }
    std::string_view summary() const override {
        return "A screen is laid over this one, and taken away again.";
    }
    std::string_view keys() const override { return "Enter: the second screen"; }
    milliseconds watchTime() const override { return std::chrono::seconds(11); }

    void start(const DemoScreen& screen, bool unattended) override {
        open_ = false;
        actsItself_ = unattended;
        shown_ = {};
        screen.out.style({Ink::Cyan, Ink::Black, Look::Dim}).frame({12, 5, 56, 9}, FrameLines::Double);
        screen.out.at(16, 8).style({}).text("This is the first screen.");
        screen.out.at(16, 10).text("Mind what it shows: nothing here is drawn again.");
        park(screen.out);
    }

    void advance(const DemoScreen& screen, milliseconds elapsed) override {
        shown_ += elapsed;
        if (!actsItself_) return;
        if (!open_ && shown_ >= kOpensAfter && shown_ < kClosesAfter) open(screen.out);
        if (open_ && shown_ >= kClosesAfter) close(screen.out);
    }

    bool key(const DemoScreen& screen, char key) override {
        actsItself_ = false;
        if (open_) {
            // Any key closes the second screen and does nothing else.
            close(screen.out);
            return true;
        }
        if (key != demokey::kEnter) return false;
        open(screen.out);
        return true;
    }

    void leave(const DemoScreen& screen) override {
        if (open_) close(screen.out);
    }

  private:
    void open(TerminalWriter& out) {
        open_ = true;
        out.newScreen();
        out.style({Ink::Yellow}).frame({12, 4, 56, 15}, FrameLines::Double);
        out.at(32, 4).text(" Second screen ");
        for (std::size_t line = 0; line < kLetter.size(); ++line) {
            out.at(16, 7 + static_cast<int>(line)).style({}).text(kLetter[line]);
        }
        out.at(16, 16).style({Ink::White, Ink::Black, Look::Dim}).text("Any key closes it.");
    }

    void close(TerminalWriter& out) {
        open_ = false;
        out.closeScreen();
        out.at(16, 16).style({Ink::Green}).text("The second screen is closed.");
        park(out);
    }

    static void park(TerminalWriter& out) { out.at(16, 18).style({}); }

    bool open_ = false;
    bool actsItself_ = false;
    milliseconds shown_{0};
};

}  // namespace

std::unique_ptr<DemoPage> makeSecondScreenPage() {
    return std::make_unique<SecondScreenPage>();
}

}  // namespace kavrelon
