#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavrelon {

/// Pairs of texts that the remote side sends, numbered from 0.
///
/// All texts stand in one block of memory: a full list of short ones takes little more than its characters,
/// and clearing it gives the memory back.
class EntryList {
  public:
    static constexpr std::size_t kMostEntries = 16000;
    static constexpr std::size_t kMostBytes = 4 << 20;
    /// No command that is longer is ever started. What is stored of it is one longer than this, so that
    /// whoever would start it sees as much.
    static constexpr std::size_t kLongestTarget = 8000;
    /// A longer description is cut, with dots at its end: no screen is wide enough for it.
    static constexpr std::size_t kLongestDescription = 200;

    /// Adds a pair at the end; false when the list is full, and nothing is added.
    bool add(std::string_view target, std::string_view description);
    /// Removes all pairs but the first.
    void keepFirst() noexcept;

    std::size_t size() const noexcept { return ends_.size(); }
    /// A URL, or a command line. For entries that there are; good until the list changes.
    std::string_view target(std::size_t entry) const;
    std::string_view description(std::size_t entry) const;

  private:
    struct Ends {
        std::uint32_t target;
        std::uint32_t description;
    };

    std::string texts_;
    std::vector<Ends> ends_;
};

}  // namespace kavrelon
