#include "support/win32/SystemLibrary.h"

#include <array>
#include <string_view>

namespace kavrelon {

SystemLibrary::SystemLibrary(const wchar_t* file) noexcept {
    std::array<wchar_t, MAX_PATH> path{};
    const std::wstring_view name(file);
    const UINT folder = GetSystemDirectoryW(path.data(), MAX_PATH);
    if (folder == 0 || folder + name.size() + 2 > path.size()) return;
    path[folder] = L'\\';
    name.copy(path.data() + folder + 1, name.size());
    module_ = LoadLibraryW(path.data());
}

SystemLibrary::~SystemLibrary() {
    if (module_ != nullptr) FreeLibrary(module_);
}

FARPROC SystemLibrary::address(const char* name) const noexcept {
    return module_ != nullptr ? GetProcAddress(module_, name) : nullptr;
}

}  // namespace kavrelon
