#include "samplehost/RemoteOutput.h"

#include <algorithm>
#include <utility>

namespace kavrelon {

void RemoteOutput::append(RemoteOutput&& later) {
    if (empty()) {
        *this = std::exchange(later, {});
        return;
    }
    for (Command& command : later.commands_) {
        commands_.push_back({bytes_.size() + command.at, std::move(command.text)});
    }
    bytes_ += later.bytes_;
    later = {};
}

std::optional<std::string> RemoteOutput::takeCommand() {
    if (commands_.empty() || commands_.front().at > taken_) return std::nullopt;
    std::string text = std::move(commands_.front().text);
    commands_.pop_front();
    return text;
}

std::string_view RemoteOutput::takeBytes(std::size_t most) {
    const std::size_t end = commands_.empty() ? bytes_.size() : commands_.front().at;
    const std::string_view next(bytes_.data() + taken_, std::min(most, end - taken_));
    taken_ += next.size();
    return next;
}

}  // namespace kavrelon
