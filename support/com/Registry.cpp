#include "support/com/Registry.h"

#include <utility>

namespace kavrelon {
namespace {

class Key {
  public:
    Key() = default;
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() {
        if (key_ != nullptr) RegCloseKey(key_);
    }

    HKEY get() const { return key_; }
    HKEY* put() { return &key_; }

  private:
    HKEY key_ = nullptr;
};

std::wstring pathOf(const std::wstring& key) {
    return std::wstring(ClassesRoot::kPath) + L'\\' + key;
}

bool isEmpty(HKEY key) {
    DWORD subkeys = 0;
    DWORD values = 0;
    const LSTATUS asked = RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr,
                                           &values, nullptr, nullptr, nullptr, nullptr);
    return asked == ERROR_SUCCESS && subkeys == 0 && values == 0;
}

}  // namespace

LSTATUS ClassesRoot::add(const std::vector<RegistryGroup>& groups) const {
    std::vector<RegistryGroup> written;
    for (const RegistryGroup& group : groups) {
        if (group.yields && exists(group.owner.key) && !isOurs(group)) continue;
        written.push_back(group);
        const LSTATUS status = write(group);
        if (status != ERROR_SUCCESS) {
            remove(written);
            return status;
        }
    }
    return ERROR_SUCCESS;
}

LSTATUS ClassesRoot::remove(const std::vector<RegistryGroup>& groups) const {
    LSTATUS status = ERROR_SUCCESS;
    for (const RegistryGroup& group : groups) {
        if (!exists(group.key) || !isOurs(group)) continue;
        const LSTATUS removed = removeTree(group.key);
        if (removed == ERROR_SUCCESS) {
            pruneAbove(group.key);
        } else {
            status = removed;
        }
    }
    return status;
}

bool ClassesRoot::exists(const std::wstring& key) const {
    Key opened;
    return RegOpenKeyExW(hive_, pathOf(key).c_str(), 0, KEY_READ, opened.put()) == ERROR_SUCCESS;
}

bool ClassesRoot::isOurs(const RegistryGroup& group) const {
    if (group.owner.key.empty()) return true;
    const std::wstring path = pathOf(group.owner.key);
    const wchar_t* const name = group.owner.name.c_str();
    std::wstring data(group.owner.data.size() + 1, L'\0');
    DWORD bytes = static_cast<DWORD>(data.size()) * sizeof(wchar_t);
    const LSTATUS read = RegGetValueW(hive_, path.c_str(), name, RRF_RT_REG_SZ, nullptr, data.data(), &bytes);
    // The call also fails for data longer than ours, which has no room.
    return read == ERROR_SUCCESS && _wcsicmp(data.c_str(), group.owner.data.c_str()) == 0;
}

LSTATUS ClassesRoot::write(const RegistryGroup& group) const {
    LSTATUS status = group.owner.key.empty() ? ERROR_SUCCESS : write(group.owner);
    for (auto value = group.values.begin(); status == ERROR_SUCCESS && value != group.values.end(); ++value) {
        status = write(*value);
    }
    return status;
}

LSTATUS ClassesRoot::write(const RegistryValue& value) const {
    Key key;
    const LSTATUS created = RegCreateKeyExW(hive_, pathOf(value.key).c_str(), 0, nullptr,
                                            REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, key.put(), nullptr);
    if (created != ERROR_SUCCESS) return created;
    const DWORD bytes = static_cast<DWORD>(value.data.size() + 1) * sizeof(wchar_t);
    return RegSetValueExW(key.get(), value.name.c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(value.data.c_str()), bytes);
}

LSTATUS ClassesRoot::removeTree(const std::wstring& key) const {
    return RegDeleteTreeW(hive_, pathOf(key).c_str());
}

void ClassesRoot::pruneAbove(std::wstring key) const {
    for (auto end = key.rfind(L'\\'); end != std::wstring::npos; end = key.rfind(L'\\')) {
        key.resize(end);
        Key opened;
        const std::wstring path = pathOf(key);
        if (RegOpenKeyExW(hive_, path.c_str(), 0, KEY_READ, opened.put()) != ERROR_SUCCESS) return;
        if (!isEmpty(opened.get()) || RegDeleteKeyW(hive_, path.c_str()) != ERROR_SUCCESS) return;
    }
}

}  // namespace kavrelon
