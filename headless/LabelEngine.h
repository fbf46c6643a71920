#pragma once

#include <string_view>

#include "headless/HeadlessCanvas.h"
#include "headless/NoPictures.h"
#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Layout.h"

namespace kavrelon {

/// The width, in pixels, of the page on which documents are measured.
inline constexpr int kPageWidth = 600;

/// All that a label has for a document, on a canvas that draws nothing.
struct LabelEngine {
    explicit LabelEngine(int pixelsPerInch = 96) : canvas(pixelsPerInch) {}

    void parse(std::string_view html, const DocumentDefaults& defaults = {}) {
        document.setDocument(html, defaults);
    }
    void layOut(Size page, const LayoutDefaults& defaults = {}) {
        layout.measure(document, defaults, pictures, canvas);
        layout.place(document, page.width, page.height);
    }
    void draw() { layout.draw(canvas, {0, 0, layout.size().width, layout.size().height}); }

    NoPictures pictures;
    HeadlessCanvas canvas;
    HTMLDocument document;
    Layout layout;
};

}  // namespace kavrelon
