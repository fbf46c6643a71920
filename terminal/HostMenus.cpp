#include "terminal/HostMenus.h"

#include <algorithm>
#include <utility>

namespace kavrelon {
namespace {

constexpr const char* kDefaultKnowledgeBaseUrl = "http://localhost/";
constexpr const char* kAllCategories = "All Categories";
constexpr const char* kNoPrograms = "None";

}  // namespace

HostMenus::HostMenus() {
    knowledgeBase_.add(kDefaultKnowledgeBaseUrl, kAllCategories);
    remote_.add({}, {});
}

void HostMenus::ClearKB() {
    const Items items = mnKnowledgeBaseLink();
    EntryList kept;
    for (const Item& item : items.shown) kept.add({}, item.caption);
    clearedItems_ = std::move(kept);
    clearedCount_ = items.shown.size() + items.more;
    knowledgeBase_.keepFirst();
}

void HostMenus::AddKB(std::string_view sURL, std::string_view sDesc) {
    // Its item takes the place of one that an earlier clearing left.
    knowledgeBase_.add(sURL, sDesc);
}

void HostMenus::ClearRemote() noexcept {
    remote_.keepFirst();
}

void HostMenus::AddRemote(std::string_view CommandLine, std::string_view Desc) {
    remote_.add(CommandLine, Desc);
}

HostMenus::Items HostMenus::mnKnowledgeBaseLink() const {
    const std::size_t count = std::max(knowledgeBase_.size(), clearedCount_);
    Items items;
    for (std::size_t item = 0; item < std::min(count, kMostShown); ++item) {
        const EntryList& source = item < knowledgeBase_.size() ? knowledgeBase_ : clearedItems_;
        items.shown.push_back({std::string(source.description(item)), true});
    }
    items.more = count - items.shown.size();
    return items;
}

HostMenus::Items HostMenus::mnuRemoteConnection() const {
    if (!mnuRemoteEnabled()) return {{{kNoPrograms, false}}, 0};
    Items items;
    const std::size_t count = remote_.size() - 1;
    // The list begins with a placeholder that has no item.
    for (std::size_t item = 0; item < std::min(count, kMostShown); ++item) {
        items.shown.push_back({std::string(remote_.description(item + 1)), true});
    }
    items.more = count - items.shown.size();
    return items;
}

}  // namespace kavrelon
