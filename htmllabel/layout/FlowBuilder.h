#pragma once

#include <bitset>
#include <cstdint>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/document/TagTable.h"
#include "htmllabel/layout/Flow.h"
#include "htmllabel/layout/FlowWriter.h"
#include "htmllabel/layout/InlineStyles.h"
#include "htmllabel/layout/LayoutDefaults.h"
#include "htmllabel/layout/PictureSource.h"
#include "htmllabel/layout/TableWriter.h"

namespace kavrelon {

/// Writes a document's flow in one walk over its elements. The parts it drives keep the open tags on stacks.
class FlowBuilder {
  public:
    /// The flow must be new. Nothing is owned; all must outlive the builder.
    FlowBuilder(const HTMLDocument& document, const LayoutDefaults& defaults, PictureSource& pictures,
                Canvas& canvas, Flow& flow);

    void build();

  private:
    struct List {
        bool isNumbered = false;
        int depth = 0;
        int next = 1;
    };

    /// Whether this tag is not to be drawn: it hides something, or is hidden itself. Keeps track of what is.
    bool hide(const HTMLElement& element);
    bool isHidden() const { return hiddenHtml_.any() || hiddenForeign_.any(); }
    void tag(const HTMLElement& element);
    /// To be called before content: in a table it has to be in a cell.
    void needCell() {
        if (tables_.awaitsCell()) tables_.openImpliedCell();
    }
    void anchor(const HTMLElement& element);
    void picture(const HTMLElement& element);
    void rule(const HTMLElement& element);
    void openBlock(const HTMLElement& element, int gap, int indent = 0);
    void closeBlock(TagType code, int gap);
    /// Takes the code of UL or OL, or that of LI: an item outside of a list has one of its own.
    void openList(TagType code);
    void closeList(TagType code);
    void listItem(const HTMLElement& element);
    /// Ends a list of an item's own: before a block that is no item.
    void endLooseItem();
    int listGap() { return writer_.blocks().top().list == kNone ? lineHeight_ : 0; }
    bool standsAfterSpace(std::string_view raw) const;

    const HTMLDocument& document_;
    PictureSource& pictures_;
    Canvas& canvas_;
    Flow& flow_;
    InlineStyles styles_;
    FlowWriter writer_;
    int spacing_;
    int indent_;
    int lineHeight_;  // of the default font
    TableWriter tables_;
    std::vector<List> lists_;
    int lastHeadEnd_;
    // The open tags that hide their content, by code: those with HTML in them, and the others.
    std::bitset<kTagCodes> hiddenHtml_;
    std::bitset<kTagCodes> hiddenForeign_;
};

}  // namespace kavrelon
