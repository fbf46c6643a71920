#pragma once

#include <algorithm>

namespace kavrelon {

/// How narrow and how wide the content of a page or a cell can be, in pixels, found while it is written.
class ContentWidths {
  public:
    /// With `keepsLines` no line ends between words.
    explicit ContentWidths(bool keepsLines = false) : keepsLines_(keepsLines) {}

    /// A word or picture; `gap` is the space before it, -1 where no line may end. With `lastResort` a line
    /// ends there only where it has no other place to end.
    void word(int gap, int width, bool lastResort = false) {
        isEmpty_ = false;
        if (gap > 0 && line_ > 0) line_ += gap;
        line_ += width;
        if (gap >= 0 && !lastResort && !keepsLines_) {
            endPiece();
            endUnit();
        } else if (gap >= 0 || lastResort) {
            if (!keepsLines_) endPiece();
            if (gap > 0 && piece_ > 0) piece_ += gap;
            if (gap > 0 && unit_ > 0) unit_ += gap;
        }
        piece_ += width;
        unit_ += width;
    }
    /// An empty line, which counts as content.
    void emptyLine() {
        isEmpty_ = false;
        marker_ = 0;
    }
    /// A list item's marker: it takes the place of the next line's indent, or is wider than that.
    void marker(int width) {
        isEmpty_ = false;
        marker_ = width;
    }
    void endLine() {
        if (line_ == 0 && marker_ == 0) return;
        endPiece();
        endUnit();
        least_ = std::max(least_, around(widestPiece_));
        min_ = std::max(min_, around(widestUnit_));
        widestPiece_ = widestUnit_ = 0;
        max_ = std::max(max_, line_ + std::max(indent_, marker_));
        deepest_ = std::max(deepest_, indent_);
        if (line_ > 0) marker_ = 0;
        line_ = 0;
    }
    /// A table, on lines of its own.
    void block(int least, int min, int max) {
        word(0, min);
        piece_ = least;
        endLine();
        max_ = std::max(max_, max + indent_);
    }
    /// Likewise at a side, with text next to it.
    void floating(int least, int min, int max) {
        word(0, min);
        piece_ = least;
        endPiece();
        endUnit();
        line_ += max - min;
    }
    /// The indents of both sides together, from the next line on.
    void indent(int both) { indent_ = both; }

    /// As narrow as can be.
    int least() const { return std::min(least_, min_); }
    /// Likewise with no line ended as a last resort.
    int min() const { return min_; }
    int max() const { return std::max(min_, max_); }
    bool isEmpty() const { return isEmpty_; }
    /// The indents of the content that has most of them.
    int deepestIndent() const { return deepest_; }

  private:
    // Indents make room for what cannot be broken, as long as they keep half of the width; markers do not.
    int around(int width) const { return std::max(std::min(2 * width, width + indent_), width + marker_); }
    void endPiece() {
        widestPiece_ = std::max(widestPiece_, piece_);
        piece_ = 0;
    }
    void endUnit() {
        widestUnit_ = std::max(widestUnit_, unit_);
        unit_ = 0;
    }

    int least_ = 0;
    int min_ = 0;
    int max_ = 0;
    int piece_ = 0;        // since the last place where a line may end
    int unit_ = 0;         // since the last one that is no last resort
    int widestPiece_ = 0;  // on this line
    int widestUnit_ = 0;
    int line_ = 0;
    int indent_ = 0;
    int marker_ = 0;
    int deepest_ = 0;
    bool keepsLines_;
    bool isEmpty_ = true;
};

}  // namespace kavrelon
