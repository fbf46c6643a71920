#include "htmllabel/document/HTMLDocument.h"

#include <algorithm>

#include "htmllabel/document/Classifier.h"
#include "htmllabel/document/ClosingTags.h"
#include "htmllabel/document/Hierarchy.h"
#include "htmllabel/document/Normalise.h"
#include "htmllabel/document/Tokenizer.h"
#include "support/RuntimeError.h"

namespace kavrelon {

void HTMLDocument::setDocument(std::string_view html, const DocumentDefaults& defaults) {
    mstrDocument_ = normalise(html);
    page_ = {.mlngBodyBgColor = defaults.BackColor, .mstrBackground = std::move(page_.mstrBackground)};
    std::vector<Piece> pieces = mTokenizeDocument(mstrDocument_);
    // This needs the tags' codes only, and is cheaper before there are records to be moved.
    addClosingTags(pieces, mstrDocument_);
    addElements(pieces);
    mClassifyAllElements(defaults);
    mBuildLinkList(defaults.EnableAnchors);
    mBuildHierarchy(mudtElements_, children_);
}

void HTMLDocument::addElements(const std::vector<Piece>& pieces) {
    const std::string_view text = mstrDocument_;
    mudtElements_.clear();
    mudtElements_.reserve(pieces.size());
    for (const Piece& piece : pieces) {
        const auto index = static_cast<std::int16_t>(mudtElements_.size());
        HTMLElement& element = mudtElements_.emplace_back();
        element.strRaw =
            piece.length == 0 ? addedCloser(piece.tag()) : text.substr(piece.begin, piece.length);
        element.blnIsTag = piece.tag() != TAG_TEXT;
        element.lngTagType = piece.tag();
        element.blnNoSpaceBefore = piece.noSpaceBefore;
        element.intIndex = index;
    }
}

void HTMLDocument::mClassifyAllElements(const DocumentDefaults& defaults) {
    texts_.release();
    Classifier classifier(defaults, page_, texts_);
    // An error in one element ends the handling of that element only.
    for (HTMLElement& element : mudtElements_) carryOn([&] { classifier.mClassifyElement(element); });
}

void HTMLDocument::mBuildLinkList(bool enableAnchors) {
    mintLinks_.clear();
    if (!enableAnchors) return;
    for (const HTMLElement& element : mudtElements_) {
        if (element.lngTagType == TAG_A) mintLinks_.push_back(element.intIndex);
    }
}

std::optional<std::string> HTMLDocument::title() const {
    const auto found = std::ranges::find(mudtElements_, TAG_TITLE, &HTMLElement::lngTagType);
    if (mudtElements_.end() - found < 2) return std::nullopt;
    const auto words = std::next(found)->strWords;
    if (words.empty()) return std::string();
    return std::string(words.front().data(), words.back().data() + words.back().size());
}

void HTMLDocument::setHitBox(std::int16_t index, const Rect& box) {
    HTMLElement& element = mudtElements_[static_cast<std::size_t>(index)];
    element.lngTop = box.top;
    element.lngLeft = box.left;
    element.lngBottom = box.bottom;
    element.lngRight = box.right;
}

bool HTMLDocument::mblnGetParent(const HTMLElement& element, HTMLElement& parent) const {
    if (element.intParent < 1) return false;
    parent = mudtElements_[static_cast<std::size_t>(element.intParent)];
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
    child = mudtElements_[static_cast<std::size_t>(element.intChildren.front())];
    return true;
}

bool HTMLDocument::mblnGetNextSibling(const HTMLElement& element, HTMLElement& sibling) const {
    HTMLElement parent;
    if (!mblnGetParent(element, parent)) return false;
    const int next = element.intSiblingIndex + 1;
    if (next >= parent.intChildCount) return false;
    sibling = mudtElements_[static_cast<std::size_t>(parent.intChildren[static_cast<std::size_t>(next)])];
    return true;
}

}  // namespace kavrelon
