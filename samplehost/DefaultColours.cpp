#include "samplehost/DefaultColours.h"

#include <algorithm>
#include <cstddef>

#include "support/AsciiText.h"

namespace kavrelon {
namespace {

constexpr char kEscape = '\x1B';
constexpr std::string_view kIntroducer = "\x1B[";
/// A longer one is no list that a program sends, and passes as it is.
constexpr std::size_t kLongestList = 256;

/// The parameters of a list, one after the other.
class Parameters {
  public:
    explicit Parameters(std::string_view list) : rest_(list) {}

    bool more() const { return more_; }
    std::string_view take() {
        const std::size_t end = rest_.find(';');
        const std::string_view parameter = rest_.substr(0, end);
        more_ = end != rest_.npos;
        rest_.remove_prefix(more_ ? end + 1 : rest_.size());
        return parameter;
    }

  private:
    std::string_view rest_;
    bool more_ = true;
};

/// A parameter without leading zeros; empty for zero.
std::string_view valueOf(std::string_view parameter) {
    return parameter.substr(std::min(parameter.find_first_not_of('0'), parameter.size()));
}

std::string withDefaults(std::string_view list) {
    std::string out;
    const auto add = [&out](std::string_view parameter) { (out += parameter) += ';'; };
    for (Parameters parameters(list); parameters.more();) {
        const std::string_view parameter = parameters.take();
        const std::string_view value = valueOf(parameter);
        if (value.empty()) {
            add("37;40;0");
        } else if (value == "39") {
            add("37");
        } else if (value == "49") {
            add("40");
        } else {
            add(parameter);
        }
        if ((value != "38" && value != "48") || !parameters.more()) continue;
        const std::string_view kind = parameters.take();
        add(kind);
        for (int i = valueOf(kind) == "5" ? 1 : 3; i > 0 && parameters.more(); --i) add(parameters.take());
    }
    out.pop_back();
    return out;
}

}  // namespace

void DefaultColours::rewrite(std::string_view bytes, std::string& out) {
    while (!bytes.empty()) {
        if (held_.empty()) {
            const std::size_t escape = std::min(bytes.find(kEscape), bytes.size());
            out += bytes.substr(0, escape);
            bytes.remove_prefix(escape);
            if (bytes.empty()) return;
        }
        const char next = bytes.front();
        const bool begun = held_.size() < kIntroducer.size();
        const bool fits = begun ? next == kIntroducer[held_.size()] : isAsciiDigit(next) || next == ';';
        if (fits && held_.size() < kLongestList) {
            held_ += next;
            bytes.remove_prefix(1);
            continue;
        }
        const bool ends = !begun && next == 'm';
        out += ends ? std::string(kIntroducer) + withDefaults(std::string_view(held_).substr(2)) : held_;
        held_.clear();
        // What ends no list may be the escape of the next one.
        if (next == kEscape) continue;
        out += next;
        bytes.remove_prefix(1);
    }
}

}  // namespace kavrelon
