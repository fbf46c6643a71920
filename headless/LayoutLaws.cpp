#include "headless/LayoutLaws.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "htmllabel/document/TagTable.h"

namespace kavrelon {
namespace {

std::string withoutSpaces(std::string text) {
    std::erase(text, ' ');
    return text;
}

/// What is to be drawn of a text, without spaces.
std::string drawable(const HTMLElement& element) {
    constexpr std::string_view kHardSpace = "&nbsp;";
    std::string text;
    for (const std::string_view word : element.strWords) (text += word) += ' ';
    for (std::size_t at = 0; (at = text.find(kHardSpace, at)) != text.npos;) {
        text.replace(at, kHardSpace.size(), " ");
    }
    return withoutSpaces(text);
}

bool isBlank(const TextRun& run) {
    return run.text.find_first_not_of(' ') == std::string_view::npos;
}

bool overlap(const Rect& a, const Rect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

std::string quoted(std::string_view text) {
    return " '" + std::string(text) + "'";
}

/// The box around the texts of the elements from `first` to its closer; nothing drawn gives an empty one.
Rect boxAround(const HTMLDocument& document, const std::vector<TextRun>& runs, std::int16_t first) {
    const auto elements = document.mudtElements();
    const auto opener = elements.begin() + first;
    const auto closer =
        std::find_if(opener, elements.end(), [](const HTMLElement& e) { return e.lngTagType == TAG_END_A; });
    Rect box{};
    for (const TextRun& run : runs) {
        if (run.element < first || run.element > closer - elements.begin() || isBlank(run)) continue;
        const Rect& place = run.place;
        if (box == Rect{}) box = place;
        box = {std::min(box.left, place.left), std::min(box.top, place.top), std::max(box.right, place.right),
               std::max(box.bottom, place.bottom)};
    }
    return box;
}

}  // namespace

std::string wordsLaw(const HTMLDocument& document, const Layout& layout, int width) {
    const auto elements = document.mudtElements();
    std::vector<std::string> drawn(elements.size());
    const Size page = layout.size();
    if (page.width < width || page.height < 0) return "the page is smaller than asked for";
    std::int16_t last = 0;
    for (const TextRun& run : layout.runs()) {
        const Rect& place = run.place;
        if (place.left < 0 || place.top < 0 || place.left > place.right || place.right > page.width ||
            place.top > place.bottom || place.bottom > page.height) {
            return "outside of the page:" + quoted(run.text);
        }
        if (run.element < 0 || run.element >= document.mintElementCount()) return "a text of no element";
        const auto index = static_cast<std::size_t>(run.element);
        drawn[index] += run.text;
        if (elements[index].lngTagType != TAG_TEXT) continue;
        if (run.element < last) return "out of order:" + quoted(run.text);
        last = run.element;
    }
    const bool hidden = std::ranges::any_of(elements, [](const HTMLElement& element) {
        const TagTraits& tag = traitsOf(element.lngTagType);
        return tag.content != TagContent::Shown && !tag.isCloser;
    });
    for (const HTMLElement& element : elements) {
        if (element.lngTagType != TAG_TEXT) continue;
        const std::string shown = withoutSpaces(drawn[static_cast<std::size_t>(element.intIndex)]);
        if (shown != drawable(element) && !(hidden && shown.empty()))
            return "not once:" + quoted(element.strRaw);
    }
    return {};
}

std::string placesLaw(const HTMLDocument& document, const Layout& layout) {
    const std::vector<TextRun> runs = layout.runs();
    for (auto one = runs.begin(); one != runs.end(); ++one) {
        const auto other = std::find_if(one + 1, runs.end(),
                                        [&](const TextRun& run) { return overlap(one->place, run.place); });
        if (other != runs.end()) return "one over the other:" + quoted(one->text) + quoted(other->text);
    }
    for (const std::int16_t link : document.mintLinks()) {
        const HTMLElement& element = document.mudtElements()[static_cast<std::size_t>(link)];
        const Rect box{element.lngLeft, element.lngTop, element.lngRight, element.lngBottom};
        const Rect around = boxAround(document, runs, link);
        if (around != Rect{} && box != around) return "not around its texts:" + quoted(element.strRaw);
    }
    return {};
}

}  // namespace kavrelon
