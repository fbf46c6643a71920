#pragma once

#include <memory>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Canvas.h"
#include "htmllabel/layout/LayoutDefaults.h"
#include "htmllabel/layout/PictureSource.h"
#include "htmllabel/layout/TextRun.h"

namespace kavrelon {

/// Where everything of a document stands on a page of some width.
///
/// `measure` looks at the document once, `place` then lays it out as often as the width changes, in time that
/// grows with the document's length only. The same document at the same width always gives the same places.
/// The document and the canvas must outlive the layout, and the document must not change between the calls.
class Layout {
  public:
    Layout();
    ~Layout();
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;

    /// Measures the document's words, pictures and tables with this canvas's fonts.
    void measure(const HTMLDocument& document, const LayoutDefaults& defaults, PictureSource& pictures,
                 Canvas& canvas);
    /// Lays the measured document out on a page `width` pixels wide and records in the document where each A
    /// and each element with a name stands; without a piece of text or picture of its own, that is an empty
    /// box. What is wider than the page makes the page wider.
    void place(HTMLDocument& document, int width);

    /// The laid-out page: at least as wide as was asked for, as high as its content.
    Size size() const;
    /// Draws what touches `part` of the page, background included.
    void draw(Canvas& canvas, const Rect& part) const;
    /// Every piece of text, in drawing order; the texts live until the next `measure`.
    std::vector<TextRun> runs() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace kavrelon
