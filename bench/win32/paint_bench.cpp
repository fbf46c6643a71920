// Painted cells a second: bytes through the terminal on its real window, and a bare loop of one text call a
// cell on the same window, in the same font and colours. The two take turns; the medians count.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <vector>

#include "terminal/frmTerm.h"
#include "terminal/win32/Win32Platform.h"

namespace {

using namespace kavrelon;

constexpr int kColumns = 80;
constexpr int kLines = 25;
constexpr int kCells = kColumns * kLines;
constexpr int kScreensPerRound = 10;
constexpr int kRounds = 31;

/// The character of a cell in a round: no cell keeps its character from one screen to the next.
std::uint8_t character(int cell, int screen) {
    return static_cast<std::uint8_t>('!' + (cell + screen) % ('~' - '!'));
}

class Contest {
  public:
    Contest() : form_(frmTerm::load(platform_)) {
        form_->DisplayTerminalWindows();
        window_ = FindWindowA(WindowClass::kName, nullptr);
        if (window_ == nullptr) throw std::runtime_error("there is no terminal window");
        std::int16_t lines = kLines;
        form_->screen().ScreenSize(kColumns, lines);
        SetWindowPos(window_, nullptr, 0, 0, 1000, 600, SWP_NOZORDER);
        platform_.processMessages();
    }

    void throughTheTerminal(int screen) {
        form_->screen().SetCursor(0, 0);
        for (int cell = 0; cell < kCells; ++cell) form_->WriteTerm(character(cell, screen));
    }

    /// As a program would write it that knows its cells: the context is the window's own, and the font and
    /// colours that the terminal left selected there are the same for all cells.
    void bareLoop(int screen) {
        const HDC context = GetDC(window_);
        const Rect first = form_->screen().grid().cellBlock(0, 0);
        for (int cell = 0; cell < kCells; ++cell) {
            const char ch = static_cast<char>(character(cell, screen));
            ExtTextOutA(context, first.left + cell % kColumns * first.width(),
                        first.top + cell / kColumns * first.height(), ETO_OPAQUE, nullptr, &ch, 1, nullptr);
        }
        ReleaseDC(window_, context);
    }

    /// Cells a second in one round of screens, up to their being on the display.
    template <class PaintScreen>
    double round(PaintScreen paintScreen) {
        using Clock = std::chrono::steady_clock;
        const auto start = Clock::now();
        for (int screen = 0; screen < kScreensPerRound; ++screen) {
            paintScreen(screen);
            GdiFlush();
        }
        const std::chrono::duration<double> took = Clock::now() - start;
        platform_.processMessages();
        return kCells * kScreensPerRound / took.count();
    }

  private:
    Win32Platform platform_{GetModuleHandleA(nullptr)};
    std::shared_ptr<frmTerm> form_;
    HWND window_ = nullptr;
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

int main() try {
    Contest contest;
    std::vector<double> ours;
    std::vector<double> bare;
    for (int i = 0; i < kRounds; ++i) {
        ours.push_back(contest.round([&](int screen) { contest.throughTheTerminal(screen); }));
        bare.push_back(contest.round([&](int screen) { contest.bareLoop(screen); }));
    }
    const double ratio = median(ours) / median(bare);
    std::printf("cells a second: terminal %.0f, bare loop %.0f, ratio %.2f\n", median(ours), median(bare),
                ratio);
    return ratio >= 1 ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "paint_bench: %s\n", error.what());
    return 2;
}
