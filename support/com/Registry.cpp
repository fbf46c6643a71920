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

/// All that a group writes, in this order.
std::vector<RegistryValue> valuesOf(const RegistryGroup& group) {
    std::vector<RegistryValue> values;
    if (!group.owner.key.empty()) values.push_back(group.owner);
    values.insert(values.end(), group.values.begin(), group.values.end());
    return values;
}

}  // namespace

LSTATUS ClassesRoot::add(const std::vector<RegistryGroup>& groups) const {
    std::vector<RegistryValue> written;
    std::vector<RegistryValue> replaced;
    for (const RegistryGroup& group : groups) {
        if (group.yields && exists(group.owner.key) && !holds(group.owner)) continue;
        for (const RegistryValue& value : valuesOf(group)) {
            if (const auto before = text(value)) replaced.push_back({value.key, value.name, *before});
            written.push_back(value);
            const LSTATUS status = write(value);
            if (status == ERROR_SUCCESS) continue;
            for (const RegistryValue& each : written) erase(each);
            for (const RegistryValue& each : replaced) write(each);
            return status;
        }
    }
    return ERROR_SUCCESS;
}

LSTATUS ClassesRoot::remove(const std::vector<RegistryGroup>& groups) const {
    // Which are ours is asked of values that go on the way.
    std::vector<RegistryValue> ours;
    for (const RegistryGroup& group : groups) {
        if (!holds(group.owner) || !holds(group.file)) continue;
        const std::vector<RegistryValue> values = valuesOf(group);
        ours.insert(ours.end(), values.begin(), values.end());
    }
    LSTATUS status = ERROR_SUCCESS;
    for (const RegistryValue& value : ours) {
        const LSTATUS erased = erase(value);
        if (erased != ERROR_SUCCESS) status = erased;
    }
    return status;
}

bool ClassesRoot::exists(const std::wstring& key) const {
    Key opened;
    return RegOpenKeyExW(hive_, pathOf(key).c_str(), 0, KEY_READ, opened.put()) == ERROR_SUCCESS;
}

std::optional<std::wstring> ClassesRoot::text(const RegistryValue& place) const {
    const std::wstring path = pathOf(place.key);
    const auto read = [&](wchar_t* data, DWORD& bytes) {
        return RegGetValueW(hive_, path.c_str(), place.name.c_str(), RRF_RT_REG_SZ, nullptr, data, &bytes);
    };
    DWORD bytes = 0;
    if (read(nullptr, bytes) != ERROR_SUCCESS) return std::nullopt;
    std::wstring data(bytes / sizeof(wchar_t), L'\0');
    if (read(data.data(), bytes) != ERROR_SUCCESS) return std::nullopt;
    data.resize(bytes / sizeof(wchar_t) - 1);
    return data;
}

/// Whether the registry has this value. One without a key stands for no condition.
bool ClassesRoot::holds(const RegistryValue& value) const {
    if (value.key.empty()) return true;
    const std::optional<std::wstring> data = text(value);
    return data && _wcsicmp(data->c_str(), value.data.c_str()) == 0;
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

LSTATUS ClassesRoot::erase(const RegistryValue& value) const {
    const LSTATUS erased = RegDeleteKeyValueW(hive_, pathOf(value.key).c_str(), value.name.c_str());
    if (erased == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    if (erased == ERROR_SUCCESS) prune(value.key);
    return erased;
}

/// Removes a key, and those above it, as far as they are empty.
void ClassesRoot::prune(std::wstring key) const {
    for (;;) {
        Key opened;
        const std::wstring path = pathOf(key);
        if (RegOpenKeyExW(hive_, path.c_str(), 0, KEY_READ, opened.put()) != ERROR_SUCCESS) return;
        if (!isEmpty(opened.get()) || RegDeleteKeyW(hive_, path.c_str()) != ERROR_SUCCESS) return;
        const auto end = key.rfind(L'\\');
        if (end == std::wstring::npos) return;
        key.resize(end);
    }
}

}  // namespace kavrelon
