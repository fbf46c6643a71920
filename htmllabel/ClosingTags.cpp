#include "htmllabel/ClosingTags.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "htmllabel/NameKey.h"
#include "htmllabel/TagTable.h"

namespace kavrelon {
namespace {

constexpr TagSet kEndCells = {TAG_TD,    TAG_TR,    TAG_END_TR,    TAG_END_TABLE, TAG_THEAD, TAG_END_THEAD,
                              TAG_TBODY, TAG_TFOOT, TAG_END_TBODY, TAG_END_TFOOT, TAG_BODY,  TAG_END_BODY};
constexpr TagSet kEndRows = {TAG_TR,    TAG_END_TABLE, TAG_THEAD,     TAG_END_THEAD, TAG_TBODY,
                             TAG_TFOOT, TAG_END_TBODY, TAG_END_TFOOT, TAG_BODY,      TAG_END_BODY};
constexpr TagSet kEndParagraphs = {TAG_P,           TAG_DIV,        TAG_END_DIV,   TAG_HEADING,
                                   TAG_END_HEADING, TAG_UL,         TAG_END_UL,    TAG_OL,
                                   TAG_END_OL,      TAG_LI,         TAG_HR,        TAG_TABLE,
                                   TAG_END_TABLE,   TAG_BLOCKQUOTE, TAG_CENTER,    TAG_END_BLOCKQUOTE,
                                   TAG_END_CENTER,  TAG_FORM,       TAG_END_FORM,  TAG_TD,
                                   TAG_END_TD,      TAG_TR,         TAG_END_TR,    TAG_THEAD,
                                   TAG_TBODY,       TAG_TFOOT,      TAG_END_THEAD, TAG_END_TBODY,
                                   TAG_END_TFOOT,   TAG_BODY,       TAG_END_BODY};

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

constexpr TagType closerOf(TagType opener) {
    return static_cast<TagType>(opener + 1);
}

std::string_view closerText(TagType closer) {
    switch (closer) {
        case TAG_END_P:
            return "</P>";
        case TAG_END_TR:
            return "</TR>";
        default:
            return "</TD>";
    }
}

/// A closer to add, and the piece that it comes before.
struct Missing {
    std::size_t before = 0;
    TagType closer = TAG_END_P;
};

/// Places on the stack of open elements, `kNone` where none is open.
struct Innermost {
    std::size_t table = kNone;
    std::size_t row = kNone;   // of that table
    std::size_t cell = kNone;  // of that table
};

class Matcher {
  public:
    explicit Matcher(const std::vector<Piece>& pieces) : pieces_(pieces), documentEnd_(pieces.size()) {}

    /// In the order of their places; those of one place from the inside out.
    std::vector<Missing> missing() {
        for (std::size_t i = 0; i < pieces_.size(); ++i) take(i);
        closeAbove(0, documentEnd_);
        std::ranges::stable_sort(missing_, {}, &Missing::before);
        return std::move(missing_);
    }

  private:
    struct Open {
        TagType code = TAG_P;
        std::size_t index = 0;
        /// The first piece that ends it if no closer comes.
        std::size_t ender = kNone;
        /// As it was before this one.
        Innermost outside;
    };

    void take(std::size_t index) {
        const TagType code = isDocumentEnd(pieces_[index]) ? TAG_END_BODY : pieces_[index].code;
        noteEnds(index, code);
        switch (code) {
            case TAG_P:
                open(index, code);
                break;
            case TAG_TABLE:
                open(index, code);
                innermost_ = {.table = open_.size() - 1};
                break;
            case TAG_TR:
                open(index, code);
                innermost_.row = open_.size() - 1;
                break;
            case TAG_TD:
                open(index, code);
                innermost_.cell = open_.size() - 1;
                break;
            case TAG_END_P:
                // An open paragraph of this cell is on top: only rows, cells and tables go on top of one.
                if (paragraphOnTop()) pop();
                break;
            case TAG_END_TABLE:
                close(innermost_.table, index);
                break;
            case TAG_END_TR:
                close(innermost_.row, index);
                break;
            case TAG_END_TD:
                close(innermost_.cell, index);
                break;
            case TAG_END_BODY:
                if (index != documentEnd_ + 1) documentEnd_ = index;
                break;
            default:
                break;
        }
    }

    static bool isDocumentEnd(const Piece& piece) {
        return piece.code == TAG_UNKNOWN && nameKey(mstrTagID(piece.raw)) == nameKey("/HTML");
    }

    bool paragraphOnTop() const { return !open_.empty() && open_.back().code == TAG_P; }

    /// Notes where the innermost paragraph, cell and row end if no closer comes.
    void noteEnds(std::size_t index, TagType code) {
        const auto note = [&](std::size_t place) {
            if (place != kNone && open_[place].ender == kNone) open_[place].ender = index;
        };
        if (kEndParagraphs.has(code) && paragraphOnTop()) note(open_.size() - 1);
        if (kEndCells.has(code)) note(innermost_.cell);
        if (kEndRows.has(code)) note(innermost_.row);
    }

    void open(std::size_t index, TagType code) { open_.push_back({code, index, kNone, innermost_}); }

    void pop() {
        innermost_ = open_.back().outside;
        open_.pop_back();
    }

    /// A closer at `index` closes the element at `place` of the stack, and with it all that is open in it.
    void close(std::size_t place, std::size_t index) {
        if (place == kNone) return;
        closeAbove(place + 1, index);
        pop();
    }

    void closeAbove(std::size_t depth, std::size_t index) {
        for (; open_.size() > depth; pop()) {
            const Open& element = open_.back();
            if (element.code == TAG_TABLE) continue;
            const std::size_t end = element.index < index ? index : pieces_.size();
            missing_.push_back({element.ender == kNone ? end : element.ender, closerOf(element.code)});
        }
    }

    const std::vector<Piece>& pieces_;
    std::vector<Open> open_;
    Innermost innermost_;
    /// Where the body or the document ends; the number of pieces until that is known.
    std::size_t documentEnd_;
    std::vector<Missing> missing_;
};

}  // namespace

void addClosingTags(std::vector<Piece>& pieces) {
    const std::vector<Missing> missing = Matcher(pieces).missing();
    if (missing.empty()) return;
    // An added closer has an opener of three characters or more, so that there are never 32768 elements.
    std::vector<Piece> complete;
    complete.reserve(pieces.size() + missing.size());
    auto next = missing.begin();
    for (std::size_t i = 0; i <= pieces.size(); ++i) {
        for (; next != missing.end() && next->before == i; ++next) {
            complete.push_back({closerText(next->closer), next->closer, false});
        }
        if (i < pieces.size()) complete.push_back(pieces[i]);
    }
    pieces = std::move(complete);
}

}  // namespace kavrelon
