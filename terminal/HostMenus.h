#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/EntryList.h"

namespace kavrelon {

/// The two menus that the host fills: web addresses ("Knowledge Base") and programs ("Remote").
///
/// Each menu is a list of entries and the items shown for it. The two differ on purpose: clearing the
/// knowledge base leaves its items on the menu. Entries that a full list has no room for are dropped.
class HostMenus {
  public:
    struct Item {
        std::string caption;
        bool enabled = true;
    };
    /// The items of one menu.
    struct Items {
        std::vector<Item> shown;  ///< the first ones, at most `kMostShown`
        std::size_t more = 0;     ///< how many come after those
    };
    /// A menu of more items takes the platform seconds to open, and nobody scrolls so far.
    static constexpr std::size_t kMostShown = 1000;

    HostMenus();

    /// Resets the knowledge-base list to its default entry; the items stay.
    void ClearKB();
    void AddKB(std::string_view sURL, std::string_view sDesc);
    /// Empties the remote list and its menu, leaving the disabled item "None".
    void ClearRemote() noexcept;
    void AddRemote(std::string_view CommandLine, std::string_view Desc);

    /// Entry 0 is the default of its list; knowledge-base item i is entry i, remote item i is entry i + 1.
    const EntryList& knowledgeBase() const { return knowledgeBase_; }
    const EntryList& remote() const { return remote_; }
    Items mnKnowledgeBaseLink() const;
    Items mnuRemoteConnection() const;
    bool mnuRemoteEnabled() const { return remote_.size() > 1; }

  private:
    EntryList knowledgeBase_;
    EntryList remote_;
    // The items of a knowledge base that was cleared: those that are shown, and how many there are.
    EntryList clearedItems_;
    std::size_t clearedCount_ = 0;
};

}  // namespace kavrelon
