#include "samplehost/WebAddress.h"

#include <algorithm>
#include <string>

namespace kavrelon {

bool isWebAddress(std::string_view link) {
    std::string start(link.substr(0, 8));
    std::transform(start.begin(), start.end(), start.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    const std::size_t scheme = start == "https://" ? 8 : start.starts_with("http://") ? 7 : 0;
    return scheme != 0 && link.size() > scheme && std::all_of(link.begin(), link.end(), [](char c) {
               return c > ' ' && c < 127 && c != '"' && c != '\'';
           });
}

}  // namespace kavrelon
