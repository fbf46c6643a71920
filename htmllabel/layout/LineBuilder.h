#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "htmllabel/layout/DisplayList.h"
#include "htmllabel/layout/Flow.h"

namespace kavrelon {

enum class TokenKind : std::uint8_t { Word, Picture, Mark };

/// A word, picture or mark on its way to a line.
struct LineToken {
    TokenKind kind = TokenKind::Word;
    std::uint32_t index = 0;  // of its text, picture or mark in the flow
    std::string_view word;
    int gap = -1;  // the space before it; -1: no line ends there
    int width = 0;
};

/// The line being filled: collects what stands on it, knows where it may end, and sets it on one baseline.
class LineBuilder {
  public:
    explicit LineBuilder(const Flow& flow) : flow_(flow) {}

    /// No word or picture stands on the line. Marks alone wait for the next one.
    bool isEmpty() const { return contentEnd_ == 0; }
    /// With what follows its last break, or with all of it when that stands after a gap, the line would be
    /// too long for `room` and can be ended before.
    bool mustEndBefore(const LineToken& token, int room) const {
        return width_ + (token.gap > 0 ? token.gap : 0) + token.width > room && endBefore(token) > 0;
    }
    /// The number of tokens that stay on the line when it ends to make room for this one.
    std::size_t endBefore(const LineToken& token) const { return token.gap >= 0 ? contentEnd_ : break_; }
    std::size_t size() const { return tokens_.size(); }
    /// The number of tokens without the marks at the end.
    std::size_t contentSize() const { return contentEnd_; }
    void add(LineToken token);

    struct Shape {
        int width = 0;
        int ascent = 0;
        int descent = 0;
    };
    Shape shape(std::size_t count) const;
    /// Puts the first `count` tokens into a frame, with the line's left end and baseline at `start`. `ground`
    /// is the colour that they stand on.
    void set(std::size_t count, DisplayList& list, std::uint32_t frame, Point start, int lineTop,
             Colour ground);
    /// Takes the first `count` tokens away; the others begin the next line.
    void drop(std::size_t count);

  private:
    struct Run {
        std::size_t first = 0;
        std::size_t end = 0;
        int left = 0;
        int right = 0;
    };

    bool continuesRun(const LineToken& before, const LineToken& token) const;
    void setRun(const Run& run, DisplayList& list, std::uint32_t frame, int baseline, int nextGap);

    const Flow& flow_;
    std::vector<LineToken> tokens_;
    int width_ = 0;
    std::size_t break_ = 0;       // a line may end before this token; 0: nowhere
    std::size_t contentEnd_ = 0;  // behind the last word or picture
};

}  // namespace kavrelon
