#pragma once

#include <windows.h>

#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

namespace kavrelon {

/// Replaces functions that a loaded module imports, for as long as it lives: for tests and benchmarks, which
/// take the module as it was built and count or fail its calls of the platform.
class ReplacedImports {
  public:
    /// The functions by name. Those that the module does not import are left out.
    ReplacedImports(HMODULE module, const std::map<std::string_view, void*>& functions) {
        const auto* const dos = at<IMAGE_DOS_HEADER>(module, 0);
        const auto* const headers = at<IMAGE_NT_HEADERS32>(module, static_cast<DWORD>(dos->e_lfanew));
        const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        for (auto* from = at<IMAGE_IMPORT_DESCRIPTOR>(module, imports.VirtualAddress); from->Name != 0;
             ++from) {
            const auto* name = at<IMAGE_THUNK_DATA32>(module, from->OriginalFirstThunk);
            for (auto* slot = at<void*>(module, from->FirstThunk); name->u1.AddressOfData != 0;
                 ++name, ++slot) {
                if (IMAGE_SNAP_BY_ORDINAL32(name->u1.Ordinal)) continue;
                const auto found =
                    functions.find(at<IMAGE_IMPORT_BY_NAME>(module, name->u1.AddressOfData)->Name);
                if (found == functions.end()) continue;
                replaced_.push_back({slot, *slot});
                write(slot, found->second);
            }
        }
    }
    ~ReplacedImports() {
        for (const auto& [slot, before] : replaced_) write(slot, before);
    }
    ReplacedImports(const ReplacedImports&) = delete;
    ReplacedImports& operator=(const ReplacedImports&) = delete;

    /// How many functions were replaced.
    std::size_t count() const { return replaced_.size(); }

  private:
    struct Replaced {
        void** slot;
        void* before;
    };

    template <class Type>
    static Type* at(HMODULE module, DWORD place) {
        return reinterpret_cast<Type*>(reinterpret_cast<std::byte*>(module) + place);
    }

    static void write(void** slot, void* function) {
        DWORD before = 0;
        VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
        *slot = function;
        VirtualProtect(slot, sizeof *slot, before, &before);
    }

    std::vector<Replaced> replaced_;
};

}  // namespace kavrelon
