#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace kavrelon::bench {

/// A step of an engine's work on a document.
struct HtmlStep {
    const char* name;
    const char* description;
    /// Prepares the step, which then does the same work whenever it is called. The document must live on.
    std::function<void()> (*prepare)(const std::string& html);
};

/// Our steps, then those of gumbo and libxml2 (parsers) and litehtml (parser, layout and drawing).
std::span<const HtmlStep> htmlSteps();
/// Null when there is no step of that name.
const HtmlStep* findHtmlStep(std::string_view name);

std::function<void()> prepareGumbo(const std::string& html);
std::function<void()> prepareLibxml2(const std::string& html);
/// Measures text as `HeadlessCanvas` does, and draws nothing.
std::function<void()> prepareLitehtml(const std::string& html);
std::function<void()> prepareLitehtmlLayout(const std::string& html);

}  // namespace kavrelon::bench
