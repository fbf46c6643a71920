#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "htmllabel/document/TagType.h"
#include "support/Geometry.h"

namespace kavrelon {

/// One element of a document: a tag, a comment or a text run.
///
/// Records are values and cheap to copy; a change to a copy does not reach the document. Their texts and
/// lists belong to the document and live until it is given another text. Texts are single bytes in the ANSI
/// code page.
struct HTMLElement {
    /// The element's source: a tag with its brackets, a comment, or a text run, untrimmed.
    std::string_view strRaw;
    bool blnIsTag = false;
    TagType lngTagType = TAG_TEXT;
    /// ID or NAME, the anchor's name.
    std::string_view strName;
    /// Of text: the tag before it was written directly after a character that is not a space.
    bool blnNoSpaceBefore = false;
    /// A BGCOLOR was given, other than BODY's.
    bool blnHasBgColor = false;
    /// Of text: the decoded text, divided at every single space. An empty word is a gap. The words are
    /// parts of one text, one space apart.
    std::span<const std::string_view> strWords;
    /// FACE, the first of the list.
    std::string_view strFontFace;
    /// Points; of FONT, headings, BIG and SMALL, and of every tag with a SIZE.
    float sglFontSize = 0;
    Colour lngColor = 0;
    std::string_view strHref;
    /// TITLE, the tooltip.
    std::string_view strTitle;
    /// The hit box in pixels of the drawn document, as the layout records it; all -1 on an A that has not
    /// been laid out.
    std::int32_t lngTop = 0;
    std::int32_t lngLeft = 0;
    std::int32_t lngBottom = 0;
    std::int32_t lngRight = 0;
    bool blnAlignCenter = false;
    bool blnAlignRight = false;
    std::string_view strSrc;
    std::string_view strAlt;
    /// Pixels; 0 when not given.
    std::int32_t lngImgWidth = 0;
    std::int32_t lngImgHeight = 0;
    std::int16_t intHSpace = 0;
    std::int16_t intVSpace = 0;
    /// WIDTH and HEIGHT of tags other than IMG: pixels, or a fraction of what is available (1.0 is 100%).
    float sglWidth = 0;
    float sglHeight = 0;
    std::int16_t intBorder = 0;
    std::int16_t intCellPadding = 0;
    std::int16_t intCellSpacing = 0;
    std::int16_t intColSpan = 0;
    /// A cell's vertical alignment: 3 (top), 4 (centre), 5 (bottom).
    std::int32_t lngVAlign = 0;
    Colour lngBgColor = 0;
    /// The number of children; the closing tag that ended the element is not counted.
    std::int16_t intChildCount = 0;
    /// The children's indices in document order, then that closing tag's when there is one.
    std::span<const std::int16_t> intChildren;
    /// The parent's index; 0 for the root and its children.
    std::int16_t intParent = 0;
    /// This element's place in its parent's `intChildren`.
    std::int16_t intSiblingIndex = 0;
    /// This element's own index in the document.
    std::int16_t intIndex = 0;

    // What the layout needs besides, so that it reads no source again: attributes that none of the fields
    // above can tell from their absence. Each is set when its attribute has been read without an error.

    bool hasAlign : 1 = false;
    bool alignsLeft : 1 = false;  // ALIGN=LEFT
    bool hasColor : 1 = false;
    bool hasSize : 1 = false;
    bool hasVAlign : 1 = false;
    bool hasWidth : 1 = false;
    bool heightIsPercentage : 1 = false;
    bool noShade : 1 = false;
    bool noWrap : 1 = false;
    /// CLEAR of a BR.
    bool clearsLeft : 1 = false;
    bool clearsRight : 1 = false;
    /// A TH, which shares the code of TD.
    bool isHeaderCell : 1 = false;
    /// SIZE of an HR, in pixels; 0 when not given.
    std::int16_t ruleHeight = 0;
};

}  // namespace kavrelon
