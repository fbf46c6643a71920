#pragma once

#include <string_view>

#include "headless/HeadlessCanvas.h"
#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Layout.h"

namespace kavrelon {

/// What documents are laid out in, in pixels.
inline constexpr int kPageWidth = 600;

/// Our engine, all that a label has for a document.
struct LabelEngine {
    class NoPictures final : public PictureSource {
      public:
        const Picture* picture(std::string_view) override { return nullptr; }
    };

    void parse(std::string_view html) { document.setDocument(html, {}); }
    void layOut(int width) {
        layout.measure(document, {}, pictures, canvas);
        layout.place(document, width);
    }
    void draw() { layout.draw(canvas, {0, 0, layout.size().width, layout.size().height}); }

    NoPictures pictures;
    HeadlessCanvas canvas;
    HTMLDocument document;
    Layout layout;
};

}  // namespace kavrelon
