#include "htmllabel/document/Hierarchy.h"

#include "htmllabel/document/TagTable.h"

namespace kavrelon {
namespace {

/// Levels nest as deep as a document makes them, so the way back up is read from the parents' indices: a
/// recursion could overflow the stack.
class Linker {
  public:
    Linker(std::vector<HTMLElement>& elements, std::vector<std::int16_t>& children)
        : elements_(elements), children_(children) {}

    void run() {
        if (elements_.empty()) return;
        children_.resize(elements_.size());
        const std::size_t linked = linkParents();
        for (std::size_t i = 1; i < linked; ++i) {
            const HTMLElement& element = elements_[i];
            const auto first = at(element.intParent).intChildren.data() - children_.data();
            children_[static_cast<std::size_t>(first + element.intSiblingIndex)] = element.intIndex;
        }
    }

  private:
    HTMLElement& at(std::int16_t index) { return elements_[static_cast<std::size_t>(index)]; }

    /// Sets parents, places and counts, and gives each level room for its children. Returns the number of
    /// elements that are in the tree.
    std::size_t linkParents() {
        std::int16_t level = 0;
        for (std::size_t i = 1; i < elements_.size(); ++i) {
            HTMLElement& element = elements_[i];
            HTMLElement& parent = at(level);
            const TagTraits& tag = traitsOf(element.lngTagType);
            element.intParent = level;
            element.intSiblingIndex = parent.intChildCount;
            if (tag.endsLevel) {
                endLevel(parent, parent.intChildCount + 1);
                if (level == 0) return i + 1;
                level = parent.intParent;
                continue;
            }
            ++parent.intChildCount;
            if (tag.opensLevel) level = element.intIndex;
        }
        for (; level != 0; level = at(level).intParent) endLevel(at(level), at(level).intChildCount);
        endLevel(at(0), at(0).intChildCount);
        return elements_.size();
    }

    void endLevel(HTMLElement& parent, int size) {
        parent.intChildren = {children_.data() + used_, static_cast<std::size_t>(size)};
        used_ += static_cast<std::size_t>(size);
    }

    std::vector<HTMLElement>& elements_;
    std::vector<std::int16_t>& children_;
    std::size_t used_ = 0;
};

}  // namespace

void mBuildHierarchy(std::vector<HTMLElement>& elements, std::vector<std::int16_t>& children) {
    Linker(elements, children).run();
}

}  // namespace kavrelon
