#include "terminal/EntryList.h"

#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

constexpr std::string_view kDots = "...";

}  // namespace

bool EntryList::add(std::string_view target, std::string_view description) {
    target = target.substr(0, kLongestTarget + 1);
    const bool cut = description.size() > kLongestDescription;
    if (cut) description = description.substr(0, kLongestDescription - kDots.size());
    const std::string_view end = cut ? kDots : std::string_view();
    const std::size_t begin = ends_.empty() ? 0 : ends_.back().description;
    const std::size_t targetEnd = begin + target.size();
    const std::size_t descriptionEnd = targetEnd + description.size() + end.size();
    if (size() == kMostEntries || descriptionEnd > kMostBytes) return false;

    texts_.resize(begin);  // drops what an addition has left that memory ran out for
    texts_.append(target).append(description).append(end);
    ends_.push_back({static_cast<std::uint32_t>(targetEnd), static_cast<std::uint32_t>(descriptionEnd)});
    return true;
}

void EntryList::keepFirst() noexcept {
    if (size() < 2) return;
    ends_.resize(1);
    texts_.resize(ends_.front().description);
    // Where there is no memory for less memory, the list keeps its own.
    carryOn([this] { texts_.shrink_to_fit(); });
    carryOn([this] { ends_.shrink_to_fit(); });
}

std::string_view EntryList::target(std::size_t entry) const {
    const std::size_t begin = entry == 0 ? 0 : ends_.at(entry - 1).description;
    return std::string_view(texts_).substr(begin, ends_.at(entry).target - begin);
}

std::string_view EntryList::description(std::size_t entry) const {
    const Ends& ends = ends_.at(entry);
    return std::string_view(texts_).substr(ends.target, ends.description - ends.target);
}

}  // namespace kavrelon
