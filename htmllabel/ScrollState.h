#pragma once

#include <cstdint>

namespace kavrelon {

enum class ScrollBar : std::uint8_t { vscScroll, hscScroll };

/// The steps that keys and the parts of a scroll bar ask for.
enum class ScrollStep : std::uint8_t { LineUp, LineDown, PageUp, PageDown, Top, Bottom };

/// A scroll bar's state, in pixels of the document. `Min` is never above `Max`.
struct ScrollState {
    /// A bar for a page of `extent` pixels of which the view port shows `shown`, from `offset` on, in lines
    /// of `line` pixels. A bar that is not enabled stays hidden and at its start.
    static ScrollState forPage(bool enabled, int extent, int shown, int line, int offset);

    /// Where a step leads to, which may be outside the range.
    int after(ScrollStep step) const;
    /// The value of the range that is nearest to this one.
    int limited(int value) const;
    /// The value at which the view port shows this stretch of the page, or at least its start.
    int showing(int first, int last, int shown) const;

    bool visible = false;
    int Value = 0;
    int Min = 0;
    int Max = 0;
    int SmallChange = 1;
    int LargeChange = 1;
    bool operator==(const ScrollState&) const = default;
};

}  // namespace kavrelon
