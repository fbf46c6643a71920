#pragma once

#include <windows.h>

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

/// One key with everything below it, written and removed together.
struct RegistryGroup {
    std::wstring key;
    std::vector<RegistryValue> values = {};
    /// The value, written before the others, whose data tells that the group is ours and not another
    /// component's of the same name; one without a key stands for groups that nobody else can have.
    RegistryValue owner = {};
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

    /// Writes the groups. On a failure, which is returned, those written are removed again.
    LSTATUS add(const std::vector<RegistryGroup>& groups) const;

    /// Removes the groups that are there and ours, and the keys above them that this leaves empty. What
    /// cannot be removed does not keep the rest; the last failure is returned.
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
