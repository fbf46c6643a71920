#pragma once

#include <windows.h>

#include <optional>
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

/// Values that are written and removed together.
struct RegistryGroup {
    std::vector<RegistryValue> values = {};
    /// The value that shows by its data that the group is ours, and not another component's of the same name.
    /// It is written first. Without a key: no other component can have this group.
    RegistryValue owner = {};
    /// The value, of this group or another, that names the file which the group leads to. While it names
    /// another file, such as a newer copy's, the group is not removed. Without a key: no file matters.
    RegistryValue file = {};
    /// Whether `add` leaves another component's group in place instead of replacing it.
    bool yields = false;
};

/// The root of class registrations of the machine or of the user, for changes.
class ClassesRoot {
  public:
    static constexpr const wchar_t* kPath = L"Software\\Classes";

    /// `hive` is HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER. Missing rights show only with the first change.
    explicit ClassesRoot(HKEY hive) noexcept : hive_(hive) {}

    /// Writes the groups. After a failure, which is returned, everything is as it was before.
    LSTATUS add(const std::vector<RegistryGroup>& groups) const;

    /// Removes the values of those groups that exist and are ours, and the keys that become empty: what other
    /// components have put under our keys stays. Goes on after a failure; the last one is returned.
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
