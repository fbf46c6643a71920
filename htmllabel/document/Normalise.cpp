#include "htmllabel/document/Normalise.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "support/AsciiText.h"

namespace kavrelon {
namespace {

struct Entity {
    std::string_view name;
    std::string_view reference;
};

constexpr Entity kEntities[] = {
    {"&lt;", "&#060;"},     {"&gt;", "&#062;"},     {"&quot;", "&#034;"},   {"&copy;", "&#169;"},
    {"&deg;", "&#176;"},    {"&amp;", "&#038;"},    {"&middot;", "&#183;"}, {"&agrave;", "&#224;"},
    {"&aacute;", "&#225;"}, {"&egrave;", "&#232;"}, {"&eacute;", "&#233;"}, {"&euml;", "&#235;"},
};

enum class ByteClass : std::uint8_t { Plain, Space, OtherWhite, Ampersand };

constexpr std::array<ByteClass, 256> kByteClass = [] {
    std::array<ByteClass, 256> classes{};
    classes[' '] = ByteClass::Space;
    classes['\t'] = classes['\n'] = classes['\r'] = ByteClass::OtherWhite;
    classes['&'] = ByteClass::Ampersand;
    return classes;
}();

ByteClass classOf(char c) {
    return kByteClass[static_cast<unsigned char>(c)];
}

bool isWhite(char c) {
    return classOf(c) == ByteClass::Space || classOf(c) == ByteClass::OtherWhite;
}

/// Which of the tags around a page a text has already.
struct PageTags {
    bool body = false;
    bool html = false;
};

/// Both are looked for at once, and the letter after a "<" rules out most places.
PageTags pageTags(std::string_view html) {
    // A BODY tag with attributes counts, an HTML tag with attributes does not.
    constexpr std::string_view kBody = "BODY";
    constexpr std::string_view kHtml = "HTML>";
    PageTags found;
    for (auto at = html.find('<'); at != std::string_view::npos; at = html.find('<', at)) {
        while (at < html.size() && html[at] == '<') ++at;
        if (at == html.size()) break;
        const char first = asciiUpper(html[at]);
        if (first != 'B' && first != 'H') continue;
        const std::string_view rest = html.substr(at);
        if (first == 'B') found.body = found.body || equalsInUpperCase(rest.substr(0, kBody.size()), kBody);
        if (first == 'H') found.html = found.html || equalsInUpperCase(rest.substr(0, kHtml.size()), kHtml);
    }
    return found;
}

/// Copies a text and replaces entities and white space on the way.
///
/// The replacements are defined as steps over the whole text, one entity or pair of spaces after the other.
/// One pass has the same result: the reference that replaces an entity begins with "&#" and so never becomes
/// part of another entity, and replacing pairs of spaces by one, three times over, leaves an eighth of a run.
class Copier {
  public:
    Copier(std::string_view html, std::string& out) : html_(html), out_(out) {}

    void run() {
        std::size_t at = 0;
        while ((at = nextSpecial(at)) < html_.size()) {
            out_.append(html_, copied_, at - copied_);
            at += isWhite(html_[at]) ? replaceWhite(at) : replaceEntity(at);
            copied_ = at;
        }
        out_.append(html_, copied_, html_.size() - copied_);
    }

  private:
    /// The first place from `at` on that is not copied as it is. A single space between two words is.
    std::size_t nextSpecial(std::size_t at) const {
        for (;; ++at) {
            while (at < html_.size() && classOf(html_[at]) == ByteClass::Plain) ++at;
            if (at == html_.size()) return at;
            const bool stays =
                classOf(html_[at]) == ByteClass::Ampersand ? entityAt(at) == nullptr : isSingleSpace(at);
            if (!stays) return at;
        }
    }

    bool isSingleSpace(std::size_t at) const {
        return html_[at] == ' ' && (at + 1 == html_.size() || !isWhite(html_[at + 1]));
    }

    const Entity* entityAt(std::size_t at) const {
        const std::string_view rest = html_.substr(at);
        if (rest.size() == 1) return nullptr;
        // The first letter rules out most of them without a comparison.
        const auto* found = std::ranges::find_if(
            kEntities, [&](const Entity& e) { return e.name[1] == rest[1] && rest.starts_with(e.name); });
        return found == std::end(kEntities) ? nullptr : found;
    }

    // Each appends the replacement of what is at `at` and returns the length of what it replaces.

    std::size_t replaceWhite(std::size_t at) {
        constexpr std::size_t kRunForOneSpace = 8;
        std::size_t end = at;
        while (end < html_.size() && isWhite(html_[end])) ++end;
        const std::size_t length = end - at;
        out_.append((length + kRunForOneSpace - 1) / kRunForOneSpace, ' ');
        return length;
    }

    std::size_t replaceEntity(std::size_t at) {
        const Entity* entity = entityAt(at);
        out_ += entity->reference;
        return entity->name.size();
    }

    std::string_view html_;
    std::string& out_;
    std::size_t copied_ = 0;
};

}  // namespace

std::string normalise(std::string_view html) {
    const auto [hasBody, hasHtml] = pageTags(html);
    constexpr std::size_t kRoomToGrow = 64;
    std::string document;
    document.reserve(html.size() + kRoomToGrow);
    if (!hasHtml) document += "<HTML>";
    if (!hasBody) document += "<BODY>";
    Copier(html, document).run();
    if (!hasBody) document += "</BODY>";
    if (!hasHtml) document += "</HTML>";
    return document;
}

}  // namespace kavrelon
