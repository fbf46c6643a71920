#include "htmllabel/HTMLDocument.h"

namespace kavrelon {

void HTMLDocument::setHitBox(std::int16_t index, const Rect& box) {
    HTMLElement& element = mudtElements[static_cast<std::size_t>(index)];
    element.lngTop = box.top;
    element.lngLeft = box.left;
    element.lngBottom = box.bottom;
    element.lngRight = box.right;
}

bool HTMLDocument::mblnGetParent(const HTMLElement& element, HTMLElement& parent) const {
    if (element.intParent < 1) return false;
    parent = mudtElements[static_cast<std::size_t>(element.intParent)];
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
    child = mudtElements[static_cast<std::size_t>(element.intChildren.front())];
    return true;
}

bool HTMLDocument::mblnGetNextSibling(const HTMLElement& element, HTMLElement& sibling) const {
    HTMLElement parent;
    if (!mblnGetParent(element, parent)) return false;
    const int next = element.intSiblingIndex + 1;
    if (next >= parent.intChildCount) return false;
    sibling = mudtElements[static_cast<std::size_t>(parent.intChildren[static_cast<std::size_t>(next)])];
    return true;
}

}  // namespace kavrelon
