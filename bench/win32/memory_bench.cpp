// What the memory bitmap costs and saves on a real window: processor time with it, and without it as 1. The
// two windows take turns; the medians of the rounds' ratios count. Fails where a paint does not gain by it.

#include <windows.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

#include "terminal/frmTerm.h"
#include "terminal/win32/Win32Platform.h"

namespace {

using namespace kavrelon;

constexpr int kRounds = 25;

class Window {
  public:
    Window(Win32Platform& platform, bool memory) : form_(frmTerm::load(platform)) {
        form_->DisplayTerminalWindows();
        window_ = FindWindowA(WindowClass::kName, nullptr);
        if (window_ == nullptr) throw std::runtime_error("there is no terminal window");
        SetWindowPos(window_, nullptr, 0, 0, 1000, 600, SWP_NOZORDER);
        form_->TurnOnOffCursor(false);
        form_->screen().UseMemoryDC(memory);
        platform.processMessages();
        printPage();
    }

    void printPage() {
        form_->screen().SetCursor(0, 0);
        for (int i = 0; i < 80 * 25; ++i) form_->WriteTerm(static_cast<std::uint8_t>('!' + (i + page_) % 90));
        ++page_;
    }
    void printLines() {
        form_->screen().SetCursor(0, 24);
        for (int line = 0; line < 25; ++line) {
            for (const char ch : std::string("a line of text\r\n"))
                form_->WriteTerm(static_cast<std::uint8_t>(ch));
        }
    }
    void scroll() {
        form_->screen().SetCursor(0, 24);
        for (int line = 0; line < 25; ++line) form_->WriteTerm('\n');
    }
    void paint() {
        InvalidateRect(window_, nullptr, FALSE);
        UpdateWindow(window_);
    }
    void paintStrip() {
        const RECT strip{300, 0, 340, 560};
        InvalidateRect(window_, &strip, FALSE);
        UpdateWindow(window_);
    }

  private:
    std::shared_ptr<frmTerm> form_;
    HWND window_ = nullptr;
    int page_ = 0;
};

struct Task {
    const char* name;
    void (Window::*work)();
    int times;
    /// Whether it is what the bitmap is kept for.
    bool gains;
};
constexpr Task kTasks[] = {{"pages printed", &Window::printPage, 8, false},
                           {"lines printed at the last row", &Window::printLines, 8, false},
                           {"scrolls", &Window::scroll, 8, false},
                           {"paints of the window", &Window::paint, 8, true},
                           {"paints of a strip", &Window::paintStrip, 40, false}};

/// Processor time of this process, in units of 100 nanoseconds.
double processorTime() {
    FILETIME created{}, ended{}, kernel{}, user{};
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    const auto units = [](const FILETIME& time) {
        return static_cast<double>(ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart);
    };
    return units(kernel) + units(user);
}

double timeOf(Window& window, const Task& task) {
    const double start = processorTime();
    for (int i = 0; i < task.times; ++i) (window.*task.work)();
    GdiFlush();
    return processorTime() - start;
}

}  // namespace

int main() try {
    Win32Platform platform(GetModuleHandleA(nullptr));
    Window plain(platform, false);
    Window kept(platform, true);
    bool missed = false;
    std::printf("processor time                   without   with  ratio\n");
    for (const Task& task : kTasks) {
        double without = 0;
        double with = 0;
        for (int round = 0; round < kRounds; ++round) {
            without += timeOf(plain, task);
            with += timeOf(kept, task);
            platform.processMessages();
        }
        missed = missed || (task.gains && with >= without);
        const double each = 1e4 * kRounds * task.times;
        std::printf("%-30s %7.2f ms %5.2f ms  %5.2f\n", task.name, without / each, with / each,
                    with / without);
    }
    return missed ? 1 : 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "memory_bench: %s\n", error.what());
    return 2;
}
