#include "tools/HtmlDump.h"

#include <ostream>
#include <span>
#include <string>

#include "tools/JsonLine.h"

namespace kavrelon {
namespace {

std::string hex(Colour colour) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    constexpr int kTopDigit = 28;
    std::string text;
    for (int shift = kTopDigit; shift >= 0; shift -= 4) text += kDigits[(colour >> shift) & 15];
    return text;
}

/// Writes the fields of an object, each under its name.
class Fields {
  public:
    explicit Fields(JsonLine& line) : line_(line) {}

    void text(const char* name, std::string_view value) { line_.key(name).value(value); }
    void flag(const char* name, bool value) { line_.key(name).value(value); }
    void number(const char* name, std::int64_t value) { line_.key(name).value(value); }
    void single(const char* name, float value) { line_.key(name).value(value); }
    void colour(const char* name, Colour value) { line_.key(name).value(hex(value)); }
    void texts(const char* name, std::span<const std::string_view> values) {
        line_.key(name).beginArray();
        for (const std::string_view value : values) line_.value(value);
        line_.endArray();
    }
    void numbers(const char* name, std::span<const std::int16_t> values) {
        line_.key(name).beginArray();
        for (const std::int64_t value : values) line_.value(value);
        line_.endArray();
    }

  private:
    JsonLine& line_;
};

void dumpPage(Fields& fields, const HTMLDocument& document) {
    fields.text("document", document.mstrDocument());
    fields.text("title", document.title().value_or("Unknown"));
    fields.number("count", document.mintElementCount());
    fields.number("bodyIndex", document.mintBodyIndex());
    fields.colour("bodyBgColor", document.mlngBodyBgColor());
    fields.colour("textColor", document.mlngTextColor());
    fields.colour("linkColor", document.mlngLinkColor());
    fields.text("background", document.mstrBackground());
    fields.numbers("links", document.mintLinks());
}

void dumpElement(Fields& fields, const HTMLElement& element) {
    fields.text("strRaw", element.strRaw);
    fields.flag("blnIsTag", element.blnIsTag);
    fields.number("lngTagType", element.lngTagType);
    fields.text("strName", element.strName);
    fields.flag("blnNoSpaceBefore", element.blnNoSpaceBefore);
    fields.flag("blnHasBgColor", element.blnHasBgColor);
    fields.texts("strWords", element.strWords);
    fields.text("strFontFace", element.strFontFace);
    fields.single("sglFontSize", element.sglFontSize);
    fields.colour("lngColor", element.lngColor);
    fields.text("strHref", element.strHref);
    fields.text("strTitle", element.strTitle);
    fields.number("lngTop", element.lngTop);
    fields.number("lngLeft", element.lngLeft);
    fields.number("lngBottom", element.lngBottom);
    fields.number("lngRight", element.lngRight);
    fields.flag("blnAlignCenter", element.blnAlignCenter);
    fields.flag("blnAlignRight", element.blnAlignRight);
    fields.text("strSrc", element.strSrc);
    fields.text("strAlt", element.strAlt);
    fields.number("lngImgWidth", element.lngImgWidth);
    fields.number("lngImgHeight", element.lngImgHeight);
    fields.number("intHSpace", element.intHSpace);
    fields.number("intVSpace", element.intVSpace);
    fields.single("sglWidth", element.sglWidth);
    fields.single("sglHeight", element.sglHeight);
    fields.number("intBorder", element.intBorder);
    fields.number("intCellPadding", element.intCellPadding);
    fields.number("intCellSpacing", element.intCellSpacing);
    fields.number("intColSpan", element.intColSpan);
    fields.number("lngVAlign", element.lngVAlign);
    fields.colour("lngBgColor", element.lngBgColor);
    fields.number("intChildCount", element.intChildCount);
    fields.numbers("intChildren", element.intChildren);
    fields.number("intParent", element.intParent);
    fields.number("intSiblingIndex", element.intSiblingIndex);
    fields.number("intIndex", element.intIndex);
}

template <class Fill>
void printObject(std::ostream& out, Fill fill) {
    JsonLine line;
    line.beginObject();
    Fields fields(line);
    fill(fields);
    line.endObject();
    out << line.text() << '\n';
}

}  // namespace

void dumpDocument(std::ostream& out, const HTMLDocument& document) {
    printObject(out, [&](Fields& fields) { dumpPage(fields, document); });
    for (const HTMLElement& element : document.mudtElements()) {
        printObject(out, [&](Fields& fields) { dumpElement(fields, element); });
    }
}

void dumpLayout(std::ostream& out, const Layout& layout) {
    JsonLine line;
    Fields page(line);
    line.beginObject();
    page.number("width", layout.size().width);
    page.number("height", layout.size().height);
    line.key("runs").beginArray();
    for (const TextRun& run : layout.runs()) {
        line.beginObject();
        page.number("element", run.element);
        page.number("x", run.place.left);
        page.number("y", run.place.top);
        page.number("width", run.place.width());
        page.number("height", run.place.height());
        page.text("text", run.text);
        line.endObject();
    }
    line.endArray().endObject();
    out << line.text() << '\n';
}

}  // namespace kavrelon
