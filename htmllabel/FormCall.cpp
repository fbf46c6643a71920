#include "htmllabel/FormCall.h"

#include <algorithm>
#include <optional>

#include "support/AsciiText.h"

namespace kavrelon {

namespace {

std::string unquoted(std::string_view argument) {
    const bool quoted = argument.size() >= 2 && (argument.front() == '"' || argument.front() == '\'') &&
                        argument.back() == argument.front();
    return std::string(quoted ? argument.substr(1, argument.size() - 2) : argument);
}

// Where the first argument of a list ends: at a comma or at the list's end; npos when its quote is not
// closed.
std::size_t argumentEnd(std::string_view list) {
    std::size_t searchFrom = 0;
    const auto first = list.find_first_not_of(' ');
    if (first != std::string_view::npos && (list[first] == '"' || list[first] == '\'')) {
        searchFrom = list.find(list[first], first + 1);
        if (searchFrom == std::string_view::npos) return searchFrom;
    }
    return std::min(list.find(',', searchFrom), list.size());
}

std::optional<std::vector<std::string>> splitArguments(std::string_view list) {
    std::vector<std::string> arguments;
    if (trimSpaces(list).empty()) return arguments;
    for (;;) {
        const auto end = argumentEnd(list);
        if (end == std::string_view::npos) return std::nullopt;
        arguments.push_back(unquoted(trimSpaces(list.substr(0, end))));
        if (end == list.size()) return arguments;
        list.remove_prefix(end + 1);
    }
}

}  // namespace

bool isFormCall(std::string_view href) {
    return equalsInUpperCase(href.substr(0, 3), "VB:");
}

FormCall parseFormCall(std::string_view text) {
    const auto open = text.find('(');
    const auto close = text.rfind(')');
    if (open != std::string_view::npos && close != std::string_view::npos && open < close) {
        auto arguments = splitArguments(text.substr(open + 1, close - open - 1));
        if (arguments) return {std::string(trimSpaces(text.substr(0, open))), *std::move(arguments)};
    }
    return {std::string(trimSpaces(text)), {}};
}

}  // namespace kavrelon
