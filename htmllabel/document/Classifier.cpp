#include "htmllabel/document/Classifier.h"

#include <algorithm>
#include <memory>

#include "htmllabel/document/TextDecoder.h"
#include "support/AsciiText.h"

namespace kavrelon {

void Classifier::mClassifyElement(HTMLElement& element) {
    if (!element.blnIsTag) return setWords(element);
    setDefaults(element);
    attributes_.mApplyTagAttributes(element);
}

void Classifier::setDefaults(HTMLElement& element) {
    constexpr std::int32_t kTop = 3;
    constexpr std::int32_t kNotLaidOut = -1;
    switch (element.lngTagType) {
        case TAG_BODY:
            page_.mintBodyIndex = element.intIndex;
            break;
        case TAG_TABLE:
            element.intCellPadding = 2;
            element.intCellSpacing = 2;
            element.sglWidth = 1;
            break;
        case TAG_TD:
            element.intColSpan = 1;
            element.sglWidth = 1;
            element.lngVAlign = kTop;
            element.lngBgColor = defaults_.BackColor;
            element.isHeaderCell = asciiUpper(element.strRaw[2]) == 'H';
            break;
        case TAG_FONT:
            element.lngColor = page_.mlngTextColor;
            element.sglFontSize = defaults_.DefaultFontSize;
            break;
        case TAG_HEADING: {
            const int level = element.strRaw[2] - '0';
            element.sglFontSize = static_cast<float>(defaults_.DefaultFontSize + (7 - level) * 1.2);
            break;
        }
        case TAG_BIG:
            element.sglFontSize = defaults_.DefaultFontSize + 1;
            break;
        case TAG_SMALL:
            element.sglFontSize = defaults_.DefaultFontSize - 1;
            break;
        case TAG_A:
            element.lngTop = element.lngLeft = element.lngBottom = element.lngRight = kNotLaidOut;
            break;
        case TAG_IMG:
            element.intHSpace = 2;
            element.intVSpace = 2;
            break;
        default:
            break;
    }
}

void Classifier::setWords(HTMLElement& element) {
    const std::string_view text = mstrDecodeText(element.strRaw, texts_);
    const auto count = static_cast<std::size_t>(std::ranges::count(text, ' ')) + 1;
    std::string_view* words = std::pmr::polymorphic_allocator<std::string_view>(&texts_).allocate(count);
    const char* begin = text.data();
    const char* const end = begin + text.size();
    for (std::size_t i = 0; i < count; ++i) {
        const char* const stop = std::find(begin, end, ' ');
        std::construct_at(words + i, begin, static_cast<std::size_t>(stop - begin));
        begin = stop + 1;
    }
    element.strWords = {words, count};
}

}  // namespace kavrelon
