#include "terminal/HostMenus.h"

#include <utility>

namespace kavrelon {
namespace {

constexpr const char* kDefaultKnowledgeBaseUrl = "http://localhost/";
constexpr const char* kAllCategories = "All Categories";
constexpr const char* kNoPrograms = "None";

}  // namespace

HostMenus::HostMenus() : mnKnowledgeBaseLink_{{kAllCategories, true}} {
    ClearKB();
    ClearRemote();
}

void HostMenus::ClearKB() {
    knowledgeBase_.assign(1, {kDefaultKnowledgeBaseUrl, kAllCategories});
}

void HostMenus::AddKB(std::string sURL, std::string sDesc) {
    const std::size_t n = knowledgeBase_.size();
    // An item that an earlier clearing left is used again.
    if (n == mnKnowledgeBaseLink_.size()) mnKnowledgeBaseLink_.emplace_back();
    mnKnowledgeBaseLink_[n] = {sDesc, true};
    knowledgeBase_.push_back({std::move(sURL), std::move(sDesc)});
}

void HostMenus::ClearRemote() {
    remote_.assign(1, {});
    mnuRemoteConnection_.assign(1, {kNoPrograms, false});
    mnuRemoteEnabled_ = false;
}

void HostMenus::AddRemote(std::string CommandLine, std::string Desc) {
    // The first program takes over the item that said "None".
    if (remote_.size() > 1) mnuRemoteConnection_.emplace_back();
    mnuRemoteConnection_.back() = {Desc, true};
    remote_.push_back({std::move(CommandLine), std::move(Desc)});
    mnuRemoteEnabled_ = true;
}

}  // namespace kavrelon
