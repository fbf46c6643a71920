#include "htmllabel/layout/LineBuilder.h"

#include <algorithm>

#include "htmllabel/layout/PictureBox.h"

// How lines are broken
//
// A page is a sequence of tokens: words, pictures and marks. Each has the width of the space before it, or -1
// where no line may end: "a<B>b</B>" is two tokens that stay together. The line takes tokens as they come and
// keeps two things, its width so far and the last token before which it may end (`break_`).
// `FlowPlacer::token` asks `mustEndBefore` for each new token. One that fits is added. One that does not fit
// and has a space before it ends the line there, and the space is dropped. One that does not fit and hangs on
// its predecessor ends the line at the last break, and all tokens since then move to the next line with it.
// Where there is no such place the line ends at the last hard space (`lastResort_`), and without one it gets
// too long, and with it the page. So nothing is ever tried twice:
// each token is added once and moved only with what it hangs on. Marks have no width; those before a break
// follow their word to the next line.

namespace kavrelon {
namespace {

/// How far a picture reaches above the baseline.
int ascentOf(const FlowPicture& picture) {
    const int height = picture.outerHeight();
    return picture.middle ? (height + 1) / 2 : height - picture.spaceY;
}

}  // namespace

void LineBuilder::add(LineToken token) {
    if (token.kind == TokenKind::Mark) {
        tokens_.push_back(token);
        return;
    }
    tokens_.push_back(token);
    extend(tokens_.size() - 1);
}

LineBuilder::Shape LineBuilder::shape(std::size_t count) const {
    Shape shape;
    std::uint32_t lastText = kNone;
    for (std::size_t i = 0; i < count; ++i) {
        const LineToken& token = tokens_[i];
        if (token.kind == TokenKind::Mark) continue;
        shape.width += std::max(token.gap, 0) + token.width;
        if (token.kind == TokenKind::Word) {
            // The words of a text follow one another.
            if (token.index == lastText) continue;
            lastText = token.index;
            const FlowText& text = flow_.texts[token.index];
            shape.extend(flow_.styles[text.style]);
            if (token.isAfterOwnSpace()) shape.extend(flow_.styles[text.gapStyle]);
        } else {
            const FlowPicture& picture = flow_.pictures[token.index];
            shape.ascent = std::max(shape.ascent, ascentOf(picture));
            shape.descent = std::max(shape.descent, picture.outerHeight() - ascentOf(picture));
        }
    }
    return shape;
}

void LineBuilder::drop(std::size_t count) {
    tokens_.erase(tokens_.begin(), tokens_.begin() + static_cast<std::ptrdiff_t>(count));
    width_ = 0;
    break_ = 0;
    lastResort_ = 0;
    contentEnd_ = 0;
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
        if (tokens_[i].kind != TokenKind::Mark) extend(i);
    }
}

/// Words of the same text are drawn together where one space or hard spaces are between them.
bool LineBuilder::continuesRun(const LineToken& before, const LineToken& token) const {
    return before.kind == TokenKind::Word && token.kind == TokenKind::Word && before.index == token.index &&
           (token.lastResort || before.word.data() + before.word.size() + 1 == token.word.data());
}

void LineBuilder::set(std::size_t count, DisplayList& list, std::uint32_t frame, Point start, int lineTop,
                      Colour ground) {
    Run run;
    int x = start.x;
    const auto endRun = [&](std::size_t next, int nextGap) {
        if (run.end > run.first) setRun(run, list, frame, start.y, nextGap);
        run = {next, next, x, x};
    };
    for (std::size_t i = 0; i < count; ++i) {
        const LineToken& token = tokens_[i];
        if (token.kind == TokenKind::Mark) {
            list.setMark(token.index, frame, {x, lineTop});
            continue;
        }
        const int gap = std::max(token.gap, 0);
        x += gap;
        if (run.end == run.first || run.end != i || !continuesRun(tokens_[i - 1], token)) {
            endRun(i, token.isAfterOwnSpace() ? 0 : gap);
            if (token.isAfterOwnSpace()) setSpace(i, list, frame, {x, start.y});
        }
        if (token.kind == TokenKind::Picture) {
            const FlowPicture& picture = flow_.pictures[token.index];
            setPictureBox(picture, flow_, list, frame, {x, start.y - ascentOf(picture)}, ground);
        } else {
            run.end = i + 1;
        }
        x += token.width;
        run.right = x;
    }
    endRun(count, 0);
}

// The underlined space before a token.
void LineBuilder::setSpace(std::size_t next, DisplayList& list, std::uint32_t frame, Point start) const {
    const FlowText& text = flow_.texts[tokens_[next].index];
    const TextStyle& style = flow_.styles[text.gapStyle];
    const int top = start.y - style.rise - style.ascent;
    DisplayItem item;
    item.kind = DrawKind::Text;
    item.element = text.element;
    item.frame = frame;
    item.place = {start.x - tokens_[next].gap, top, start.x, top + style.height()};
    item.value = text.gapStyle;
    item.text = " ";
    list.add(item);
}

// An underline goes on below the space at the end of its text.
void LineBuilder::setRun(const Run& run, DisplayList& list, std::uint32_t frame, int baseline, int nextGap) {
    const LineToken& first = tokens_[run.first];
    const LineToken& last = tokens_[run.end - 1];
    const FlowText& text = flow_.texts[first.index];
    const TextStyle& style = flow_.styles[text.style];
    const char* const begin = first.word.data();
    const char* end = last.word.data() + last.word.size();
    int right = run.right;
    if (style.underline && nextGap == style.spaceWidth) {
        const std::string_view lastWord = text.words[text.count - 1];
        if (lastWord.empty() && lastWord.data() == end + 1) {
            ++end;
            right += nextGap;
        }
    }
    const int top = baseline - style.rise - style.ascent;
    DisplayItem item;
    item.kind = DrawKind::Text;
    item.element = text.element;
    item.mark = text.mark;
    item.frame = frame;
    item.place = {run.left, top, right, top + style.height()};
    item.value = text.style;
    item.text = {begin, static_cast<std::size_t>(end - begin)};
    list.add(item);
}

}  // namespace kavrelon
