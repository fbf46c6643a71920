// start_bench FOLDER: the sample host, which is in that folder, beside an empty program that paints the same
// stream with a bare terminal: the time from the start of the process until a screen is painted, and the
// processor's time of both for a whole session. The two take turns; the median of the pairs counts.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Streams.h"
#include "bench/win32/Goals.h"

namespace {

using namespace kavrelon;
using namespace kavrelon::bench;
using Clock = std::chrono::steady_clock;

constexpr ScreenExtent kExtent = kExtents[0];
constexpr std::size_t kLength = 500'000;
// The time of a start is noisier than the processor's time of a session, and short.
constexpr int kStartPairs = 21;
constexpr int kSessionPairs = 7;
constexpr double kMostStart = 1.5;
constexpr double kMostSession = 1.0;
constexpr std::chrono::seconds kLongest{60};

/// All rows, or only the one in the middle of the screen, blank on a green background. The middle one is the
/// last, and says that everything is painted.
std::string greenRows(bool all) {
    constexpr int kMiddle = (kExtent.lines + 1) / 2;
    std::string rows = "\033[0;30;42m";
    const auto add = [&rows](int row) {
        rows += "\033[" + std::to_string(row) + ";1H" + std::string(kExtent.columns, ' ');
    };
    for (int row = 1; all && row <= kExtent.lines; ++row) {
        if (row != kMiddle) add(row);
    }
    add(kMiddle);
    return rows;
}

double seconds(const FILETIME& time) {
    return (static_cast<double>(time.dwHighDateTime) * 0x1p32 + time.dwLowDateTime) * 1e-7;
}

/// A program that plays a stream, from its start to the end of the object's life.
class Player {
  public:
    explicit Player(std::string command) : started_(Clock::now()) {
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                            &process_)) {
            throw std::runtime_error("could not be started: " + command);
        }
    }
    ~Player() {
        TerminateProcess(process_.hProcess, 0);
        WaitForSingleObject(process_.hProcess, INFINITE);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    /// Seconds from its start until its middle is green.
    double untilPainted() {
        while (!isPainted()) {
            if (Clock::now() - started_ > kLongest) throw std::runtime_error("nothing was painted");
            Sleep(2);
        }
        return std::chrono::duration<double>(Clock::now() - started_).count();
    }
    double processorSeconds() const {
        FILETIME ignored{};
        FILETIME kernel{};
        FILETIME user{};
        GetProcessTimes(process_.hProcess, &ignored, &ignored, &kernel, &user);
        return seconds(kernel) + seconds(user);
    }

  private:
    bool isPainted() {
        if (window_ == nullptr) EnumWindows(find, reinterpret_cast<LPARAM>(this));
        RECT inner{};
        if (window_ == nullptr || !GetClientRect(window_, &inner)) return false;
        const HDC context = GetDC(window_);
        const COLORREF pixel =
            GetPixel(context, static_cast<int>(inner.right) / 2, static_cast<int>(inner.bottom) / 2);
        ReleaseDC(window_, context);
        return GetGValue(pixel) > 100 && GetRValue(pixel) == 0 && GetBValue(pixel) == 0;
    }
    static BOOL CALLBACK find(HWND window, LPARAM self) {
        Player& player = *reinterpret_cast<Player*>(self);
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == player.process_.dwProcessId && IsWindowVisible(window)) player.window_ = window;
        return player.window_ == nullptr;
    }

    Clock::time_point started_;
    PROCESS_INFORMATION process_{};
    HWND window_ = nullptr;
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The median of what `measure` gives for the sample host divided by what it gives for the bare window.
double ratio(const std::filesystem::path& folder, const std::string& stream, int pairs,
             const std::function<double(Player&)>& measure) {
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "kavrelon bench.bin";
    std::ofstream(file, std::ios::binary) << stream;
    const auto quoted = [](const std::filesystem::path& path) { return '"' + path.string() + '"'; };
    const auto figure = [&](const std::string& command) {
        Player player(command + quoted(file));
        return measure(player);
    };
    std::vector<double> hosts;
    std::vector<double> ratios;
    for (int pair = 0; pair < pairs; ++pair) {
        hosts.push_back(figure(quoted(folder / "samplehost.exe") + " --play "));
        ratios.push_back(hosts.back() / figure(quoted(folder / "bare_window.exe") + " "));
    }
    std::filesystem::remove(file);
    Goals::tell("seconds of the sample host", median(hosts));
    return median(ratios);
}

}  // namespace

int main(int count, char** arguments) try {
    if (count != 2) throw std::runtime_error("the folder of the sample host is missing");
    const std::filesystem::path folder = std::filesystem::absolute(arguments[1]);
    Goals goals;
    goals.hold(
        "start of the sample host to a painted screen, empty = 1",
        ratio(folder, greenRows(true), kStartPairs, [](Player& player) { return player.untilPainted(); }),
        kMostStart);
    const std::string session = findStreamKind("scroll")->make(kExtent, kLength) + greenRows(false);
    goals.hold("processor time of a session in the sample host, bare = 1",
               ratio(folder, session, kSessionPairs,
                     [](Player& player) {
                         player.untilPainted();
                         return player.processorSeconds();
                     }),
               kMostSession);
    return goals.status();
} catch (const std::exception& error) {
    std::fprintf(stderr, "start_bench: %s\n", error.what());
    return 2;
}
