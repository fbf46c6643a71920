#include <gtest/gtest.h>

#include <iomanip>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "headless/RecordingCanvas.h"
#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/document/TagTable.h"
#include "htmllabel/layout/Layout.h"
#include "tests/unit/htmllabel/CaseFile.h"

namespace kavrelon {
namespace {

template <class... Parts>
std::string join(const Parts&... parts) {
    std::ostringstream out;
    (out << ... << parts);
    return out.str();
}

std::string corners(const Rect& block) {
    return join(block.left, ',', block.top, '-', block.right, ',', block.bottom);
}

std::string hex(Colour colour) {
    std::ostringstream out;
    out << '#' << std::hex << std::setw(6) << std::setfill('0') << colour;
    return out.str();
}

/// Adds a text to others, with a space between them.
void add(std::string& all, const std::string& text) {
    all += (all.empty() ? "" : " ") + text;
}

/// A picture of 40 x 20 pixels named "p", and no other.
class OnePicture : public PictureSource, Picture {
  public:
    const Picture* picture(std::string_view source) override { return source == "p" ? this : nullptr; }
    Size size() const override { return {40, 20}; }
};

class HtmlLayoutTest : public testing::Test {
  protected:
    void show(std::string_view html, int width) {
        static const std::regex bare("<TABLE0");
        document.setDocument(
            std::regex_replace(std::string(html), bare, "<TABLE CELLPADDING=0 CELLSPACING=0"),
            {.EnableAnchors = true});
        layout.measure(document, defaults, pictures, canvas);
        layout.place(document, width);
    }
    /// What is looked at of a document, under the name that layout.txt has for it.
    std::string seen(const std::string& what, std::string_view html, int width = 208) {
        show(html, width);
        if (what == "size") return join(layout.size().width, 'x', layout.size().height);
        if (what == "runs") return runs();
        if (what == "boxes") return boxes();
        return drawn(what, {0, 0, layout.size().width, layout.size().height});
    }
    std::string runs() const {
        std::string all;
        for (const TextRun& run : layout.runs()) {
            all += join(all.empty() ? "" : "|", run.place.left, ',', run.place.top, ' ', run.text);
        }
        return all;
    }
    std::string boxes() const {
        std::string all;
        for (const HTMLElement& e : document.mudtElements()) {
            if (!e.strName.empty() || !e.strHref.empty())
                add(all, corners({e.lngLeft, e.lngTop, e.lngRight, e.lngBottom}));
        }
        return all;
    }
    std::string drawn(const std::string& what, const Rect& part) {
        canvas.clear();
        layout.draw(canvas, part);
        std::string texts, fills, bullets, edges;
        for (const auto& [font, colour, place, text] : canvas.texts) {
            add(texts, join(text, ':', font.points, font.bold ? "b" : "", font.italic ? "i" : "",
                            font.underline ? "u" : "", font.face == "Arial" ? "" : " " + font.face,
                            colour == 0 ? "" : hex(colour)));
        }
        for (const auto& [block, colour] : canvas.fills) {
            if (colour != kButtonFaceColour) add(fills, corners(block));
            add(edges, hex(colour));
        }
        for (const Rect& place : canvas.pictures) add(fills, '[' + corners(place) + ']');
        for (const auto& [shape, place] : canvas.bullets)
            add(bullets, join(static_cast<int>(shape), '@', place.right));
        if (what == "edges") return edges;
        return what == "texts" ? texts : what == "fills" ? fills : what == "bullets" ? bullets : "unknown";
    }

    RecordingCanvas canvas;
    OnePicture pictures;
    LayoutDefaults defaults;
    HTMLDocument document;
    Layout layout;
};

TEST_F(HtmlLayoutTest, DocumentsComeToWhatTheirFileSays) {
    const std::vector<FileCase> cases = casesOf("layout.txt");
    EXPECT_GT(cases.size(), 80U);
    for (const auto& [what, html, expected] : cases) {
        std::istringstream words(what);
        std::string name;
        int width = 0;
        words >> name >> width;
        EXPECT_EQ(seen(name, html, width), expected) << what << ": " << html;
    }
    defaults.UnderlineLinks = false;
    EXPECT_EQ(seen("texts", "<A HREF=x>a</A>"), "a:10#ff0000");
}

TEST_F(HtmlLayoutTest, EveryTagEndsWithItsCloser) {
    for (const TagRow& row : kTagRows) {
        if (!row.isPaired()) continue;
        const std::string name(row.names.substr(0, row.names.find(' ')));
        const std::string html = join("x<", name, " HREF=y SIZE=7 COLOR=red ALIGN=RIGHT>a</", name, "><P>b");
        const std::string after = seen("runs", html);
        EXPECT_EQ(after.substr(after.rfind('|') + 1, 2), "4,") << html;
        const std::string texts = seen("texts", html);
        EXPECT_TRUE(texts.ends_with(" b:10")) << html << ": " << texts;
        EXPECT_EQ(texts.find("a:") == texts.npos, row.content != TagContent::Shown) << html << ": " << texts;
    }
}

TEST_F(HtmlLayoutTest, WhateverTheFractionsColumnsFillTheTableToThePixel) {
    const std::string_view thirds =
        "<TABLE WIDTH=\"100%\" BORDER=1><TD WIDTH=\"33%\">a<TD WIDTH=\"33%\">b<TD WIDTH=\"34%\">c</TABLE>";
    for (int width = 100; width < 140; ++width) {
        const std::string fills = seen("fills", thirds, width);
        const std::string end = join(width - 8, ",7-", width - 7, ',');
        EXPECT_NE(fills.find(end), std::string::npos) << width << ": " << fills;
        EXPECT_EQ(layout.size().width, width);
    }
}

TEST_F(HtmlLayoutTest, WidthsChangeWithoutMeasuringAndPartsAreDrawnAlone) {
    std::string html;
    for (int i = 0; i < 200; ++i) html += join("line", i, "<BR>");
    const std::string before = seen("runs", html, 300);
    canvas.fonts.clear();
    layout.place(document, 40);
    layout.place(document, 300);
    EXPECT_TRUE(canvas.fonts.empty());
    EXPECT_EQ(layout.runs().back().place.top, 4 + 199 * 15);
    EXPECT_EQ(seen("runs", html, 300), before) << "the same at the same width";
    EXPECT_EQ(drawn("texts", {0, 1504, 300, 1519}), "line100:10");
}

}  // namespace
}  // namespace kavrelon
