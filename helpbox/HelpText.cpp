#include "helpbox/HelpText.h"

namespace kavrelon {
namespace {

constexpr std::string_view kLineBreak = "\r\n";

std::string replaced(std::string_view text, std::string_view what, std::string_view with) {
    std::string result;
    for (;;) {
        const auto place = text.find(what);
        result += text.substr(0, place);
        if (place == std::string_view::npos) return result;
        result += with;
        text.remove_prefix(place + what.size());
    }
}

}  // namespace

std::string helpDocument(std::string_view text) {
    std::string document = replaced(text, "^", kLineBreak);
    if (document.find("<html>") != std::string::npos) return document;
    document = replaced(document, "<", "&lt;");
    document = replaced(document, ">", "&gt;");
    document = replaced(document, kLineBreak, "<br>");
    return replaced(document, " ", "&nbsp;");
}

}  // namespace kavrelon
