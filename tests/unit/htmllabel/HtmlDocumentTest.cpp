#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/PlainText.h"
#include "tests/unit/htmllabel/CaseFile.h"

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
    const HTMLDocument& operator*() const { return document_; }
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
        if (value != std::decay_t<decltype(value)>{}) out << ' ' << name << '=' << value;
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
    return out.str().erase(0, 1);
}

/// With bars between them.
std::string wordsOf(const HTMLElement& element) {
    std::string words;
    for (const std::string_view word : element.strWords) words.append("|").append(word);
    return words.empty() ? "(none)" : words.substr(1);
}

std::string codesOf(const std::string& names) {
    std::set<int> codes;
    std::istringstream list(names);
    for (std::string name; std::getline(list, name, '|');)
        codes.insert(int{Parsed("<" + name + " x--><HTML><BODY>")[0].lngTagType});
    return codes.size() == 1 ? std::to_string(*codes.begin()) : "several";
}

/// What is looked at of a document, under the name that document.txt has for it.
std::string seen(const std::string& what, const std::string& html) {
    if (what == "pieces") return Parsed(html).pieces();
    if (what == "source") return Parsed(html)->mstrDocument();
    if (what == "codes") return codesOf(html);
    if (what == "title") return Parsed(html)->title().value_or("(none)");
    if (what == "said") return std::regex_replace(plainText(*Parsed(html)).text, std::regex("\r\n"), "|");
    const Parsed document = Parsed::inBody(html);
    if (what == "fields") return fieldsOf(document[2]);
    return what == "words" ? wordsOf(document[2]) : "unknown";
}

TEST(HtmlDocumentTest, DocumentsComeToWhatTheirFileSays) {
    const std::vector<FileCase> cases = casesOf("document.txt");
    EXPECT_GT(cases.size(), 50U);
    for (const auto& [what, html, expected] : cases)
        EXPECT_EQ(seen(what, html), expected) << what << " of " << html;
}

TEST(HtmlDocumentTest, KeepsControlCharactersAndKnowsWhereNoSpaceIs) {
    EXPECT_EQ(Parsed::inBody("<>&#32;\x01").pieces(), "<HTML>|<BODY>|<>|&#32;\x01|</BODY>|</HTML>|");
    EXPECT_EQ(wordsOf(Parsed::inBody("a&#32;&#9;b&#13;&#10;c&#10;d&#13;e")[2]), "a||b|c|d\re");
    EXPECT_TRUE(Parsed("a<b>c")[4].blnNoSpaceBefore);
    EXPECT_FALSE(Parsed("a <b>c")[4].blnNoSpaceBefore);
}

TEST(HtmlDocumentTest, LineEndsAndTabsAreSpaces) {
    EXPECT_EQ(Parsed("a\nb\rc\r\nd\te")->mstrDocument(), kHead + "a b c d e" + kTail);
    EXPECT_EQ(Parsed("a\n\n\n\n\n\n\n\n\nb\r\n c &l\nt;")->mstrDocument(), kHead + "a  b c &l t;" + kTail);
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

TEST(HtmlDocumentTest, ReadsThePage) {
    Parsed page("<BODY BGCOLOR=\"#FFFFFF\" TEXT=navy LINK=ff0001><FONT>x<B TEXT=teal BACKGROUND=b.gif>");
    EXPECT_EQ(page->mlngBodyBgColor(), 0xFFFFFFU);
    EXPECT_EQ(page[1].lngBgColor, 0U);
    EXPECT_EQ(page->mlngLinkColor(), 0x0100FFU);
    EXPECT_EQ(page[2].lngColor, 0x800000U) << "a FONT has the colour of what came before it";
    EXPECT_EQ(page->mlngTextColor(), 0x808000U);
    EXPECT_EQ(page->mstrBackground(), "b.gif");

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

}  // namespace
}  // namespace kavrelon
