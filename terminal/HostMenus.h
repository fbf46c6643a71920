#pragma once

#include <string>
#include <vector>

namespace kavrelon {

/// The two menus that the host fills: web addresses ("Knowledge Base") and programs ("Remote").
///
/// Each menu is a list of entries and the items shown for it. The two differ on purpose: clearing the
/// knowledge base leaves its items on the menu.
class HostMenus {
  public:
    struct Entry {
        std::string target;  ///< a URL, or a command line
        std::string description;
    };
    struct Item {
        std::string caption;
        bool enabled = true;
    };

    HostMenus();

    /// Resets the knowledge-base list to its default entry; the items stay.
    void ClearKB();
    void AddKB(std::string sURL, std::string sDesc);
    /// Empties the remote list and its menu, leaving the disabled item "None".
    void ClearRemote();
    void AddRemote(std::string CommandLine, std::string Desc);

    /// Entry 0 is the default of its list; knowledge-base item i is entry i, remote item i is entry i + 1.
    const std::vector<Entry>& knowledgeBase() const { return knowledgeBase_; }
    const std::vector<Entry>& remote() const { return remote_; }
    const std::vector<Item>& mnKnowledgeBaseLink() const { return mnKnowledgeBaseLink_; }
    const std::vector<Item>& mnuRemoteConnection() const { return mnuRemoteConnection_; }
    bool mnuRemoteEnabled() const { return mnuRemoteEnabled_; }

  private:
    std::vector<Entry> knowledgeBase_;
    std::vector<Entry> remote_;
    std::vector<Item> mnKnowledgeBaseLink_;
    std::vector<Item> mnuRemoteConnection_;
    bool mnuRemoteEnabled_ = false;
};

}  // namespace kavrelon
