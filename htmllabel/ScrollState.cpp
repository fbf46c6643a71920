#include "htmllabel/ScrollState.h"

#include <algorithm>

namespace kavrelon {

ScrollState ScrollState::forPage(bool enabled, int extent, int shown, int line, int offset) {
    ScrollState bar;
    bar.Max = std::max(extent - shown, 0);
    bar.visible = enabled && bar.Max > 0;
    bar.Value = enabled ? bar.limited(offset) : 0;
    bar.SmallChange = std::max(line, 1);
    bar.LargeChange = std::max(shown, 1);
    return bar;
}

int ScrollState::after(ScrollStep step) const {
    switch (step) {
        case ScrollStep::LineUp:
            return Value - SmallChange;
        case ScrollStep::LineDown:
            return Value + SmallChange;
        case ScrollStep::PageUp:
            return Value - LargeChange;
        case ScrollStep::PageDown:
            return Value + LargeChange;
        case ScrollStep::Top:
            return Min;
        case ScrollStep::Bottom:
            return Max;
    }
    return Value;
}

int ScrollState::limited(int value) const {
    return std::clamp(value, Min, Max);
}

int ScrollState::showing(int first, int last, int shown) const {
    return limited(std::min(std::max(Value, last - shown), first));
}

}  // namespace kavrelon
