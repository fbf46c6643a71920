#include "terminal/win32/Clipboard.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "support/win32/WideText.h"
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

/// A block that holds one part after the other; null when there is no memory.
GlobalMemory blockOf(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (const std::string_view part : parts) size += part.size();
    GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, size));
    if (memory == nullptr) return nullptr;
    const Locked locked(memory.get());
    if (locked.data() == nullptr) return nullptr;
    char* to = static_cast<char*>(locked.data());
    for (const std::string_view part : parts) to = std::ranges::copy(part, to).out;
    return memory;
}

template <class Value>
std::string_view bytesIn(const Value* values, std::size_t count) {
    return {reinterpret_cast<const char*>(values), count * sizeof(Value)};
}

/// Gives memory to the open clipboard, which owns it from then on.
bool store(UINT format, GlobalMemory memory) {
    if (SetClipboardData(format, memory.get()) == nullptr) return false;
    static_cast<void>(memory.release());
    return true;
}

/// What the open clipboard holds in a format.
template <class Value>
class Stored {
  public:
    explicit Stored(UINT format) : memory_(GetClipboardData(format)) {
        if (memory_ != nullptr) locked_.emplace(memory_);
    }

    explicit operator bool() const { return locked_ && locked_->data() != nullptr; }
    const Value* begin() const { return static_cast<const Value*>(locked_->data()); }
    /// How many values there is room for.
    std::size_t room() const { return GlobalSize(memory_) / sizeof(Value); }

  private:
    HGLOBAL memory_;
    std::optional<Locked> locked_;
};

std::optional<std::string> storedBytes() {
    const Stored<char> stored(Clipboard::bytesFormat());
    std::uint32_t size = 0;
    if (!stored || stored.room() < sizeof size) return std::nullopt;
    std::memcpy(&size, stored.begin(), sizeof size);
    // Any program may store something under the name.
    if (size > stored.room() - sizeof size) return std::nullopt;
    return std::string(stored.begin() + sizeof size, size);
}

}  // namespace

Clipboard::Clipboard(HWND owner) {
    for (int attempt = 0; attempt < kAttempts && !open_; ++attempt) {
        if (attempt > 0) Sleep(kPauseMilliseconds);
        open_ = OpenClipboard(owner) != FALSE;
    }
}

UINT Clipboard::bytesFormat() {
    static const UINT format = RegisterClipboardFormatW(L"kavrelon terminal text");
    return format;
}

std::optional<std::string> Clipboard::text(bool bytes) const {
    if (!open_) return std::nullopt;
    if (bytes) {
        if (auto stored = storedBytes()) return stored;
    }
    const Stored<wchar_t> stored(CF_UNICODETEXT);
    if (!stored) return std::nullopt;
    return toAnsi({stored.begin(), wcsnlen(stored.begin(), stored.room())});
}

bool Clipboard::setText(const std::string& text) {
    if (!open_) return false;
    const std::wstring shown = shownCharacters(text);
    const auto size = static_cast<std::uint32_t>(text.size());
    GlobalMemory characters = blockOf({bytesIn(shown.c_str(), shown.size() + 1)});
    GlobalMemory bytes = blockOf({bytesIn(&size, 1), text});
    if (characters == nullptr || bytes == nullptr || !clear()) return false;
    return store(CF_UNICODETEXT, std::move(characters)) && store(bytesFormat(), std::move(bytes));
}

}  // namespace kavrelon
