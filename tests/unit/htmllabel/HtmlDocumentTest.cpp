#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;

const std::string kHead = "<HTML><BODY>", kTail = "</BODY></HTML>";

/// A parsed document, with texts that describe it.
class Parsed {
  public:
    explicit Parsed(std::string_view html, const DocumentDefaults& defaults = {.EnableAnchors = true}) {
        document_.setDocument(html, defaults);
    }
    /// Puts `body` between tags of its own, so that normalising adds nothing.
    static Parsed inBody(const std::string& body) { return Parsed(kHead + body + kTail); }

    const HTMLDocument* operator->() const { return &document_; }
    const HTMLElement& operator[](std::size_t index) const { return document_.mudtElements()[index]; }

    /// The sources of the elements, each followed by a bar.
    std::string pieces() const {
        std::string text;
        for (const HTMLElement& element : document_.mudtElements()) text.append(element.strRaw).append("|");
        return text;
    }

  private:
    HTMLDocument document_;
};

/// The fields of a record that differ from a new one's, with those that its source and place give left out.
std::string fieldsOf(const HTMLElement& e) {
    std::ostringstream out;
    const auto field = [&](const char* name, const auto& value) {
        if (value != std::decay_t<decltype(value)>{}) out << name << '=' << value << ' ';
    };
    field("name", e.strName), field("face", e.strFontFace), field("points", e.sglFontSize);
    out << std::hex << std::uppercase;
    field("colour", e.lngColor), field("back", e.lngBgColor);
    out << std::dec;
    field("hasBack", e.blnHasBgColor), field("href", e.strHref), field("title", e.strTitle);
    field("top", e.lngTop), field("left", e.lngLeft), field("bottom", e.lngBottom),
        field("right", e.lngRight);
    field("centre", e.blnAlignCenter), field("toRight", e.blnAlignRight);
    field("src", e.strSrc), field("alt", e.strAlt);
    field("imgWidth", e.lngImgWidth), field("imgHeight", e.lngImgHeight);
    field("hSpace", e.intHSpace), field("vSpace", e.intVSpace);
    field("width", e.sglWidth), field("height", e.sglHeight), field("border", e.intBorder);
    field("padding", e.intCellPadding), field("spacing", e.intCellSpacing);
    field("colSpan", e.intColSpan), field("vAlign", e.lngVAlign);
    return out.str();
}

TEST(HtmlDocumentTest, Normalises) {
    const struct {
        std::string html, document;
    } cases[] = {
        {"", "<HTML><BODY></BODY></HTML>"},
        {"<boDY text=red>x", "<HTML><boDY text=red>x</HTML>"},
        {"<html lang=en>x<BODYGUARD>", "<HTML><html lang=en>x<BODYGUARD></HTML>"},
        {"<html>x", "<BODY><html>x</BODY>"},
        {"a\nb\rc\r\nd\te", "<HTML><BODY>a b c d e</BODY></HTML>"},
        {"a" + std::string(8, ' ') + "b" + std::string(9, '\n') + "c" + std::string(17, '\t') + "d",
         "<HTML><BODY>a b  c   d</BODY></HTML>"},
        {"&lt;&gt;&quot;&copy;&deg;&amp;&middot;&agrave;&aacute;&egrave;&eacute;&euml;",
         "<HTML><BODY>&#060;&#062;&#034;&#169;&#176;&#038;&#183;&#224;&#225;&#232;&#233;&#235;</BODY></"
         "HTML>"},
        {"&amp;lt; &LT; &nbsp; &l\nt; &am", "<HTML><BODY>&#038;lt; &LT; &nbsp; &l t; &am</BODY></HTML>"},
    };
    for (const auto& c : cases) EXPECT_EQ(Parsed(c.html)->mstrDocument(), c.document) << c.html;
}

TEST(HtmlDocumentTest, CutsTagsCommentsAndText) {
    const struct {
        std::string body, pieces;
    } cases[] = {
        {"Hello", "Hello|"},
        {"<B> </B>  <I>", "<B>|</B>|<I>|"},
        {"a<b <i>c>d", "a|<b <i>|c>d|"},
        {"<!-- a > <b> -- > -->x<!-->y", "<!-- a > <b> -- > -->|x|<!-->|y|"},
        {"<>&#32;\x01", "<>|&#32;\x01|"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Parsed::inBody(c.body).pieces(), "<HTML>|<BODY>|" + c.pieces + "</BODY>|</HTML>|")
            << c.body;

    // Where the text cannot be cut any further, the document ends.
    EXPECT_EQ(Parsed("<HTML><BODY>a<B>b<!-- c</B>--").pieces(), "<HTML>|<BODY>|a|<B>|b|");
    EXPECT_EQ(Parsed("<HTML><BODY>a<<<").pieces(), "<HTML>|<BODY>|a|");
    EXPECT_EQ(Parsed("<!-<HTML><BODY>a").pieces(), "<!-<HTML>|<BODY>|");
    EXPECT_EQ(Parsed("<!--<HTML><BODY>").pieces(), "<!|--|<HTML>|<BODY>|");
}

TEST(HtmlDocumentTest, CutsOffWhatLiesBehindTheLastPlace) {
    const auto documentOf = [&](std::size_t length) { return kHead + std::string(length, 'x') + "<B>y</B>"; };
    EXPECT_EQ(Parsed(documentOf(32767 - 12 - 3))->mintElementCount(), 4)
        << "the last tag ends at the last place";
    EXPECT_EQ(Parsed(documentOf(32767 - 12 - 2))->mintElementCount(), 3)
        << "a tag that ends behind it is cut off";
    EXPECT_EQ(Parsed(documentOf(32767 - 12))->mintElementCount(), 2)
        << "and so is the text before one that begins there";
    EXPECT_EQ(Parsed(documentOf(100'000))->mstrDocument().size(), 100'020U) << "the text is kept";
}

TEST(HtmlDocumentTest, KnowsTagsByTheirWholeNamesInAnyCase) {
    const std::pair<int, const char*> cases[] = {
        {1, "HTML||/HTML|H|H0|H7|BLOCKQUOTES|/BR|BR/|/IMG|!--x--|//B|8"},
        {8, "!--|!-- x"},
        {9, "--"},
        {10, "strong|B"},
        {20, "br x/"},
        {37, "td|tH"},
        {38, "/td|/TH"},
        {44, "BlockQuote"},
        {46, "H1|h6"},
        {47, "/h1 x|/H6"},
        {63, "/style"}};
    for (const auto& [code, names] : cases) {
        std::istringstream list(names);
        for (std::string name; std::getline(list, name, '|');)
            EXPECT_EQ(Parsed("<" + name + " x--><HTML><BODY>")[0].lngTagType, code) << name;
    }
}

TEST(HtmlDocumentTest, ReadsAttributesOverDefaults) {
    const struct {
        std::string tag, fields;
    } cases[] = {
        {"<TABLE>", "width=1 padding=2 spacing=2 "},
        {"<TH>", "back=8000000F width=1 colSpan=1 vAlign=3 "},
        {"<A>", "top=-1 left=-1 bottom=-1 right=-1 "},
        {"<H2>", "points=16 "},
        {"<SMALL>", "points=9 "},
        {"<FONT SIZE=\"+2\" COLOR=red FACE=\"Arial,Helvetica\">", "face=Arial points=12.4 colour=FF "},
        {"<B SIZE=\"-1\">", "points=8.8 "},
        {"<b SIZE=2 color='#8000ff' FACE=',x'>", "face=,x points=8.8 colour=FF0080 "},
        {"<B SIZE=\" +2\" NAME=a ID=b>", "name=b points=8.8 "},
        {"<B SIZE=big SIZE=1e1 TITLE='a \"=\" &#65;'>", "title=a \"=\" &#65; "},
        {"<TD WIDTH=50% HEIGHT=2.5 ALIGN=right VALIGN=Bottom COLSPAN=-1 BGCOLOR=#FFF>",
         "back=FF0FFF hasBack=1 toRight=1 width=0.5 height=2.5 colSpan=-1 vAlign=5 "},
        {"<TD width=40px align=LEFT valign=middle>", "back=8000000F width=40 colSpan=1 vAlign=3 "},
        {"<IMG SRC=a&#66;c ALT='&#65; b' WIDTH=40 HEIGHT=70000 HSPACE=0 BORDER=1>",
         "src=aBc alt=A b imgWidth=40 imgHeight=70000 vSpace=2 border=1 "},
        {"<DIV align = center href=' a?b=c '>", "href= a?b=c centre=1 "},
        {"<DIV CELLPADDING=2.5 CELLSPACING=3.5 NAME=unended\">", "name=unended\" padding=2 spacing=4 "},
        {"<DIV A=\"x\"NAME=\"y\"TITLE='z>", "name=y title=z "},
        {"<DIV NOWRAP NAME=x ID=>", ""},
        // An error ends the element with what came before it; one in cutting the tag leaves the defaults.
        {"<DIV BORDER=1 HEIGHT=40px NAME=x>", "border=1 "},
        {"<DIV NAME=x BORDER=32768 ID=y>", "name=x "},
        {"<DIV NAME=x HREF='&#256;' ID=y>", "name=x "},
        {"<DIV NAME=x WIDTH= ID=y>", "name=x "},
        {"<TD NAME=\"x\"=y>", "back=8000000F width=1 colSpan=1 vAlign=3 "},
    };
    for (const auto& c : cases) EXPECT_EQ(fieldsOf(Parsed::inBody(c.tag)[2]), c.fields) << c.tag;
}

TEST(HtmlDocumentTest, ReadsThePage) {
    Parsed page("<BODY BGCOLOR=\"#FFFFFF\" TEXT=navy LINK=ff0001><FONT>x<B TEXT=teal BACKGROUND=b.gif>");
    EXPECT_EQ(page->mlngBodyBgColor(), 0xFFFFFFU);
    EXPECT_EQ(page[1].lngBgColor, 0U);
    EXPECT_EQ(page->mlngLinkColor(), 0x0100FFU);
    EXPECT_EQ(page[2].lngColor, 0x800000U) << "a FONT has the colour of what came before it";
    EXPECT_EQ(page->mlngTextColor(), 0x808000U);
    EXPECT_EQ(page->mstrBackground(), "b.gif");

    const std::pair<const char*, Colour> names[] = {
        {"black", 0},       {"white", 0xFFFFFF},  {"red", 0x0000FF},    {"lime", 0x00FF00},
        {"aqua", 0xFFFF00}, {"blue", 0xFF0000},   {"yellow", 0x00FFFF}, {"fuchsia", 0xFF00FF},
        {"gray", 0x808080}, {"silver", 0xC0C0C0}, {"maroon", 0x000080}, {"green", 0x008000},
        {"navy", 0x800000}, {"olive", 0x008080},  {"teal", 0x808000},   {"purple", 0x800080}};
    for (const auto& [name, colour] : names) {
        EXPECT_EQ(Parsed("<BODY BGCOLOR=" + std::string(name) + ">")->mlngBodyBgColor(), colour) << name;
    }
    EXPECT_TRUE(Parsed("<A>", {})->mintLinks().empty());

    HTMLDocument document;
    document.setDocument("<BODY BGCOLOR=red BACKGROUND=b.gif>", {});
    document.setDocument("<B><A></A><P>x<BODY><A>", {.BackColor = 7, .EnableAnchors = false});
    EXPECT_EQ(document.mlngBodyBgColor(), 7U);
    EXPECT_EQ(document.mstrBackground(), "b.gif") << "a page's picture stays";
    EXPECT_EQ(document.mudtElements()[static_cast<std::size_t>(document.mintBodyIndex())].strRaw, "<BODY>");
    EXPECT_TRUE(document.mintLinks().empty());
    document.setDocument(document.mstrDocument(), {.EnableAnchors = true});
    EXPECT_EQ(std::vector(document.mintLinks().begin(), document.mintLinks().end()),
              (std::vector<std::int16_t>{2, 8}));
}

TEST(HtmlDocumentTest, DecodesTextAndDividesItIntoWords) {
    const struct {
        std::string text, words;
    } cases[] = {
        {"&lt;B&gt;", "<B>"},
        {" a  b ", "|a|b|"},
        {"&#65;&#1000;&nbsp;&#00066;&#;", "A&nbsp;B"},
        {"&#x41;b &#67", "41;b|&#67"},
        {"&#67 68;", "C68;"},
        {"a&#32;&#9;b&#13;&#10;c&#10;d&#13;e", "a||b|c|d\re"},
        {"a&#999;b", "(none)"},
        {"a&#40000;b", "(none)"},
    };
    for (const auto& c : cases) {
        const Parsed document = Parsed::inBody(c.text);
        std::string words;
        for (const std::string_view word : document[2].strWords) words += std::string(word) + "|";
        words = words.empty() ? "(none)" : words.substr(0, words.size() - 1);
        EXPECT_EQ(words, c.words) << c.text;
    }
    EXPECT_TRUE(Parsed("a<b>c")[4].blnNoSpaceBefore);
    EXPECT_FALSE(Parsed("a <b>c")[4].blnNoSpaceBefore);
}

TEST(HtmlDocumentTest, FindsTheTitle) {
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {"", std::nullopt},
        {"<TITLE>Help &amp; you</TITLE><TITLE>x</TITLE>", "Help & you"},
        {"<TITLE><B>x</B></TITLE>", ""},
        {"<HTML><BODY><TITLE>", std::nullopt},
    };
    for (const auto& [html, title] : cases) EXPECT_EQ(Parsed(html)->title(), title) << html;
}

TEST(HtmlDocumentTest, WalksTheTree) {
    const Parsed document = Parsed::inBody("<TABLE><B>a</B>b</TABLE>");
    HTMLElement found;
    EXPECT_TRUE(document->mblnFindAncestor(document[4], TAG_TABLE, found));
    EXPECT_EQ(found.intIndex, 2);
    EXPECT_FALSE(document->mblnFindAncestor(document[4], TAG_UNKNOWN, found));
    EXPECT_FALSE(document->mblnGetParent(document[1], found)) << "the root is no parent";
    EXPECT_TRUE(document->mblnGetFirstChild(document[2], found));
    EXPECT_TRUE(document->mblnGetNextSibling(found, found));
    EXPECT_EQ(found.strRaw, "b");
    EXPECT_FALSE(document->mblnGetNextSibling(found, found)) << "a closer is no sibling";
    EXPECT_FALSE(document->mblnGetFirstChild(found, found));
    EXPECT_EQ(found.strRaw, "b");
}

/// A text with a bar after each of its tags and pieces of text.
std::string barred(const std::string& html) {
    std::string text;
    for (const char c : html) {
        if (c == '<' && !text.empty() && text.back() != '|') text += '|';
        text += c;
        if (c == '>') text += '|';
    }
    return text;
}

TEST(HtmlDocumentTest, AddsMissingClosers) {
    // Each "*" is before a closer that is missing and has to be added.
    const std::string cases[] = {
        "<P>a*</P><P>b<BR>c*</P>",
        "<P>a*</P><H1>b</H1><P>c*</P><HR>d<P>e*</P><DIV>f</DIV>",
        "<DIV><P>a*</P></DIV><P>b</P>",
        "<UL><LI><P>a*</P><LI><P>b*</P></UL>",
        "<TABLE><TR><TD>a*</TD><TH>b*</TD>*</TR><TR><TD>c*</TD>*</TR></TABLE>",
        "<TABLE><THEAD><TR><TD><P>a*</P>*</TD>*</TR><TBODY><TR><TD>b</TD>*</TR></TBODY></TABLE>",
        "<TABLE><TR><TD>a<TABLE><TR><TD>b*</TD>*</TR></TABLE>c*</TD>*</TR><TR></TR></TABLE>",
        "<TABLE><TR><TD>a<TABLE>*</TD>*</TR>",
        "<TABLE><P>a*</P><TR></P>*</TR></TABLE>",
        "<TABLE><TR><TD><P>a*</P></TD>*</TR><TR><TD>b*</TD></TR></TABLE>",
        // Where nothing is missing nothing changes, however the tags nest.
        "<P>a<UL><LI>b</UL><TABLE><TR><TD>c</TD></TR></TABLE><DIV><P>d</P></DIV></P></P>",
        "<P>a<DIV>b</P>c</DIV></TD></TR></TABLE><B><I>",
        "<TABLE><TR><TD>a</TR></TD><TR><TD><P>b</TD></P></TR></TABLE>",
    };
    for (const std::string& marked : cases) {
        std::string complete, lacking;
        for (std::size_t i = 0; i < marked.size(); ++i) {
            const bool missing = marked[i] == '*';
            const std::size_t end = missing ? marked.find('>', i) + 1 : i + 1;
            complete += marked.substr(missing ? i + 1 : i, missing ? end - i - 1 : 1);
            if (!missing) lacking += marked[i];
            i = end - 1;
        }
        EXPECT_EQ(Parsed::inBody(lacking).pieces(), barred(kHead + complete + kTail)) << lacking;
    }
    EXPECT_EQ(Parsed("<HTML><BODY><P>a</HTML>").pieces(), "<HTML>|<BODY>|<P>|a|</P>|</HTML>|");
    EXPECT_EQ(Parsed("<HTML><BODY><P>a").pieces(), "<HTML>|<BODY>|<P>|</P>|");
}

}  // namespace
}  // namespace kavrelon
