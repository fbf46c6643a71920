#include "htmllabel/ClosingTags.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
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

/// An index of a piece or a place on the stack of open elements. There are never more than 32767 elements,
/// those that are added included: each of these has an opener of three characters or more.
using Index = std::int16_t;
constexpr Index kNone = -1;

template <class Items>
Index sizeOf(const Items& items) {
    return static_cast<Index>(items.size());
}

constexpr std::uint8_t closerOf(std::uint8_t opener) {
    return static_cast<std::uint8_t>(opener + 1);
}

/// A closer to add, and the piece that it comes before.
struct Missing {
    Index before = 0;
    std::uint8_t closer = TAG_END_P;
};

/// Places on the stack of open elements, `kNone` where none is open.
struct Innermost {
    Index table = kNone;
    Index row = kNone;   // of that table
    Index cell = kNone;  // of that table
};

class Matcher {
  public:
    Matcher(const std::vector<Piece>& pieces, std::string_view document)
        : pieces_(pieces), document_(document), documentEnd_(sizeOf(pieces)) {}

    /// In the order of their places; those of one place from the inside out.
    std::vector<Missing> missing() {
        for (Index i = 0; i < sizeOf(pieces_); ++i) take(i);
        closeAbove(0, documentEnd_);
        std::ranges::stable_sort(missing_, {}, &Missing::before);
        return std::move(missing_);
    }

  private:
    struct Open {
        std::uint8_t code = TAG_P;
        Index index = 0;
        /// The first piece that ends it if no closer comes.
        Index ender = kNone;
        /// As it was before this one.
        Innermost outside;
    };

    void take(Index index) {
        const Piece& piece = pieces_[static_cast<std::size_t>(index)];
        const TagType code = isDocumentEnd(piece) ? TAG_END_BODY : piece.tag();
        noteEnds(index, code);
        switch (code) {
            case TAG_P:
                open(index, code);
                break;
            case TAG_TABLE:
                open(index, code);
                innermost_ = {.table = topOfStack()};
                break;
            case TAG_TR:
                open(index, code);
                innermost_.row = topOfStack();
                break;
            case TAG_TD:
                open(index, code);
                innermost_.cell = topOfStack();
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

    bool isDocumentEnd(const Piece& piece) const {
        return piece.code == TAG_UNKNOWN &&
               nameKey(mstrTagID(document_.substr(piece.begin, piece.length))) == nameKey("/HTML");
    }

    Index topOfStack() const { return static_cast<Index>(open_.size() - 1); }

    bool paragraphOnTop() const { return !open_.empty() && open_.back().code == TAG_P; }

    /// Notes where the innermost paragraph, cell and row end if no closer comes.
    void noteEnds(Index index, TagType code) {
        const auto note = [&](Index place) {
            if (place == kNone) return;
            Open& element = open_[static_cast<std::size_t>(place)];
            if (element.ender == kNone) element.ender = index;
        };
        if (kEndParagraphs.has(code) && paragraphOnTop()) note(topOfStack());
        if (kEndCells.has(code)) note(innermost_.cell);
        if (kEndRows.has(code)) note(innermost_.row);
    }

    void open(Index index, TagType code) {
        open_.push_back({static_cast<std::uint8_t>(code), index, kNone, innermost_});
    }

    void pop() {
        innermost_ = open_.back().outside;
        open_.pop_back();
    }

    /// A closer at `index` closes the element at `place` of the stack, and with it all that is open in it.
    void close(Index place, Index index) {
        if (place == kNone) return;
        closeAbove(static_cast<std::size_t>(place) + 1, index);
        pop();
    }

    void closeAbove(std::size_t depth, Index index) {
        for (; open_.size() > depth; pop()) {
            const Open& element = open_.back();
            if (element.code == TAG_TABLE) continue;
            const Index end = element.index < index ? index : sizeOf(pieces_);
            missing_.push_back({element.ender == kNone ? end : element.ender, closerOf(element.code)});
        }
    }

    const std::vector<Piece>& pieces_;
    std::string_view document_;
    std::vector<Open> open_;
    Innermost innermost_;
    /// Where the body or the document ends; the number of pieces until that is known.
    Index documentEnd_;
    std::vector<Missing> missing_;
};

}  // namespace

void addClosingTags(std::vector<Piece>& pieces, std::string_view document) {
    const std::vector<Missing> missing = Matcher(pieces, document).missing();
    if (missing.empty()) return;
    std::vector<Piece> complete;
    complete.reserve(pieces.size() + missing.size());
    auto rest = pieces.begin();
    for (const Missing& tag : missing) {
        const auto before = pieces.begin() + tag.before;
        complete.insert(complete.end(), rest, before);
        complete.push_back({.code = tag.closer});
        rest = before;
    }
    complete.insert(complete.end(), rest, pieces.end());
    pieces = std::move(complete);
}

std::string_view addedCloser(TagType code) {
    switch (code) {
        case TAG_END_P:
            return "</P>";
        case TAG_END_TR:
            return "</TR>";
        default:
            return "</TD>";
    }
}

}  // namespace kavrelon
