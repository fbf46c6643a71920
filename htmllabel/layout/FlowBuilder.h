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

/// Makes a document's flow: walks its elements once, in order, with the open tags on stacks of their own.
class FlowBuilder {
  public:
    /// The flow must be new.
    FlowBuilder(const HTMLDocument& document, const LayoutDefaults& defaults, PictureSource& pictures,
                Canvas& canvas, Flow& flow);

    void build();

  private:
    struct List {
        bool isNumbered = false;
        int depth = 0;
        int next = 1;
    };

    /// Whether this tag, or what it stands in, is not to be drawn.
    bool hide(const HTMLElement& element);
    bool isHidden() const { return hiddenHtml_.any() || hiddenForeign_.any(); }
    void tag(const HTMLElement& element);
    /// Content is coming: in a table it has to stand in a cell.
    void needCell() {
        if (tables_.awaitsCell()) tables_.openImpliedCell();
    }
    void anchor(const HTMLElement& element);
    void picture(const HTMLElement& element);
    void rule(const HTMLElement& element);
    void openBlock(const HTMLElement& element, int gap, int indent = 0);
    void closeBlock(TagType code, int gap);
    /// Takes the code of UL or OL.
    void openList(TagType code);
    void closeList(TagType code);
    void listItem(const HTMLElement& element);
    int listGap() { return writer_.blocks().top().list == kNone ? lineHeight_ : 0; }
    bool standsAfterSpace(std::string_view raw) const;

    const HTMLDocument& document_;
    PictureSource& pictures_;
    Canvas& canvas_;
    Flow& flow_;
    InlineStyles styles_;
    FlowWriter writer_;
    int spacing_;
    int lineHeight_;  // of the default font
    TableWriter tables_;
    std::vector<List> lists_;
    int lastHeadEnd_;
    // The open tags that hide what stands in them, and those of them whose content is no HTML.
    std::bitset<kTagCodes> hiddenHtml_;
    std::bitset<kTagCodes> hiddenForeign_;
};

}  // namespace kavrelon
