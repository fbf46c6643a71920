#pragma once

#include <algorithm>

namespace kavrelon {

/// How narrow and how wide the content of a page or a cell can be, found while it is walked over.
class ContentWidths {
  public:
    /// A word or picture; `gap` is the space before it, -1 when no line may end there.
    void word(int gap, int width) {
        isEmpty_ = false;
        if (gap >= 0) endUnit();
        if (gap > 0 && line_ > 0) line_ += gap;
        unit_ += width;
        line_ += width;
    }
    /// An empty line, which is content as well.
    void emptyLine() {
        isEmpty_ = false;
        marker_ = 0;
    }
    /// What stands before the next line that is not empty: in its indent, or instead of it.
    void marker(int width) {
        isEmpty_ = false;
        marker_ = width;
    }
    void endLine() {
        endUnit();
        max_ = std::max(max_, line_ + std::max(indent_, marker_));
        if (line_ > 0) marker_ = 0;
        line_ = 0;
    }
    /// A table, between lines.
    void block(int min, int max) {
        word(0, min);
        endLine();
        max_ = std::max(max_, max + indent_);
    }
    /// The indents of both sides together, between lines.
    void indent(int both) { indent_ = both; }

    int min() const { return min_; }
    int max() const { return std::max(min_, max_); }
    bool isEmpty() const { return isEmpty_; }

  private:
    // Indents give way to what cannot be broken, up to half of the width; markers do not.
    void endUnit() {
        min_ = std::max({min_, std::min(2 * unit_, unit_ + indent_), unit_ + marker_});
        unit_ = 0;
    }

    int min_ = 0;
    int max_ = 0;
    int unit_ = 0;  // between two places where a line may end
    int line_ = 0;
    int indent_ = 0;
    int marker_ = 0;
    bool isEmpty_ = true;
};

}  // namespace kavrelon
