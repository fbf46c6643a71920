#pragma once

#include <cstdint>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"
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
    void tag(const HTMLElement& element);
    void inlineTag(const HTMLElement& element);
    void blockTag(const HTMLElement& element);
    void tableTag(const HTMLElement& element);
    void anchor(const HTMLElement& element);
    void picture(const HTMLElement& element);
    void openBlock(const HTMLElement& element, int gap, int indent = 0);
    void closeBlock(TagType code, int gap);
    void openList(const HTMLElement& element);
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
    unsigned hidden_ = 0;
};

}  // namespace kavrelon
