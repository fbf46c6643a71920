#include "samplehost/com/ModuleFile.h"

#include <array>
#include <cstring>

#include "support/win32/WideText.h"

namespace kavrelon {
namespace {

// The type of version resources, whose macro depends on the character width, and the number that they have.
constexpr WORD kVersionType = 16;
constexpr WORD kVersionNumber = 1;
// What stands before the numbers: three sizes, the name "VS_VERSION_INFO" and padding.
constexpr std::size_t kNumbersAt = 40;

std::string versionOf(HMODULE module) {
    HRSRC const resource =
        FindResourceW(module, MAKEINTRESOURCEW(kVersionNumber), MAKEINTRESOURCEW(kVersionType));
    VS_FIXEDFILEINFO numbers{};
    if (resource == nullptr || SizeofResource(module, resource) < kNumbersAt + sizeof numbers) return {};
    const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    if (bytes == nullptr) return {};
    std::memcpy(&numbers, bytes + kNumbersAt, sizeof numbers);
    if (numbers.dwSignature != VS_FFI_SIGNATURE) return {};
    return std::to_string(HIWORD(numbers.dwFileVersionMS)) + '.' +
           std::to_string(LOWORD(numbers.dwFileVersionMS)) + '.' +
           std::to_string(HIWORD(numbers.dwFileVersionLS));
}

ModuleFile fileOf(HMODULE module) {
    std::array<wchar_t, 1024> path{};
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (length >= path.size()) return {};
    return {toAnsi({path.data(), length}), versionOf(module)};
}

}  // namespace

ModuleFile ModuleFile::ofProgram() {
    return fileOf(nullptr);
}

ModuleFile ModuleFile::ofObject(const IUnknown& object) {
    // What an object begins with is the address of its table of functions, which lies in the library.
    const auto* const functions = *reinterpret_cast<const wchar_t* const*>(&object);
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, functions,
            &module)) {
        return {};
    }
    return fileOf(module);
}

}  // namespace kavrelon
