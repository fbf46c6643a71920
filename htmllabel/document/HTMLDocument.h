#pragma once

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "htmllabel/document/DocumentDefaults.h"
#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/document/PageValues.h"

namespace kavrelon {

struct Piece;

/// A parsed document: a flat array of element records in document order, linked into a tree by index, and the
/// colours and picture of its page.
///
/// A document is never refused. A step that meets an error ends there and keeps what it had; text beyond
/// 32767 characters is cut off. Positions and counts are 16-bit.
class HTMLDocument {
  public:
    HTMLDocument() = default;
    HTMLDocument(const HTMLDocument&) = delete;
    HTMLDocument& operator=(const HTMLDocument&) = delete;

    /// Replaces the document by this text: normalises it, cuts it into elements, classifies them, adds
    /// missing closing tags, lists the links and builds the tree. The page keeps its picture when the new
    /// text names none. Where memory runs out, this document stays as it was.
    void setDocument(std::string_view html, const DocumentDefaults& defaults);

    /// The normalised text.
    const std::string& mstrDocument() const { return parsed_->mstrDocument; }
    /// The title's text, decoded; nothing when there is no title.
    std::optional<std::string> title() const;
    std::span<const HTMLElement> mudtElements() const { return parsed_->mudtElements; }
    std::int16_t mintElementCount() const { return static_cast<std::int16_t>(parsed_->mudtElements.size()); }
    std::int16_t mintBodyIndex() const { return parsed_->page.mintBodyIndex; }
    Colour mlngBodyBgColor() const { return parsed_->page.mlngBodyBgColor; }
    /// Changes the page's background without parsing again.
    void mlngBodyBgColor(Colour colour) { parsed_->page.mlngBodyBgColor = colour; }
    Colour mlngTextColor() const { return parsed_->page.mlngTextColor; }
    Colour mlngLinkColor() const { return parsed_->page.mlngLinkColor; }
    const std::string& mstrBackground() const { return parsed_->page.mstrBackground; }
    /// The indices of the A elements in document order; none when anchors are off.
    std::span<const std::int16_t> mintLinks() const { return parsed_->mintLinks; }
    std::int16_t mintLinkCount() const { return static_cast<std::int16_t>(parsed_->mintLinks.size()); }

    /// Records where element `index` was drawn, in pixels of the page.
    void setHitBox(std::int16_t index, const Rect& box);

    // The tree. Each gives false, and leaves the result alone, when there is no such element.

    /// False for the root's children too.
    bool mblnGetParent(const HTMLElement& element, HTMLElement& parent) const;
    /// The nearest element above that has this code.
    bool mblnFindAncestor(const HTMLElement& element, TagType code, HTMLElement& ancestor) const;
    bool mblnGetFirstChild(const HTMLElement& element, HTMLElement& child) const;
    bool mblnGetNextSibling(const HTMLElement& element, HTMLElement& sibling) const;

  private:
    /// All of a document. It stays where it is: the records refer to its text.
    struct Parsed {
        void addElements(const std::vector<Piece>& pieces);
        void mClassifyAllElements(const DocumentDefaults& defaults);
        void mBuildLinkList();

        std::string mstrDocument;
        std::vector<HTMLElement> mudtElements;
        PageValues page;
        std::vector<std::int16_t> mintLinks;
        /// What the records refer to besides the document's text: decoded texts and lists of words.
        std::pmr::monotonic_buffer_resource texts;
        std::vector<std::int16_t> children;
    };

    std::unique_ptr<Parsed> parsed_ = std::make_unique<Parsed>();
};

}  // namespace kavrelon
