#include "headless/RecordingParent.h"

#include <stdexcept>

namespace kavrelon {

void RecordingParent::keep(const std::string& word, const char* member, const std::string* value) {
    calls.push_back(value == nullptr || value->empty() ? word : word + " " + *value);
    onCall(member, value);
    answer(word, {});
}

std::string RecordingParent::answer(const std::string& word, std::string value) const {
    if (failing == word) throw std::runtime_error(word);
    return value;
}

}  // namespace kavrelon
