#include "htmllabel/document/Tokenizer.h"

#include <cstdint>
#include <limits>
#include <utility>

#include "htmllabel/document/TagTable.h"

namespace kavrelon {
namespace {

constexpr auto kNotFound = std::string_view::npos;
/// Places are counted from 1, in 16 bits.
constexpr std::size_t kLastPlace = std::numeric_limits<std::int16_t>::max();

bool isPlace(std::size_t index) {
    return index < kLastPlace;
}

class Cutter {
  public:
    explicit Cutter(std::string_view document) : document_(document) {}

    std::vector<Piece> run() {
        std::size_t start = document_.find('<');
        while (isPlace(start)) {
            const std::size_t end = tagEnd(start);
            // Without a ">", this "<" and all that follows are stray.
            if (end == kNotFound || end > kLastPlace || end <= start) break;
            addTag(start, end);
            if (end == kLastPlace) break;
            const std::size_t next = document_.find('<', end);
            if (!isPlace(next)) break;
            addText(end, next);
            start = next;
        }
        return std::move(pieces_);
    }

  private:
    /// The place after the tag or comment at `start`. A comment without an end counts as ending at the second
    /// character of the document, which cutting then rejects wherever the comment begins later.
    std::size_t tagEnd(std::size_t start) const {
        constexpr std::size_t kUnendedComment = 2;
        if (document_.substr(start).starts_with("<!--")) {
            const auto mark = document_.find("-->", start);
            return mark == kNotFound ? kUnendedComment : mark + 3;
        }
        const auto bracket = document_.find('>', start);
        return bracket == kNotFound ? kNotFound : bracket + 1;
    }

    void addTag(std::size_t start, std::size_t end) {
        add(start, end, tagType(document_.substr(start, end - start)), false);
        if (start > 0) noSpaceBefore_ = document_[start - 1] != ' ';
    }

    void addText(std::size_t start, std::size_t end) {
        const bool blank = document_.find_first_not_of(' ', start) >= end;
        if (!blank) add(start, end, TAG_TEXT, noSpaceBefore_);
    }

    void add(std::size_t start, std::size_t end, TagType code, bool noSpaceBefore) {
        pieces_.push_back({static_cast<std::uint16_t>(start), static_cast<std::uint16_t>(end - start),
                           static_cast<std::uint8_t>(code), noSpaceBefore});
    }

    std::string_view document_;
    std::vector<Piece> pieces_;
    bool noSpaceBefore_ = false;
};

}  // namespace

std::vector<Piece> mTokenizeDocument(std::string_view document) {
    return Cutter(document).run();
}

}  // namespace kavrelon
