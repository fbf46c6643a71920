#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace kavrelon {

/// A text value below the root of class registrations. An empty name is the key's default value.
struct RegistryValue {
    std::wstring key;
    std::wstring name;
    std::wstring data;
    bool operator==(const RegistryValue&) const = default;
};

/// Values that are written and removed together.
struct RegistryGroup {
    std::vector<RegistryValue> values = {};
    /// The value, written before the others, whose data tells that the group is this component's and not
    /// another's of the same name. One without a key is not asked.
    RegistryValue owner = {};
    /// The value, of this group or another, that names the file which the group leads to. While it names
    /// another file, of a newer copy say, the group is not removed.
    RegistryValue file = {};
    /// Another component's group is left as it is, and not replaced.
    bool yields = false;
};

/// A root of class registrations, of the machine or of the user, open for changes.
class ClassesRoot {
  public:
    static constexpr const wchar_t* kPath = L"Software\\Classes";

    /// `hive` is HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER. Whether it can be opened shows with the first
    /// change.
    explicit ClassesRoot(HKEY hive) noexcept : hive_(hive) {}

    /// Writes the groups. On a failure, which is returned, everything is put back as it was.
    LSTATUS add(const std::vector<RegistryGroup>& groups) const;

    /// Removes the values of the groups that are there and ours, and the keys that this leaves empty: what
    /// others have put below ours stays. What cannot be removed does not keep the rest; the last failure is
    /// returned.
    LSTATUS remove(const std::vector<RegistryGroup>& groups) const;

  private:
    bool exists(const std::wstring& key) const;
    std::optional<std::wstring> text(const RegistryValue& place) const;
    bool holds(const RegistryValue& value) const;
    LSTATUS write(const RegistryValue& value) const;
    LSTATUS erase(const RegistryValue& value) const;
    void prune(std::wstring key) const;

    HKEY hive_;
};

}  // namespace kavrelon
