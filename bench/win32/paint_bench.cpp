// What the processor does for streams that are painted on a real window: those of the engine's benchmark
// through the whole terminal, and through the least that a terminal can be, on the same window in the same
// font. The two take turns; the median of the pairs counts.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <vector>

#include "bench/Streams.h"
#include "bench/win32/BareTerminal.h"
#include "bench/win32/Goals.h"
#include "bench/win32/RealSession.h"

namespace {

using namespace kavrelon;
using namespace kavrelon::bench;

constexpr ScreenExtent kExtent = kExtents[0];
constexpr std::size_t kLength = 500'000;
constexpr int kPairs = 5;
constexpr double kMost = 0.9;

double processorSeconds() {
    FILETIME ignored{};
    FILETIME kernel{};
    FILETIME user{};
    GetThreadTimes(GetCurrentThread(), &ignored, &ignored, &kernel, &user);
    const auto seconds = [](const FILETIME& time) {
        return (static_cast<double>(time.dwHighDateTime) * 0x1p32 + time.dwLowDateTime) * 1e-7;
    };
    return seconds(kernel) + seconds(user);
}

template <class Work>
double secondsOf(Work work) {
    const double before = processorSeconds();
    work();
    GdiFlush();
    return processorSeconds() - before;
}

class Contest {
  public:
    Contest() {
        session_.connect();
        session_.size(kExtent, {1000, 600});
    }

    double ratio(const std::string& stream) {
        std::vector<double> ratios;
        for (int pair = 0; pair < kPairs; ++pair) {
            const double ours = secondsOf([&] { session_.play(stream); });
            ratios.push_back(ours / secondsOf([&] { playBare(stream); }));
        }
        const auto middle = ratios.begin() + kPairs / 2;
        std::nth_element(ratios.begin(), middle, ratios.end());
        return *middle;
    }

  private:
    void playBare(std::string_view stream) {
        const HDC context = GetDC(RealSession::window());
        const Rect first = session_.screen().grid().cellBlock(0, 0);
        BareTerminal bare(context, {first.left, first.top}, {first.width(), first.height()},
                          {kExtent.columns, kExtent.lines});
        for (std::string_view block; !stream.empty(); stream.remove_prefix(block.size())) {
            block = BareTerminal::wholeBlock(stream);
            bare.play(block);
            session_.processMessages();
        }
        ReleaseDC(RealSession::window(), context);
    }

    RealSession session_;
};

}  // namespace

int main() try {
    Contest contest;
    Goals goals;
    for (const char* name : {"plain", "colours", "pages"}) {
        goals.hold(std::string("processor time of ") + name + ", bare loop = 1",
                   contest.ratio(findStreamKind(name)->make(kExtent, kLength)), kMost);
    }
    return goals.status();
} catch (const std::exception& error) {
    std::fprintf(stderr, "paint_bench: %s\n", error.what());
    return 2;
}
