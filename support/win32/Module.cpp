#include "support/win32/Module.h"

// The linker's name for the first byte of the image, whose address is the module's handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier)

namespace kavrelon {

HINSTANCE moduleInstance() noexcept {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

std::wstring modulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(moduleInstance(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace kavrelon
