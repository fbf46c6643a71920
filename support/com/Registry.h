#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kavrelon {

/// A text value under the root of class registrations. An empty name means the key's default value.
struct RegistryValue {
    std::wstring key;
    std::wstring name;
    std::wstring data;
    bool operator==(const RegistryValue&) const = default;
};

/// A key with everything under it, written and removed as one.
struct RegistryGroup {
    std::wstring key;
    std::vector<RegistryValue> values = {};
    /// The value that shows by its data that the group is ours, and not another component's of the same name.
    /// It is written first. Without a key: no other component can have this group.
    RegistryValue owner = {};
    /// Whether `add` leaves another component's group in place instead of replacing it.
    bool yields = false;
};

/// The root of class registrations of the machine or of the user, for changes.
class ClassesRoot {
  public:
    static constexpr const wchar_t* kPath = L"Software\\Classes";

    /// `hive` is HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER. Missing rights show only with the first change.
    explicit ClassesRoot(HKEY hive) noexcept : hive_(hive) {}

    /// Writes the groups. After a failure, which is returned, the groups written so far are removed again.
    LSTATUS add(const std::vector<RegistryGroup>& groups) const;

    /// Removes those groups that exist and are ours, and the keys above them that become empty. Goes on after
    /// a failure; the last one is returned.
    LSTATUS remove(const std::vector<RegistryGroup>& groups) const;

  private:
    bool exists(const std::wstring& key) const;
    bool isOurs(const RegistryGroup& group) const;
    LSTATUS write(const RegistryGroup& group) const;
    LSTATUS write(const RegistryValue& value) const;
    LSTATUS removeTree(const std::wstring& key) const;
    void pruneAbove(std::wstring key) const;

    HKEY hive_;
};

}  // namespace kavrelon
