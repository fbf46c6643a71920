#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "htmllabel/layout/DisplayList.h"
#include "htmllabel/layout/Flow.h"

namespace kavrelon {

enum class TokenKind : std::uint8_t { Word, Picture, Mark };

/// A word, picture or mark to be put on a line.
struct LineToken {
    TokenKind kind = TokenKind::Word;
    bool lastResort = false;  // there are hard spaces before it: only a line without other gaps ends there
    bool drawsSpace = false;  // the space before it is underlined, and no other text's
    std::uint32_t index = 0;  // of its text, picture or mark in the flow
    std::string_view word;
    int gap = -1;  // the space before it; -1: no line may end there
    int width = 0;

    /// Not at the start of a line, where there is no space.
    bool isAfterOwnSpace() const { return drawsSpace && gap > 0; }
};

/// The line being filled: collects its tokens, knows where it may end, and sets them on one baseline.
class LineBuilder {
  public:
    explicit LineBuilder(const Flow& flow) : flow_(flow) {}

    /// Without words and pictures. Marks alone wait for the next line.
    bool isEmpty() const { return contentEnd_ == 0; }
    /// Whether the line would get longer than `room` pixels with this token.
    bool overflows(const LineToken& token, int room) const {
        return width_ + (token.gap > 0 ? token.gap : 0) + token.width > room;
    }
    /// Whether the line has to end before this token, or at its last break: it would get too long, and there
    /// is such a place.
    bool mustEndBefore(const LineToken& token, int room) const {
        return overflows(token, room) && endBefore(token) > 0;
    }
    /// The number of tokens that stay on the line when it ends because of this one.
    std::size_t endBefore(const LineToken& token) const {
        if (token.gap >= 0 && !token.lastResort) return contentEnd_;
        if (break_ > 0) return break_;
        return token.lastResort ? contentEnd_ : lastResort_;
    }
    /// Whether that place is at a hard space.
    bool isLastResort(const LineToken& token) const {
        return break_ == 0 && (token.gap < 0 || token.lastResort);
    }
    std::size_t size() const { return tokens_.size(); }
    /// The number of tokens without the marks at the end.
    std::size_t contentSize() const { return contentEnd_; }
    void add(LineToken token);

    struct Shape {
        int width = 0;
        int ascent = 0;
        int descent = 0;

        void extend(const TextStyle& style) {
            ascent = std::max(ascent, style.ascent + style.rise);
            descent = std::max(descent, style.descent - style.rise);
        }
    };
    Shape shape(std::size_t count) const;
    /// Puts the first `count` tokens into a frame. `start` is the left end of the line's baseline, `ground`
    /// the colour behind the line.
    void set(std::size_t count, DisplayList& list, std::uint32_t frame, Point start, int lineTop,
             Colour ground);
    /// Removes the first `count` tokens; the others begin the next line.
    void drop(std::size_t count);

  private:
    struct Run {
        std::size_t first = 0;
        std::size_t end = 0;
        int left = 0;
        int right = 0;
    };

    /// Counts a token. Marks before a place where the line may end go to the next line.
    void extend(std::size_t index) {
        LineToken& token = tokens_[index];
        if (isEmpty()) {
            token.gap = 0;
        } else if (token.lastResort) {
            lastResort_ = contentEnd_;
        } else if (token.gap >= 0) {
            break_ = contentEnd_;
        }
        width_ += (token.gap > 0 ? token.gap : 0) + token.width;
        contentEnd_ = index + 1;
    }
    bool continuesRun(const LineToken& before, const LineToken& token) const;
    void setSpace(std::size_t next, DisplayList& list, std::uint32_t frame, Point start) const;
    void setRun(const Run& run, DisplayList& list, std::uint32_t frame, int baseline, int nextGap);

    const Flow& flow_;
    std::vector<LineToken> tokens_;
    int width_ = 0;
    std::size_t break_ = 0;       // the last token before which the line may end; 0: none
    std::size_t lastResort_ = 0;  // likewise at a hard space
    std::size_t contentEnd_ = 0;  // after the last word or picture
};

}  // namespace kavrelon
