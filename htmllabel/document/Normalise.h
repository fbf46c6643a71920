#pragma once

#include <string>
#include <string_view>

namespace kavrelon {

/// The text that a document is parsed from: `html` wrapped in BODY and HTML tags where it has none, with line
/// ends and tabs turned into spaces, the known named entities into numeric ones, and runs of up to eight
/// spaces into one (of longer runs an eighth stays, rounded up).
std::string normalise(std::string_view html);

}  // namespace kavrelon
