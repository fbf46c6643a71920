#include <gtest/gtest.h>

#include <iomanip>
#include <regex>
#include <sstream>
#include <string>

#include "headless/RecordingCanvas.h"
#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/document/TagTable.h"
#include "htmllabel/layout/Layout.h"

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

/// A picture of 40 x 20 pixels named "p", and no other.
class OnePicture : public PictureSource, Picture {
  public:
    const Picture* picture(std::string_view source) override { return source == "p" ? this : nullptr; }
    Size size() const override { return {40, 20}; }
};

class HtmlLayoutTest : public testing::Test {
  protected:
    /// In the documents, TABLE0 is a table without padding and spacing.
    void show(std::string_view html, int width = 208) {
        static const std::regex bare("<TABLE0");
        document.setDocument(
            std::regex_replace(std::string(html), bare, "<TABLE CELLPADDING=0 CELLSPACING=0"),
            {.EnableAnchors = true});
        layout.measure(document, defaults, pictures, canvas);
        layout.place(document, width);
    }
    /// Every run as "x,y text", with "|" between them.
    std::string runs(std::string_view html, int width = 208) {
        show(html, width);
        std::string all;
        for (const TextRun& run : layout.runs()) {
            all += join(all.empty() ? "" : "|", run.place.left, ',', run.place.top, ' ', run.text);
        }
        return all;
    }
    /// What is drawn, each kind in its order. A font of 10 points has characters of 6 x 15 pixels.
    struct Drawing {
        std::string texts, fills, bullets;
    };
    Drawing drawn(std::string_view html, int width = 208) {
        show(html, width);
        return drawn({0, 0, layout.size().width, layout.size().height});
    }
    Drawing drawn(const Rect& part) {
        canvas.clear();
        layout.draw(canvas, part);
        Drawing all;
        for (const auto& [font, colour, place, text] : canvas.texts) {
            all.texts += join(text, ':', font.points, font.bold ? "b" : "", font.italic ? "i" : "",
                              font.underline ? "u" : "", font.face == "Arial" ? "" : " " + font.face,
                              colour == 0 ? "" : hex(colour), ' ');
        }
        for (const auto& [block, colour] : canvas.fills) {
            if (colour != kButtonFaceColour) all.fills += corners(block) + ' ';
        }
        for (const auto& [shape, place] : canvas.bullets) {
            all.bullets += join(static_cast<int>(shape), '@', place.right, ' ');
        }
        for (const Rect& place : canvas.pictures) all.fills += join('[', corners(place), "] ");
        return all;
    }
    /// The hit boxes of all elements with a name or link.
    std::string boxes(std::string_view html, int width = 208) {
        show(html, width);
        std::string all;
        for (const HTMLElement& e : document.mudtElements()) {
            if (e.strName.empty() && e.strHref.empty()) continue;
            all += corners({e.lngLeft, e.lngTop, e.lngRight, e.lngBottom}) + ' ';
        }
        return all;
    }

    RecordingCanvas canvas;
    OnePicture pictures;
    LayoutDefaults defaults;
    HTMLDocument document;
    Layout layout;
};

struct Case {
    std::string_view html;
    std::string_view expected;
    int width = 208;  // 200 between the margins: 33 characters
};

TEST_F(HtmlLayoutTest, SpacesAndLineEnds) {
    const Case cases[] = {
        {"a<B>b</B> c", "4,4 a|10,4 b|22,4 c"},
        {"a <B>b</B>c", "4,4 a|16,4 b|22,4 c"},
        {"<B>a</B> <I><U>b</U></I>", "4,4 a|16,4 b"},
        {"a<B> b </B> c", "4,4 a|16,4 b|28,4 c"},
        {"a          b", "4,4 a|16,4 b"},
        {"a&nbsp;&nbsp;b c", "4,4 a  b c"},
        {"a bb&nbsp;&nbsp;cc&nbsp;d", "4,4 a|4,19 bb|4,34 cc d", 38},
        {"a&nbsp;<B>bb</B>&nbsp;cc", "4,4 a |16,4 bb|4,19  cc", 38},
        {"<TABLE0><TD>aaa&nbsp;bbb<TD>c</TABLE>", "4,4 aaa|4,19 bbb|26,4 c", 36},
        {"<TABLE0><TR><TD COLSPAN=2>a&nbsp;b<TR><TD>c<TD>d</TABLE>", "4,4 a|4,19 b|4,34 c|10,34 d", 8},
        {"<IMG SRC=p ALIGN=RIGHT>aaaa&nbsp;bbbb", "4,28 aaaa bbbb", 96},
        {"a <BR> <B> b</B>", "4,4 a|4,19 b"},
        {"aaa bbb<B>ccc</B>", "4,4 aaa|4,19 bbb|22,19 ccc", 50},
        {"aaa<B>bbb</B>ccc d", "4,4 aaa|22,4 bbb|40,4 ccc|4,19 d", 30},
        {"aaaaaaaa b", "4,4 aaaaaaaa|4,19 b", 1},
        {"a<IMG SRC=p HSPACE=0>b", "4,14 a|4,29 b", 56},
    };
    for (const Case& c : cases) EXPECT_EQ(runs(c.html, c.width), c.expected) << c.html;
    show("aaaaaaaaaa", 20);
    EXPECT_EQ(layout.size(), (Size{68, 23})) << "a long word widens the page";
    show("");
    EXPECT_EQ(layout.size(), (Size{208, 8}));
}

TEST_F(HtmlLayoutTest, BlocksAndIndents) {
    const Case cases[] = {
        {"<P>a</P><P></P><DIV></DIV><P>b</P>", "4,4 a|4,34 b"},
        {"a<BR></P>b<BR><BR>c", "4,4 a|4,34 b|4,64 c"},
        {"<CENTER>ab</CENTER><P ALIGN=RIGHT>cd</P>e", "98,4 ab|192,34 cd|4,64 e"},
        {"<CENTER>a<P ALIGN=LEFT>b</P>c</CENTER>", "101,4 a|4,34 b|101,64 c"},
        {"<BLOCKQUOTE>aaaa bbbb<BLOCKQUOTE>c</BLOCKQUOTE></BLOCKQUOTE>d", "16,4 aaaa bbbb|29,34 c|4,64 d",
         108},
        {"<UL><LI>a<UL><LI>b<UL><LI>c<UL><LI>d<UL><LI>e<UL><LI>f</UL></UL></UL></UL></UL></UL>",
         "23,4 a|42,19 b|61,34 c|80,49 d|99,64 e|119,79 f", 238},
        {"<HEAD><TITLE>t</TITLE>u</HEAD><SCRIPT>s</SCRIPT><STYLE>v</STYLE><FORM>a</FORM>b", "4,4 a|4,19 b"},
        {"<HEAD><TITLE>1 < 2</TITLE><SCRIPT>if (a<b) write('<STYLE>');</SCRIPT>a", "4,4 a"},
        {"<UL><LI>aaaa bbbb<LI><P>c</P><OL><LI><LI>d</OL></UL>e",
         "19,4 aaaa|19,19 bbbb|19,49 c|15,79 1.|15,94 2.|35,94 d|4,124 e", 70},
        {"<OL><LI><BLOCKQUOTE>a</BLOCKQUOTE></OL>", "14,4 1.|64,4 a"},
        {"<OL><LI><TABLE CELLPADDING=0><TD></TABLE></OL>a", "14,4 1.|4,34 a"},
        {"<TABLE0><TD><OL><LI><P>a</OL><TD>b</TABLE>", "4,4 1.|24,4 a|30,4 b", 1},
    };
    for (const Case& c : cases) EXPECT_EQ(runs(c.html, c.width), c.expected) << c.html;
    EXPECT_EQ(drawn("<UL><LI>a<UL><LI>b<UL><LI>c</UL></UL><LI></UL>d").bullets, "0@26 1@56 2@86 0@26 ");
    EXPECT_EQ(
        drawn("<HR WIDTH=50 ALIGN=RIGHT><HR WIDTH=\"50%\" NOSHADE=1><HR SIZE=1><HR SIZE=40 NOSHADE=>").fills,
        "154,4-204,5 154,4-155,6 154,5-204,6 203,4-204,6 54,10-154,12 4,16-204,17 4,21-204,61 ");
    EXPECT_EQ(drawn("<HR>", 8).fills, "") << "no room between the margins";
}

TEST_F(HtmlLayoutTest, StylesNestAndAreRestored) {
    const Case cases[] = {
        {"<B>a<B>b</B>c</B>d</B>e", "a:10b b:10b c:10b d:10 e:10 "},
        {"<B>a<I>b</B>c</I>d", "a:10b b:10bi c:10i d:10 "},
        {"<FONT SIZE=5 COLOR=red>a<FONT FACE=Courier>b</FONT>c</FONT>d",
         "a:12.4#0000ff b:12.4 Courier#0000ff c:12.4#0000ff d:10 "},
        {"<FONT COLOR=red>a<FONT COLOR=black>b</FONT></FONT>", "a:10#0000ff b:10 "},
        {"<BIG>a<BIG>b</SMALL>c</BIG></BIG>d", "a:11 b:12 c:12 d:10 "},
        {"<H2>a<I>b</I></H2>c", "a:16b b:16bi c:10 "},
        {"<A HREF=x>a<FONT COLOR=red>b</FONT></A><A NAME=y>c</A>", "a:10u#ff0000 b:10u#0000ff c:10 "},
        {"<A NAME=x><BIG>a<A HREF=y>b<A NAME=z></A>c<A HREF=w>d</A>e",
         "a:11 b:11u#ff0000 c:11u#ff0000 d:11u#ff0000 e:11 "},
        {"<TABLE><TR><TH>a<TD><B>b<TD>c</B></TABLE>d", "a:10b b:10b c:10 d:10 "},
        {"<I><TABLE><B><TD>a</I>b</TD></TABLE>c</I>d", "a:10i b:10i c:10i d:10 "},
        {"<BIG><TABLE><TD><SMALL>a</BIG>b<TD>c</TABLE>d", "a:10 b:10 c:11 d:11 "},
        {"<FONT SIZE=9999>a<FONT SIZE=-9999>b", "a:200 b:1 "},
        {"<B <TITLE>a", "a:10b "},
    };
    for (const Case& c : cases) EXPECT_EQ(drawn(c.html).texts, c.expected) << c.html;
    defaults.UnderlineLinks = false;
    EXPECT_EQ(drawn("<A HREF=x>a</A>").texts, "a:10#ff0000 ");
    EXPECT_EQ(runs("a<SUP>b</SUP><SUB>c</SUB>d"), "4,5 a|10,4 b|15,10 c|20,5 d") << "one baseline, at 17";
    EXPECT_EQ(runs("<U>a <B>b</B></U> c"), "4,4 a |16,4 b|28,4 c") << "underlined up to the next word";
    EXPECT_EQ(runs("<U>a<B>b</B> c <I> d</I><B>e</B> <I>f</I> </U><I>g</I>"),
              "4,4 a|10,4 b|16,4  |22,4 c |34,4 d|40,4 e|46,4  |52,4 f|58,4  |64,4 g");
}

TEST_F(HtmlLayoutTest, EveryTagEndsWithItsCloser) {
    for (const TagRow& row : kTagRows) {
        if (!row.isPaired()) continue;
        const std::string name(row.names.substr(0, row.names.find(' ')));
        const std::string html = join("x<", name, " HREF=y SIZE=7 COLOR=red ALIGN=RIGHT>a</", name, "><P>b");
        const std::string after = runs(html);
        EXPECT_EQ(after.substr(after.rfind('|') + 1, 2), "4,") << html;
        const std::string texts = drawn(html).texts;
        EXPECT_TRUE(texts.ends_with(" b:10 ")) << html << ": " << texts;
        EXPECT_EQ(texts.find("a:") == texts.npos, row.content != TagContent::Shown) << html << ": " << texts;
    }
}

TEST_F(HtmlLayoutTest, ColumnsOfTables) {
    const Case cases[] = {
        {"<TABLE WIDTH=\"100%\"><TD WIDTH=\"80%\">a<TD WIDTH=\"80%\">b<TD WIDTH=\"-5\">c</TABLE>",
         "8,8 a|155,8 b|194,8 c"},
        {"<TABLE0><TR><TD COLSPAN=32767>aaaa<TD>b<TR><TD COLSPAN=-1>c<TD>d</TABLE>",
         "4,4 aaaa|28,4 b|4,19 c|16,19 d"},
        {"<TABLE BORDER=1 CELLSPACING=0 CELLPADDING=0><TR><TD COLSPAN=2><TABLE WIDTH=\"100%\" CELLSPACING=0 "
         "CELLPADDING=0><TD ALIGN=RIGHT>a</TABLE><TR><TD>bb<TD>cc</TABLE>",
         "26,6 a|6,23 bb|20,23 cc"},
        {"<TABLE0><TD>aaa bbb<TD>ccc ddd</TABLE>", "4,4 aaa|4,19 bbb|25,4 ccc|25,19 ddd", 50},
        {"<TABLE0>x<TR>y<TD>z<TR></TR></TABLE>w", "4,4 x|4,19 y|10,19 z|4,38 w"},
        {"<TABLE ALIGN=CENTER CELLPADDING=0 "
         "CELLSPACING=0><TD>ab</TABLE><CENTER><TABLE><TD>c</TABLE></CENTER>",
         "98,4 ab|101,27 c"},
        {"<TABLE0><TR><TD COLSPAN=2>aaaaaaaa<TD>x<TR><TD COLSPAN=3>bbbbbbbbbbbb<TR><TD>c<TD>d<TD>e</TABLE>",
         "4,4 aaaaaaaa|67,4 x|4,19 bbbbbbbbbbbb|4,34 c|35,34 d|67,34 e"},
        {"<TABLE0 WIDTH=\"100%\"><TR><TD COLSPAN=2 WIDTH=\"60%\">a<TD>b<TR><TD>c<TD>d<TD>e</TABLE>",
         "4,4 a|124,4 b|4,19 c|64,19 d|124,19 e"},
        {"<TABLE></TABLE>a", "4,4 a"},
        {"<TABLE0><TD HEIGHT=1.4></TABLE>a", "4,9 a"},
        {"<TABLE0><TD NOWRAP=NOWRAP>aa bb&nbsp;cc<TD>d e</TABLE>", "4,4 aa bb cc|52,4 d|52,19 e", 70},
        {"<TABLE0><TR><TD COLSPAN=2>aaaaaaaaaaaaaaaaaaaa<TD>x<TR><TD><TD>bb<TD>y</TABLE>",
         "4,4 aaaaaaaaaaaaaaaaaaaa|124,4 x|11,19 bb|124,19 y"},
        {"<TABLE0><TR><TD COLSPAN=2>aaaaaaaaaaaa<TR><TD>b c<TD>d e</TABLE>",
         "4,4 aaaaaaaaaaaa|4,19 b c|40,19 d e", 10},
        // Of a column that asks for both, the pixels count.
        {"<TABLE WIDTH=\"100%\"><TR><TD WIDTH=40>a<TD>b<TR><TD WIDTH=\"50%\">c<TD>d</TABLE>",
         "8,8 a|50,8 b|8,29 c|50,29 d"},
    };
    for (const Case& c : cases) EXPECT_EQ(runs(c.html, c.width), c.expected) << c.html;
    const std::string_view thirds =
        "<TABLE WIDTH=\"100%\" BORDER=1><TD WIDTH=\"33%\">a<TD WIDTH=\"33%\">b<TD WIDTH=\"34%\">c</TABLE>";
    // Whatever the fractions, the columns fill the table to the pixel.
    for (int width = 100; width < 140; ++width) {
        const std::string fills = drawn(thirds, width).fills;
        const std::string end = join(width - 8, ",7-", width - 7, ',');
        EXPECT_NE(fills.find(end), std::string::npos) << width << ": " << fills;
        EXPECT_EQ(layout.size().width, width);
    }
}

TEST_F(HtmlLayoutTest, HeightsAndGroundsOfCells) {
    EXPECT_EQ(runs("<TABLE0 HEIGHT=60><TR HEIGHT=40><TD>a<TD VALIGN=CENTER>b<TD VALIGN=BOTTOM>c<BR>d<TR "
                   "VALIGN=BOTTOM><TD>e<TD VALIGN=TOP>f</TABLE>g"),
              "4,4 a|10,18 b|16,17 c|16,32 d|4,49 e|10,47 f|4,68 g");
    EXPECT_EQ(drawn("<TABLE CELLPADDING=0 CELLSPACING=1 BGCOLOR=red><TR BGCOLOR=blue><TD>a<TD "
                    "BGCOLOR=lime>b<TR><TD>c")
                  .fills,
              "4,4-19,37 5,5-11,20 12,5-18,20 ");
    EXPECT_EQ(drawn("<TABLE BORDER=1><TD></TABLE>").fills, "4,4-16,5 4,4-5,16 4,15-16,16 15,4-16,16 ")
        << "an empty cell has no frame";
}

TEST_F(HtmlLayoutTest, LinksAndJumpTargets) {
    const Case cases[] = {
        {"a <A HREF=x>bbb ccc</A> d", "4,4-34,34 ", 42},
        {"a<P><A NAME=x></A><P>b<I ID=y>c</I>", "4,34-4,34 10,34-10,34 "},
        {"aaa <A HREF=x>bbb</A>", "4,19-22,34 ", 30},
        {"a<P ID=x>b<UL><LI>c<LI ID=y>d</UL>", "4,34-4,34 34,79-34,79 "},
        {"aaa <A NAME=x></A>b<B>cccc</B>", "4,19-4,19 ", 38},
        {"<A HREF=x><IMG SRC=p></A>", "6,6-46,26 "},
        {"<TABLE><TD HEIGHT=60 VALIGN=BOTTOM><A HREF=x>a<A HREF=y>b</A>c</A></TABLE>",
         "8,49-14,64 14,49-20,64 "},
        {"<TABLE><TD><A HREF=x>a<TD>b</TABLE>c", "8,8-14,23 "},
        {"<TABLE HEIGHT=40 ID=t><TR ID=r><TD>a</TABLE><A NAME=e>", "4,4-4,4 8,8-8,8 4,44-4,44 "},
    };
    for (const Case& c : cases) EXPECT_EQ(boxes(c.html, c.width), c.expected) << c.html;
}

TEST_F(HtmlLayoutTest, PicturesTheirFramesAndTheTextBesideThem) {
    const Case cases[] = {
        {"<IMG SRC=p>", "[6,6-46,26] "},
        {"<IMG SRC=p WIDTH=20 HSPACE=0 VSPACE=0>", "[4,4-24,14] "},
        {"<IMG SRC=p HEIGHT=99999999>", "[6,6-32773,32773] "},
        {"<IMG SRC=p ALIGN=RIGHT WIDTH=96 HEIGHT=9>", "[106,6-202,15] "},  // half the width with its spaces
        {"<IMG SRC=q WIDTH=30 HEIGHT=20 HSPACE=0 VSPACE=0>", "4,4-34,5 4,4-5,24 4,23-34,24 33,4-34,24 "},
        {"<BODY BACKGROUND=p>", "[0,0-40,20] [40,0-80,20] ", 60},
    };
    for (const Case& c : cases) EXPECT_EQ(drawn(c.html, c.width).fills, c.expected) << c.html;
    EXPECT_EQ(runs("<IMG SRC=q WIDTH=40 HEIGHT=30 ALT=abcdefgh>"), "9,9 abcde");
    EXPECT_EQ(runs("<IMG SRC=p ALIGN=RIGHT>aaa bbb ccc<P>ddd eee", 110), "4,4 aaa bbb|4,19 ccc|4,49 ddd eee");
    EXPECT_EQ(runs("a <IMG SRC=p ALIGN=RIGHT>bbbbbbbbbbbb c", 110), "4,4 a|4,28 bbbbbbbbbbbb c");
    EXPECT_EQ(
        runs("<BLOCKQUOTE><IMG SRC=p ALIGN=RIGHT WIDTH=40 HEIGHT=80>a</BLOCKQUOTE>bbbbbbbbbb ccccccccccc"),
        "34,4 a|4,34 bbbbbbbbbb|4,49 ccccccccccc");
}

TEST_F(HtmlLayoutTest, WidthsChangeWithoutMeasuringAndPartsAreDrawnAlone) {
    std::string html;
    for (int i = 0; i < 200; ++i) html += join("line", i, "<BR>");
    const std::string before = runs(html, 300);
    canvas.fonts.clear();
    layout.place(document, 40);
    layout.place(document, 300);
    EXPECT_TRUE(canvas.fonts.empty());
    EXPECT_EQ(layout.runs().back().place.top, 4 + 199 * 15);
    EXPECT_EQ(runs(html, 300), before) << "the same at the same width";
    EXPECT_EQ(drawn({0, 1504, 300, 1519}).texts, "line100:10 ");
}

}  // namespace
}  // namespace kavrelon
