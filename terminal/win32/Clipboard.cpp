#include "terminal/win32/Clipboard.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <type_traits>

#include "terminal/win32/OemCharacters.h"

namespace kavrelon {
namespace {

constexpr int kAttempts = 10;
constexpr DWORD kPauseMilliseconds = 10;

struct FreeGlobal {
    void operator()(HGLOBAL memory) const noexcept { GlobalFree(memory); }
};
using GlobalMemory = std::unique_ptr<std::remove_pointer_t<HGLOBAL>, FreeGlobal>;

/// Access to a block of global memory during a scope.
class Locked {
  public:
    explicit Locked(HGLOBAL memory) : memory_(memory), data_(GlobalLock(memory)) {}
    ~Locked() {
        if (data_ != nullptr) GlobalUnlock(memory_);
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

    void* data() const { return data_; }

  private:
    HGLOBAL memory_;
    void* data_;
};

}  // namespace

Clipboard::Clipboard(HWND owner) {
    for (int attempt = 0; attempt < kAttempts && !open_; ++attempt) {
        if (attempt > 0) Sleep(kPauseMilliseconds);
        open_ = OpenClipboard(owner) != FALSE;
    }
}

std::optional<std::string> Clipboard::text() const {
    HGLOBAL memory = open_ ? GetClipboardData(CF_TEXT) : nullptr;
    if (memory == nullptr) return std::nullopt;
    const Locked locked(memory);
    if (locked.data() == nullptr) return std::nullopt;
    const auto* first = static_cast<const char*>(locked.data());
    return std::string(first, strnlen(first, GlobalSize(memory)));
}

bool Clipboard::setText(const std::string& text) {
    if (!open_) return false;
    const std::wstring shown = shownCharacters(text);
    const std::size_t bytes = (shown.size() + 1) * sizeof(wchar_t);
    GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, bytes));
    if (memory == nullptr) return false;
    {
        const Locked locked(memory.get());
        if (locked.data() == nullptr) return false;
        std::memcpy(locked.data(), shown.c_str(), bytes);
    }
    if (!clear() || SetClipboardData(CF_UNICODETEXT, memory.get()) == nullptr) return false;
    // The clipboard owns the memory now.
    static_cast<void>(memory.release());
    return true;
}

}  // namespace kavrelon
