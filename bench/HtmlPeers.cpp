#include <gumbo.h>
#include <libxml/HTMLparser.h>
#include <litehtml/litehtml.h>

#include <cmath>
#include <cstring>
#include <map>

#include "bench/HtmlEngines.h"
#include "headless/LabelEngine.h"

namespace kavrelon::bench {
namespace {

/// How browsers of the time showed the tags that documents use; without a style sheet everything is one line
/// of plain text.
constexpr const char* kStyleSheet =
    "html,body,p,div,center,blockquote,ul,ol,h1,h2,h3,h4,h5,h6,hr{display:block}"
    "head,title,script,style{display:none} body{margin:4px} li{display:list-item}"
    "table{display:table;border-spacing:2px} tr{display:table-row} td,th{display:table-cell;padding:2px}"
    "thead{display:table-header-group} tbody{display:table-row-group} tfoot{display:table-footer-group}"
    "p,blockquote,ul,ol{margin-top:10px;margin-bottom:10px} ul,ol,blockquote{margin-left:40px}"
    "ul{list-style-type:disc} ol{list-style-type:decimal} b,strong,th{font-weight:bold} "
    "i,em{font-style:italic}"
    "h1,h2,h3,h4,h5,h6{font-weight:bold;margin-top:10px;margin-bottom:10px} h1{font-size:17pt} "
    "h2{font-size:16pt}"
    "h3{font-size:15pt} u,a{text-decoration:underline} small{font-size:9pt} big{font-size:11pt}"
    "sub{vertical-align:sub} sup{vertical-align:super} center{text-align:center} hr{border:1px inset}";

/// Characters are as wide as on `HeadlessCanvas`; the number of a font is its size in pixels.
class Container final : public litehtml::document_container {
  public:
    litehtml::uint_ptr create_font(const char*, int size, int, litehtml::font_style, unsigned,
                                   litehtml::font_metrics* metrics) override {
        metrics->height = size * 3 / 2;
        metrics->ascent = size;
        metrics->descent = metrics->height - size;
        metrics->x_height = size / 2;
        return static_cast<litehtml::uint_ptr>(size);
    }
    int text_width(const char* text, litehtml::uint_ptr font) override {
        return static_cast<int>(std::strlen(text) * font * 6 / 10);
    }
    int pt_to_px(int points) const override { return points; }
    int get_default_font_size() const override { return 10; }
    const char* get_default_font_name() const override { return "Arial"; }
    void get_image_size(const char*, const char*, litehtml::size& size) override { size = {}; }
    void get_client_rect(litehtml::position& client) const override {
        client = {0, 0, kPageWidth, kPageWidth};
    }
    void get_media_features(litehtml::media_features& media) const override {
        media.type = litehtml::media_type_screen;
        media.width = media.height = media.device_width = media.device_height = kPageWidth;
    }

    void delete_font(litehtml::uint_ptr) override {}
    void draw_text(litehtml::uint_ptr, const char*, litehtml::uint_ptr, litehtml::web_color,
                   const litehtml::position&) override {}
    void draw_list_marker(litehtml::uint_ptr, const litehtml::list_marker&) override {}
    void load_image(const char*, const char*, bool) override {}
    void draw_background(litehtml::uint_ptr, const litehtml::background_paint&) override {}
    void draw_borders(litehtml::uint_ptr, const litehtml::borders&, const litehtml::position&,
                      bool) override {}
    void set_caption(const char*) override {}
    void set_base_url(const char*) override {}
    void link(const std::shared_ptr<litehtml::document>&, const litehtml::element::ptr&) override {}
    void on_anchor_click(const char*, const litehtml::element::ptr&) override {}
    void set_cursor(const char*) override {}
    void transform_text(litehtml::tstring&, litehtml::text_transform) override {}
    void import_css(litehtml::tstring&, const litehtml::tstring&, litehtml::tstring&) override {}
    void set_clip(const litehtml::position&, const litehtml::border_radiuses&, bool, bool) override {}
    void del_clip() override {}
    litehtml::element::ptr create_element(const char*, const litehtml::string_map&,
                                          const std::shared_ptr<litehtml::document>&) override {
        return nullptr;
    }
    void get_language(litehtml::tstring&, litehtml::tstring&) const override {}
};

void layOut(litehtml::document& document) {
    document.render(kPageWidth);
    const litehtml::position page(0, 0, document.width(), document.height());
    document.draw({}, 0, 0, &page);
}

}  // namespace

std::function<void()> prepareGumbo(const std::string& html) {
    return [&html] {
        GumboOutput* const output = gumbo_parse_with_options(&kGumboDefaultOptions, html.data(), html.size());
        gumbo_destroy_output(&kGumboDefaultOptions, output);
    };
}

std::function<void()> prepareLibxml2(const std::string& html) {
    return [&html] {
        constexpr int kOptions = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING;
        xmlFreeDoc(htmlReadMemory(html.data(), static_cast<int>(html.size()), nullptr, nullptr, kOptions));
    };
}

std::function<void()> prepareLitehtml(const std::string& html) {
    const auto context = std::make_shared<litehtml::context>();
    context->load_master_stylesheet(kStyleSheet);
    return [context, &html] {
        Container container;
        const auto document = litehtml::document::createFromUTF8(html.c_str(), &container, context.get());
        layOut(*document);
    };
}

std::function<void()> prepareLitehtmlLayout(const std::string& html) {
    struct Parsed {
        litehtml::context context;
        Container container;
        litehtml::document::ptr document;
    };
    const auto parsed = std::make_shared<Parsed>();
    parsed->context.load_master_stylesheet(kStyleSheet);
    parsed->document = litehtml::document::createFromUTF8(html.c_str(), &parsed->container, &parsed->context);
    return [parsed] { layOut(*parsed->document); };
}

}  // namespace kavrelon::bench
