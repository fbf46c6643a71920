#include "samplehost/PaintPacer.h"

#include <algorithm>

namespace kavrelon {

PaintPacer::Step PaintPacer::next(Clock::time_point now) {
    if (!holds_) {
        if (!flood_) return Step::None;
        holds_ = true;
        due_ = std::max(due_, now + kInterval);
        return Step::Hold;
    }
    if (now < due_) return Step::None;
    holds_ = flood_;
    return flood_ ? Step::Show : Step::Release;
}

void PaintPacer::shown(Clock::time_point from, Clock::time_point to) {
    // Three quarters of the time are the engine's, however slowly the screen is shown.
    due_ = std::max(from + kInterval, to + 3 * (to - from));
}

std::optional<PaintPacer::Clock::time_point> PaintPacer::due() const {
    return holds_ ? std::optional(due_) : std::nullopt;
}

}  // namespace kavrelon
