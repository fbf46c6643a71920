#include "bench/HtmlEngines.h"

#include <memory>

#include "headless/FindNamed.h"
#include "headless/LabelEngine.h"

namespace kavrelon::bench {
namespace {

std::function<void()> prepareParse(const std::string& html) {
    return [&html] { HTMLDocument().setDocument(html, {}); };
}

std::function<void()> prepareLayout(const std::string& html) {
    const auto label = std::make_shared<LabelEngine>();
    label->parse(html);
    return [label] {
        label->layOut({kPageWidth, 0});
        label->draw();
    };
}

std::function<void()> prepareWidth(const std::string& html) {
    const auto label = std::make_shared<LabelEngine>();
    label->parse(html);
    label->layOut({kPageWidth, 0});
    return [label, width = kPageWidth]() mutable {
        width = width == kPageWidth ? kPageWidth / 2 : kPageWidth;
        label->layout.place(label->document, width);
    };
}

std::function<void()> prepareAll(const std::string& html) {
    return [&html] {
        LabelEngine label;
        label.parse(html);
        label.layOut({kPageWidth, 0});
        label.draw();
    };
}

constexpr HtmlStep kSteps[]{
    {"parse", "our parser", prepareParse},
    {"layout", "our layout and drawing of a parsed document", prepareLayout},
    {"width", "our layout of a measured document at another width", prepareWidth},
    {"all", "our parser, layout and drawing", prepareAll},
    {"gumbo", "gumbo's parser", prepareGumbo},
    {"libxml2", "libxml2's parser", prepareLibxml2},
    {"litehtml", "litehtml's parser, layout and drawing", prepareLitehtml},
    {"litehtml-layout", "litehtml's layout and drawing of a parsed document", prepareLitehtmlLayout},
};

}  // namespace

std::span<const HtmlStep> htmlSteps() {
    return kSteps;
}

const HtmlStep* findHtmlStep(std::string_view name) {
    return findNamed(kSteps, name);
}

}  // namespace kavrelon::bench
