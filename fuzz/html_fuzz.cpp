// Any text makes a document whose records agree with one another, and a page with every word on it, which is
// the same whenever it is laid out at the same width.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Input.h"
#include "headless/LayoutLaws.h"
#include "headless/NoPictures.h"
#include "headless/RecordingCanvas.h"
#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/document/TagTable.h"
#include "htmllabel/layout/Layout.h"
#include "support/Bytes.h"

namespace {

using namespace kavrelon;
using fuzz::require;

/// An input: three bytes that say what the label's properties and its width are, and the document.
struct HtmlInput {
    HtmlInput(const std::uint8_t* data, std::size_t size) : all(data, size) {
        document.EnableAnchors = byte(0) % 2 != 0;
        document.DefaultFontSize = static_cast<float>(byte(0) / 2 % 32);
        layout.DefaultFontSize = document.DefaultFontSize;
        layout.UnderlineLinks = byte(0) / 64 % 2 != 0;
        layout.DefaultPadding = static_cast<std::int16_t>(byte(1) % 16 - 2);
        layout.DefaultSpacing = static_cast<std::int16_t>(byte(1) / 16 - 2);
        width = byte(2) * 4 - 20;
    }

    std::uint8_t byte(std::size_t index) const { return index < all.size() ? all[index] : std::uint8_t{0}; }
    std::string_view html() const { return textOf(all.subspan(std::min<std::size_t>(all.size(), 3))); }

    fuzz::Bytes all;
    DocumentDefaults document;
    LayoutDefaults layout;
    int width;
};

std::size_t position(std::int16_t index, const HTMLDocument& document) {
    require(index >= 0 && index < document.mintElementCount(), "an index names an element");
    return static_cast<std::size_t>(index);
}

/// The tree numbers the elements from the root on, in document order, as far as it reaches.
void checkTree(const HTMLDocument& document) {
    const auto elements = document.mudtElements();
    std::vector<std::int16_t> ahead;
    if (!elements.empty()) ahead.push_back(0);
    std::int16_t reached = 0;
    for (; !ahead.empty(); ++reached) {
        const HTMLElement& element = elements[position(ahead.back(), document)];
        ahead.pop_back();
        require(element.intIndex == reached, "the tree keeps the document's order");
        const auto children = element.intChildren;
        const auto closers = children.size() - static_cast<std::size_t>(element.intChildCount);
        require(closers <= 1, "at most one closer comes after the children");
        for (std::size_t place = children.size(); place > 0; --place) {
            const HTMLElement& child = elements[position(children[place - 1], document)];
            require(child.intParent == element.intIndex &&
                        child.intSiblingIndex == static_cast<std::int16_t>(place - 1),
                    "a child knows its parent and its place");
            ahead.push_back(child.intIndex);
        }
    }
    for (const HTMLElement& rest : elements.subspan(static_cast<std::size_t>(reached))) {
        require(rest.intParent == 0 && rest.intSiblingIndex == 0,
                "what the tree does not reach is not linked");
    }
}

void checkElements(const HTMLDocument& document, bool anchors) {
    std::vector<std::int16_t> links;
    for (const HTMLElement& element : document.mudtElements()) {
        if (element.lngTagType == TAG_A && anchors) links.push_back(element.intIndex);
        require(&element - document.mudtElements().data() == element.intIndex, "an element knows its index");
        require(element.blnIsTag || element.lngTagType == TAG_TEXT, "only tags have codes");
        require(element.strWords.empty() || !element.blnIsTag, "only text has words");
    }
    require(std::ranges::equal(links, document.mintLinks()), "the links are the A elements");
}

bool theSame(const TextRun& one, const TextRun& other) {
    return one.place == other.place && one.text == other.text;
}

bool fits(const RecordingCanvas::Text& drawn, const TextRun& run) {
    return drawn.text == run.text && drawn.place.left == run.place.left && drawn.place.top == run.place.top &&
           drawn.place.right <= run.place.right && drawn.place.bottom <= run.place.bottom;
}

void checkDrawing(const Layout& layout, RecordingCanvas& canvas, const std::vector<TextRun>& runs) {
    layout.draw(canvas, {0, 0, layout.size().width, layout.size().height});
    require(std::ranges::equal(canvas.texts, runs, fits), "what is drawn is what the runs say");
    layout.draw(canvas, {10, 10, 20, 20});
    layout.draw(canvas, {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const HtmlInput input(data, size);
    HTMLDocument document;
    document.setDocument(input.html(), input.document);
    checkElements(document, input.document.EnableAnchors);
    checkTree(document);

    NoPictures pictures;
    RecordingCanvas canvas;
    Layout layout;
    layout.measure(document, input.layout, pictures, canvas);
    layout.place(document, input.width);
    const std::vector<TextRun> runs = layout.runs();
    require(wordsLaw(document, layout, input.width).empty(), "every word is on the page");
    checkDrawing(layout, canvas, runs);

    layout.place(document, input.width + 100);
    require(wordsLaw(document, layout, input.width + 100).empty(), "every word is on a wider page");
    layout.place(document, input.width);
    require(std::ranges::equal(layout.runs(), runs, theSame), "the same width gives the same places");
    return 0;
}
