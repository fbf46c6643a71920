#include "headless/HtmlDocuments.h"

#include <algorithm>

#include "headless/FindNamed.h"
#include "headless/HelpText.h"

namespace kavrelon {
namespace {

/// A piece, repeated as often as it fits.
std::string repeated(std::string_view piece, std::size_t length) {
    std::string text;
    while (text.size() + piece.size() <= length) text += piece;
    return text;
}

/// A piece, repeated as often as it fits between `before` and `after`.
std::string between(std::string_view before, std::string_view piece, std::string_view after,
                    std::size_t length) {
    std::string text(before);
    text += repeated(piece, length - std::min(length, before.size() + after.size()));
    return text += after;
}

/// A piece, repeated as often as it fits after `before`, each with its number in place of every "#".
std::string numbered(std::string_view before, std::string_view piece, std::size_t length) {
    std::string text(before);
    for (int number = 1; text.size() + piece.size() + 8 <= length; ++number) {
        for (const char character : piece) {
            if (character == '#') {
                text += std::to_string(number);
            } else {
                text += character;
            }
        }
    }
    return text;
}

constexpr std::string_view kWords = "Nothing of this is ever lost. ";
// These two keep the end of the document from being closed with tags of its own.
constexpr std::string_view kBody = "<HTML><BODY>";
constexpr std::string_view kBodyEnd = "</BODY></HTML>";

std::string allBytes(std::size_t length) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte < ' ' || byte > '~') bytes += static_cast<char>(byte);
    }
    return repeated(bytes + " x ", length);
}

std::string nestedTables(std::size_t length) {
    constexpr std::string_view kOpen = "<TABLE><TR><TD>x";
    constexpr std::string_view kClose = "</TD></TR></TABLE>";
    const std::size_t depth = length / (kOpen.size() + kClose.size());
    return repeated(kOpen, depth * kOpen.size()) + repeated(kClose, depth * kClose.size());
}

/// A row of very many cells, and very many rows below it.
std::string wideTable(std::size_t length, std::string_view row) {
    return between("<TABLE><TR>", "<TD>x", "", length / 2) + repeated(row, length / 2);
}

std::string cutShort(std::string_view start, std::size_t length) {
    return between(kBody, kWords, start, length / 2) + repeated(kWords, length / 2);
}

constexpr HtmlDocumentKind kKinds[]{
    {"help", "a help text", helpText},
    {"bold", "openers only, all nested", [](std::size_t length) { return repeated("<B>", length); }},
    {"signs", "opening signs before one closing sign",
     [](std::size_t length) { return repeated("<", length); }},
    {"stray-signs", "opening signs that none closes",
     [](std::size_t length) { return between(kBody, "<", "", length); }},
    {"word", "one word", [](std::size_t length) { return repeated("x", length); }},
    {"empty-tags", "tags without a name", [](std::size_t length) { return repeated("<>", length); }},
    {"attributes", "one tag with all attributes",
     [](std::size_t length) { return between("<FONT", " ALT=x", ">x", length); }},
    {"nested-tables", "tables in cells of tables", nestedTables},
    {"wide-table", "as many columns as rows",
     [](std::size_t length) { return wideTable(length, "<TR><TD>x"); }},
    {"spans", "impossible spans over many columns",
     [](std::size_t length) {
         return wideTable(length, "<TR><TD COLSPAN=32767>many<TD COLSPAN=-1>negative");
     }},
    {"long-spans", "every row spans one column more",
     [](std::size_t length) { return numbered("<TABLE>", "<TR><TD COLSPAN=#>some<TD>more", length); }},
    {"widths", "impossible widths",
     [](std::size_t length) {
         return repeated(
             "<TABLE WIDTH=-5><TR><TD WIDTH=1e30>a<TD WIDTH=0>b<TD WIDTH=400%>c"
             "<HR WIDTH=1000000000000000000000000000000><IMG WIDTH=-5 ALT=d></TABLE>",
             length);
     }},
    {"open-comment", "a comment without its end",
     [](std::size_t length) { return cutShort("<!-- ", length); }},
    {"open-tag", "a tag without its end",
     [](std::size_t length) { return cutShort("<FONT COLOR=red ", length); }},
    {"open-quotes", "attributes without their closing quote",
     [](std::size_t length) { return repeated("<A HREF=\"x TITLE='y>word", length); }},
    {"entities", "entities cut short",
     [](std::size_t length) { return between("", "&#&lt&#1", ";", length); }},
    {"bytes", "all bytes that are no letters", allBytes},
    {"unclosed", "rows, cells and paragraphs without closers",
     [](std::size_t length) { return between("<TABLE>", "<TR><TD><P>x", "", length); }},
    {"paragraphs", "a paragraph for every letter",
     [](std::size_t length) { return repeated("<P>x", length); }},
    {"stray-closers", "closers without openers",
     [](std::size_t length) { return repeated("x</TD></P></TR></B>", length); }},
    {"lists", "lists in lists", [](std::size_t length) { return repeated("<UL><LI>x", length); }},
    {"fonts", "a new font for every word",
     [](std::size_t length) { return numbered("", "<FONT FACE=f# SIZE=#>x ", length); }},
    {"too-long", "more than positions can count",
     [](std::size_t length) { return between(kBody, "<P>word</P>", kBodyEnd, 2 * length); }},
};

}  // namespace

std::span<const HtmlDocumentKind> htmlDocumentKinds() {
    return kKinds;
}

const HtmlDocumentKind* findHtmlDocumentKind(std::string_view name) {
    return findNamed(kKinds, name);
}

}  // namespace kavrelon
