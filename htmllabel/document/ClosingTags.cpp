#include "htmllabel/document/ClosingTags.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "htmllabel/document/NameKey.h"
#include "htmllabel/document/TagTable.h"

// How closers are added
//
// The tree ends a level at any closer, so each "</P>", "</TR>" and "</TD>" that an author left out would
// shift what follows it by a level. One walk over the pieces finds where they are missing. It keeps the
// innermost open table, row, cell and paragraph; an opener remembers what was innermost before it, and its
// closer restores that. Other kinds of tags do not matter to this, so "<P><B></P></B>" lacks nothing.
//
// A closer may come later than one would expect ("<P>a<DIV>b</DIV></P>"), so a tag that ends an element
// without a closer (see `Tags.def`) only leaves a note at the innermost element that it would end, and the
// first note counts. An opener that no closer has matched when the walk is over gets one at its note, and
// without a note at the end of the body.

namespace kavrelon {
namespace {

/// An index of a piece or of an opened element. There are never more than 32767 elements, those that are
/// added included: each of these has an opener of three characters or more.
using Index = std::int16_t;
constexpr Index kNotOpen = -1;

template <class Items>
Index sizeOf(const Items& items) {
    return static_cast<Index>(items.size());
}

/// A closer to add, and the piece that it comes before.
struct Missing {
    Index before = 0;
    std::uint8_t closer = TAG_END_P;
};

/// The open elements that a closer would close.
struct Innermost {
    Index table = kNotOpen;
    Index row = kNotOpen;        // of that table
    Index cell = kNotOpen;       // of that table
    Index paragraph = kNotOpen;  // of that cell
};

/// Matches closers with openers of their own kind, and finds the openers that are left.
class Matcher {
  public:
    Matcher(const std::vector<Piece>& pieces, std::string_view document)
        : pieces_(pieces), document_(document), documentEnd_(sizeOf(pieces)) {}

    /// The closers to add, in the order of their places; those of one place from the inside out.
    std::vector<Missing> missing() {
        for (Index i = 0; i < sizeOf(pieces_); ++i) take(i);
        std::vector<Missing> found;
        for (auto element = opened_.rbegin(); element != opened_.rend(); ++element) {
            if (element->closed || element->code == TAG_TABLE) continue;
            found.push_back({endOf(*element), static_cast<std::uint8_t>(closerOf(element->tag()))});
        }
        std::ranges::stable_sort(found, {}, &Missing::before);
        return found;
    }

  private:
    struct Opened {
        std::uint8_t code = TAG_P;
        bool closed = false;
        Index index = 0;
        /// The first piece that ends it if no closer comes.
        Index ender = kNotOpen;
        /// What was innermost before this one.
        Innermost outside;

        TagType tag() const { return static_cast<TagType>(code); }
    };

    Opened& at(Index element) { return opened_[static_cast<std::size_t>(element)]; }

    void take(Index index) {
        const Piece& piece = pieces_[static_cast<std::size_t>(index)];
        const TagType code = isDocumentEnd(piece) ? TAG_END_BODY : piece.tag();
        if (code == TAG_END_TABLE && innermost_.table == kNotOpen) return;
        noteEnds(index, code);
        switch (code) {
            case TAG_P:
                innermost_.paragraph = open(index, code);
                break;
            case TAG_TABLE:
                innermost_ = {.table = open(index, code)};
                break;
            case TAG_TR:
                innermost_.row = open(index, code);
                innermost_.paragraph = kNotOpen;
                break;
            case TAG_TD:
                innermost_.cell = open(index, code);
                innermost_.paragraph = kNotOpen;
                break;
            case TAG_END_P:
                if (const Opened* p = close(innermost_.paragraph))
                    innermost_.paragraph = p->outside.paragraph;
                break;
            case TAG_END_TR:
                if (const Opened* row = close(innermost_.row)) innermost_.row = row->outside.row;
                break;
            case TAG_END_TD:
                if (const Opened* cell = close(innermost_.cell)) innermost_.cell = cell->outside.cell;
                break;
            case TAG_END_TABLE:
                innermost_ = close(innermost_.table)->outside;
                break;
            case TAG_END_BODY:
                // The end of the document often comes directly after that of the body.
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

    Index open(Index index, TagType code) {
        opened_.push_back({static_cast<std::uint8_t>(code), false, index, kNotOpen, innermost_});
        return static_cast<Index>(opened_.size() - 1);
    }

    /// Null when there is nothing to close.
    const Opened* close(Index element) {
        if (element == kNotOpen) return nullptr;
        at(element).closed = true;
        return &at(element);
    }

    /// Notes where the innermost paragraph, cell and row end if no closer comes.
    void noteEnds(Index index, TagType code) {
        const auto note = [&](Index element) {
            if (element != kNotOpen && at(element).ender == kNotOpen) at(element).ender = index;
        };
        const TagEnds ends = traitsOf(code).ends;
        if (ends >= TagEnds::Paragraph) note(innermost_.paragraph);
        if (ends >= TagEnds::Cell) note(innermost_.cell);
        if (ends >= TagEnds::Row) note(innermost_.row);
    }

    Index endOf(const Opened& element) const {
        if (element.ender != kNotOpen) return element.ender;
        return element.index < documentEnd_ ? documentEnd_ : sizeOf(pieces_);
    }

    const std::vector<Piece>& pieces_;
    std::string_view document_;
    std::vector<Opened> opened_;
    Innermost innermost_;
    /// Where the body or the document ends; the number of pieces until that is known.
    Index documentEnd_;
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
