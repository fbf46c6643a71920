#include "samplehost/PaintPacer.h"

#include <gtest/gtest.h>

namespace kavrelon {
namespace {

using std::chrono::milliseconds;
using Step = PaintPacer::Step;
constexpr std::size_t kMuch = PaintPacer::kBlock + 1;

TEST(PaintPacer, ShowsAFloodAtMostThirtyTimesASecondAndItsEnd) {
    PaintPacer pacer;
    PaintPacer::Clock::time_point now{};
    int shown = 0;
    const auto step = [&](std::size_t arrived, milliseconds cost) {
        pacer.arrived(arrived);
        const Step taken = pacer.next(now);
        if (taken == Step::Show || taken == Step::Release) {
            ++shown;
            pacer.shown(now, now + cost);
            now += cost;
        }
        return taken;
    };
    EXPECT_EQ(step(PaintPacer::kBlock, {}), Step::None) << "a block is no flood";
    EXPECT_FALSE(pacer.due());
    EXPECT_EQ(step(kMuch, {}), Step::Hold);
    for (const auto start = now; now < start + milliseconds(990); now += milliseconds(1)) step(kMuch, {});
    EXPECT_GE(shown, 25);
    EXPECT_LE(shown, 30);

    // It ends: what was not shown yet is shown in time, and not before.
    while (step(kMuch, {}) != Step::Show) now += milliseconds(1);
    EXPECT_EQ(step(0, {}), Step::None);
    EXPECT_TRUE(pacer.holds());
    now = pacer.due().value();
    EXPECT_EQ(step(0, {}), Step::Release);
    EXPECT_FALSE(pacer.holds() || pacer.due());
    // A flood that begins at once again has no pause of its own to show.
    EXPECT_EQ(step(kMuch, {}), Step::Hold);
    EXPECT_EQ(step(0, {}), Step::None);

    // A slow display does not keep the engine from its work.
    shown = 0;
    for (const auto start = now; now < start + milliseconds(4000); now += milliseconds(1))
        step(kMuch, milliseconds(100));
    EXPECT_LE(shown, 11);
    EXPECT_GE(shown, 8);
}

}  // namespace
}  // namespace kavrelon
