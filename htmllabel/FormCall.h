#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kavrelon {

/// A link's call into the containing form.
struct FormCall {
    std::string procedure;
    std::vector<std::string> arguments;
    bool operator==(const FormCall&) const = default;
};

/// Whether a link's target is such a call: "VB:" in any case, followed by the call's text.
bool isFormCall(std::string_view href);

/// Splits a call's text, `Show(1, 'a, b')`, into procedure and arguments. The last ")" closes the list.
/// Quotes of either kind keep commas together and are taken off an argument that is quoted as a whole. Text
/// of any other form (no "(", no ")" after it, an unclosed quote) is the name of a procedure without
/// arguments.
FormCall parseFormCall(std::string_view text);

}  // namespace kavrelon
