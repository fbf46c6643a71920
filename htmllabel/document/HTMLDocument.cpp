#include "htmllabel/document/HTMLDocument.h"

#include <algorithm>
#include <utility>

#include "htmllabel/document/Classifier.h"
#include "htmllabel/document/ClosingTags.h"
#include "htmllabel/document/Hierarchy.h"
#include "htmllabel/document/Normalise.h"
#include "htmllabel/document/Tokenizer.h"
#include "support/RuntimeError.h"

namespace kavrelon {

void HTMLDocument::setDocument(std::string_view html, const DocumentDefaults& defaults) {
    auto fresh = std::make_unique<Parsed>();
    fresh->mstrDocument = normalise(html);
    fresh->page = {.mlngBodyBgColor = defaults.BackColor, .mstrBackground = mstrBackground()};
    std::vector<Piece> pieces = mTokenizeDocument(fresh->mstrDocument);
    // This needs the tags' codes only, and is cheaper before there are records to be moved.
    addClosingTags(pieces, fresh->mstrDocument);
    fresh->addElements(pieces);
    fresh->mClassifyAllElements(defaults);
    if (defaults.EnableAnchors) fresh->mBuildLinkList();
    mBuildHierarchy(fresh->mudtElements, fresh->children);
    parsed_ = std::move(fresh);
}

void HTMLDocument::Parsed::addElements(const std::vector<Piece>& pieces) {
    const std::string_view text = mstrDocument;
    mudtElements.reserve(pieces.size());
    for (const Piece& piece : pieces) {
        const auto index = static_cast<std::int16_t>(mudtElements.size());
        HTMLElement& element = mudtElements.emplace_back();
        element.strRaw =
            piece.length == 0 ? addedCloser(piece.tag()) : text.substr(piece.begin, piece.length);
        element.blnIsTag = piece.tag() != TAG_TEXT;
        element.lngTagType = piece.tag();
        element.blnNoSpaceBefore = piece.noSpaceBefore;
        element.intIndex = index;
    }
}

void HTMLDocument::Parsed::mClassifyAllElements(const DocumentDefaults& defaults) {
    Classifier classifier(defaults, page, texts);
    for (HTMLElement& element : mudtElements) {
        try {
            classifier.mClassifyElement(element);
        } catch (const RuntimeError&) {  // NOLINT(bugprone-empty-catch)
            // It ends the handling of that element only.
        }
    }
}

void HTMLDocument::Parsed::mBuildLinkList() {
    for (const HTMLElement& element : mudtElements) {
        if (element.lngTagType == TAG_A) mintLinks.push_back(element.intIndex);
    }
}

std::optional<std::string> HTMLDocument::title() const {
    const auto& elements = parsed_->mudtElements;
    const auto found = std::ranges::find(elements, TAG_TITLE, &HTMLElement::lngTagType);
    if (elements.end() - found < 2) return std::nullopt;
    const auto words = std::next(found)->strWords;
    if (words.empty()) return std::string();
    return std::string(words.front().data(), words.back().data() + words.back().size());
}

void HTMLDocument::setHitBox(std::int16_t index, const Rect& box) {
    HTMLElement& element = parsed_->mudtElements[static_cast<std::size_t>(index)];
    element.lngTop = box.top;
    element.lngLeft = box.left;
    element.lngBottom = box.bottom;
    element.lngRight = box.right;
}

bool HTMLDocument::mblnGetParent(const HTMLElement& element, HTMLElement& parent) const {
    if (element.intParent < 1) return false;
    parent = parsed_->mudtElements[static_cast<std::size_t>(element.intParent)];
    return true;
}

bool HTMLDocument::mblnFindAncestor(const HTMLElement& element, TagType code, HTMLElement& ancestor) const {
    HTMLElement above = element;
    do {
        if (!mblnGetParent(above, above)) return false;
    } while (above.lngTagType != code);
    ancestor = above;
    return true;
}

bool HTMLDocument::mblnGetFirstChild(const HTMLElement& element, HTMLElement& child) const {
    if (element.intChildCount < 1) return false;
    child = parsed_->mudtElements[static_cast<std::size_t>(element.intChildren.front())];
    return true;
}

bool HTMLDocument::mblnGetNextSibling(const HTMLElement& element, HTMLElement& sibling) const {
    HTMLElement parent;
    if (!mblnGetParent(element, parent)) return false;
    const int next = element.intSiblingIndex + 1;
    if (next >= parent.intChildCount) return false;
    sibling =
        parsed_->mudtElements[static_cast<std::size_t>(parent.intChildren[static_cast<std::size_t>(next)])];
    return true;
}

}  // namespace kavrelon
