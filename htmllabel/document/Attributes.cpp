#include "htmllabel/document/Attributes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "htmllabel/document/Colours.h"
#include "htmllabel/document/NameKey.h"
#include "htmllabel/document/TextDecoder.h"
#include "support/AsciiText.h"
#include "support/Conversions.h"
#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

constexpr auto kNotFound = std::string_view::npos;

std::string without(std::string_view text, std::string_view part) {
    std::string left;
    for (auto at = text.find(part); at != kNotFound; at = text.find(part)) {
        left += text.substr(0, at);
        text.remove_prefix(at + part.size());
    }
    return left.append(text);
}

/// A size in pixels, which may carry `unit`, or a percentage as a fraction.
float toExtent(std::string_view value, std::string_view unit) {
    constexpr float kPercent = 100;
    if (value.find('%') != kNotFound) return toSingle(without(value, "%")) / kPercent;
    return value.find(unit) == kNotFound || unit.empty() ? toSingle(value) : toSingle(without(value, unit));
}

/// The first of a list of names; a list that begins with a comma is taken whole.
std::string_view firstOfList(std::string_view list) {
    const auto comma = list.find(',');
    return comma == 0 ? list : list.substr(0, comma);
}

void align(HTMLElement& element, std::string_view value) {
    element.hasAlign = true;
    if (nameKey(value) == nameKey("LEFT")) element.alignsLeft = true;
    if (nameKey(value) == nameKey("CENTER")) element.blnAlignCenter = true;
    if (nameKey(value) == nameKey("RIGHT")) element.blnAlignRight = true;
}

void clear(HTMLElement& element, std::string_view value) {
    const bool both = nameKey(value) == nameKey("ALL") || nameKey(value) == nameKey("BOTH");
    element.clearsLeft = both || nameKey(value) == nameKey("LEFT");
    element.clearsRight = both || nameKey(value) == nameKey("RIGHT");
}

void alignVertically(HTMLElement& element, std::string_view value) {
    constexpr std::int32_t kCentre = 4;
    constexpr std::int32_t kBottom = 5;
    element.hasVAlign = true;
    if (nameKey(value) == nameKey("CENTER")) element.lngVAlign = kCentre;
    if (nameKey(value) == nameKey("BOTTOM")) element.lngVAlign = kBottom;
}

void setHeight(HTMLElement& element, std::string_view value) {
    if (element.lngTagType == TAG_IMG) {
        element.lngImgHeight = toInt32(value);
    } else {
        element.sglHeight = toExtent(value, "");
        element.heightIsPercentage = value.find('%') != kNotFound;
    }
}

void setWidth(HTMLElement& element, std::string_view value) {
    if (element.lngTagType == TAG_IMG) {
        element.lngImgWidth = toInt32(value);
    } else {
        element.sglWidth = toExtent(value, "px");
        element.hasWidth = true;
    }
}

}  // namespace

void Attributes::mApplyTagAttributes(HTMLElement& element) {
    const std::int16_t count = mintExtractTagAttributes(element.strRaw);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        apply(element, mstrAttrNames_[i], mstrAttrValues_[i]);
    }
}

/// Returns the number of attributes. Each begins after the one before it and ends at its value's delimiter:
/// the quote that opened the value, or a space.
std::int16_t Attributes::mintExtractTagAttributes(std::string_view tag) {
    mstrAttrNames_.clear();
    mstrAttrValues_.clear();
    auto at = tag.find(' ');
    while (at < tag.size()) {
        auto equals = tag.find('=', at);
        if (equals == kNotFound) break;
        // An "=" directly after a value belongs to the next name.
        if (equals == at) equals = tag.find('=', at + 1);
        if (equals == kNotFound) raise(RuntimeErrorNumber::InvalidProcedureCall);
        mstrAttrNames_.push_back(trimSpaces(tag.substr(at, equals - at)));

        const auto begin = tag.find_first_not_of(' ', equals + 1);
        const bool quoted = tag[begin] == '\'' || tag[begin] == '"';
        const char delimiter = quoted ? tag[begin] : ' ';
        auto stop = tag.find(delimiter, begin + 1);
        if (stop == kNotFound) stop = tag.size() - 1;
        std::string_view value = trimSpaces(tag.substr(begin, stop - begin));
        if (value.starts_with(delimiter)) value.remove_prefix(1);
        mstrAttrValues_.push_back(value);
        at = static_cast<std::size_t>(narrowToInt16(static_cast<int>(stop) + 2)) - 1;
    }
    return static_cast<std::int16_t>(mstrAttrValues_.size());
}

void Attributes::apply(HTMLElement& element, std::string_view name, std::string_view value) {
    switch (nameKey(name)) {
        case nameKey("ALIGN"):
            return align(element, value);
        case nameKey("ALT"):
            element.strAlt = decoded(value);
            return;
        case nameKey("BACKGROUND"):
            page_.mstrBackground = value;
            return;
        case nameKey("BGCOLOR"):
            return setBackColour(element, value);
        case nameKey("BORDER"):
            element.intBorder = toInt16(value);
            return;
        case nameKey("CELLPADDING"):
            element.intCellPadding = toInt16(value);
            return;
        case nameKey("CELLSPACING"):
            element.intCellSpacing = toInt16(value);
            return;
        case nameKey("CLEAR"):
            return clear(element, value);
        case nameKey("COLOR"):
            element.lngColor = mlngParseColor(value);
            element.hasColor = true;
            return;
        case nameKey("COLSPAN"):
            element.intColSpan = toInt16(value);
            return;
        case nameKey("FACE"):
            element.strFontFace = firstOfList(value);
            return;
        case nameKey("HEIGHT"):
            return setHeight(element, value);
        case nameKey("HREF"):
            element.strHref = decoded(value);
            return;
        case nameKey("HSPACE"):
            element.intHSpace = toInt16(value);
            return;
        case nameKey("ID"):
        case nameKey("NAME"):
            element.strName = value;
            return;
        case nameKey("LINK"):
            page_.mlngLinkColor = mlngParseColor(value);
            return;
        case nameKey("NOSHADE"):
            element.noShade = true;
            return;
        case nameKey("NOWRAP"):
            element.noWrap = true;
            return;
        case nameKey("SIZE"):
            return setSize(element, value);
        case nameKey("SRC"):
            element.strSrc = decoded(value);
            return;
        case nameKey("TEXT"):
            page_.mlngTextColor = mlngParseColor(value);
            return;
        case nameKey("TITLE"):
            element.strTitle = value;
            return;
        case nameKey("VALIGN"):
            return alignVertically(element, value);
        case nameKey("VSPACE"):
            element.intVSpace = toInt16(value);
            return;
        case nameKey("WIDTH"):
            return setWidth(element, value);
        default:
            return;
    }
}

void Attributes::setBackColour(HTMLElement& element, std::string_view value) {
    const Colour colour = mlngParseColor(value);
    if (element.lngTagType == TAG_BODY) {
        page_.mlngBodyBgColor = colour;
    } else {
        element.lngBgColor = colour;
        element.blnHasBgColor = true;
    }
}

/// Of a rule it is the height in pixels. Of text, it is a number of steps: from the default size if it has a
/// sign, otherwise from 3 (the default).
void Attributes::setSize(HTMLElement& element, std::string_view value) const {
    constexpr double kPointsAStep = 1.2;
    constexpr double kDefaultStep = 3;
    if (!isNumeric(value)) return;
    const double number = toSingle(value);
    const bool relative = value.starts_with('+') || value.starts_with('-');
    const double steps = relative ? number : number - kDefaultStep;
    const double points = steps * kPointsAStep + defaults_.DefaultFontSize;
    if (std::abs(points) > std::numeric_limits<float>::max()) raise(RuntimeErrorNumber::Overflow);
    element.sglFontSize = static_cast<float>(points);
    element.hasSize = true;
    constexpr double kHighest = std::numeric_limits<std::int16_t>::max();
    if (element.lngTagType == TAG_HR) {
        element.ruleHeight = static_cast<std::int16_t>(std::clamp(number, 0.0, kHighest));
    }
}

std::string_view Attributes::decoded(std::string_view value) const {
    return mstrDecodeText(value, texts_);
}

}  // namespace kavrelon
