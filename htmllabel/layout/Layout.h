#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Canvas.h"

namespace kavrelon {

/// What a layout takes from the control that shows the document.
struct LayoutDefaults {
    std::string DefaultFontName = "Arial";
    float DefaultFontSize = 10;  // points
    bool UnderlineLinks = true;
    /// The page's margin on all sides, in pixels.
    std::int16_t DefaultPadding = 4;
    /// The space above and below rules and tables, in pixels.
    std::int16_t DefaultSpacing = 4;
};

/// The pictures that a document names. Asked for each IMG and for the page's picture, while the document is
/// measured; the pictures must live as long as the layout.
class PictureSource {
  public:
    virtual ~PictureSource() = default;
    /// Null when there is none of this name.
    virtual const Picture* picture(std::string_view source) = 0;
};

/// A piece of text of one element on one line.
struct TextRun {
    std::int16_t element = 0;
    Rect place;
    std::string_view text;
};

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
