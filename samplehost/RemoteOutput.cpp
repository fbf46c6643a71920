#include "samplehost/RemoteOutput.h"

#include <algorithm>
#include <utility>

namespace kavrelon {

void RemoteOutput::append(RemoteOutput&& later) {
    if (empty()) {
        *this = std::exchange(later, {});
        return;
    }
    for (Mark& mark : later.marks_) marks_.push_back({bytes_.size() + mark.at, std::move(mark.command)});
    bytes_ += later.bytes_;
    later = {};
}

std::optional<std::string> RemoteOutput::takeCommand() {
    if (!markIsNext() || !marks_.front().command) return std::nullopt;
    std::string text = std::move(*marks_.front().command);
    marks_.pop_front();
    return text;
}

bool RemoteOutput::takeInterruption() {
    if (!markIsNext() || marks_.front().command) return false;
    marks_.pop_front();
    return true;
}

std::string_view RemoteOutput::takeBytes(std::size_t most) {
    const std::size_t end = marks_.empty() ? bytes_.size() : marks_.front().at;
    const std::string_view next(bytes_.data() + taken_, std::min(most, end - taken_));
    taken_ += next.size();
    return next;
}

}  // namespace kavrelon
