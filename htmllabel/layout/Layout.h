#pragma once

#include <memory>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Canvas.h"
#include "htmllabel/layout/LayoutDefaults.h"
#include "htmllabel/layout/PictureSource.h"
#include "htmllabel/layout/TextRun.h"

namespace kavrelon {

/// A document laid out on a page of some width.
///
/// `measure` reads the document once, `place` then lays it out as often as the width changes, in time
/// proportional to the document's length. The same document at the same width always has the same layout.
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
    /// Lays the measured document out on a page `width` pixels wide, of which `height` can be seen at once,
    /// and records the hit box of each A and of each element with a name in the document; without text or
    /// pictures of its own, that box is empty. What is wider than the page makes the page wider. Does nothing
    /// before the first `measure`.
    void place(HTMLDocument& document, int width, int height = 0);
    /// Lays it out likewise and records no hit boxes: for a page that nobody clicks on.
    void placeUnmarked(const HTMLDocument& document, int width, int height = 0);

    /// The laid-out page in pixels: at least as wide as was asked for, as high as its content.
    Size size() const;
    /// Draws what touches `part` of the page, background included.
    void draw(Canvas& canvas, const Rect& part) const;
    /// Every piece of text, in drawing order. The texts live until the next `measure`.
    std::vector<TextRun> runs() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace kavrelon
