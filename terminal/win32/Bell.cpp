#include "terminal/win32/Bell.h"

#include <windows.h>

#include <array>
#include <atomic>
#include <cstddef>

#include "terminal/BellLimit.h"

namespace kavrelon {
namespace {

constexpr SIZE_T kStackBytes = 64 * 1024;

/// One for each tone, so that none silences another.
struct Voice {
    ToneSound tone;
    /// Set while a request is looked at and while the thread runs; who set it may touch the limit.
    std::atomic<bool> busy{false};
    BellLimit limit{};
};
std::array<Voice, kToneSounds.size()> voices{{{kToneSounds[0]}, {kToneSounds[1]}}};

HMODULE thisModule(DWORD flags) {
    HMODULE module = nullptr;
    GetModuleHandleExA(flags | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCSTR>(&voices),
                       &module);
    return module;
}

DWORD WINAPI sound(void* argument) {
    auto& voice = *static_cast<Voice*>(argument);
    Beep(static_cast<DWORD>(voice.tone.frequencyHertz), static_cast<DWORD>(voice.tone.milliseconds));
    const HMODULE self = thisModule(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
    voice.busy = false;
    FreeLibraryAndExitThread(self, 0);
}

bool startThread(Voice& voice) {
    // Keeps this code in memory until the thread has left it, whatever the host unloads.
    const HMODULE self = thisModule(0);
    if (self == nullptr) return false;
    const HANDLE thread =
        CreateThread(nullptr, kStackBytes, sound, &voice, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) {
        FreeLibrary(self);
        return false;
    }
    CloseHandle(thread);
    return true;
}

}  // namespace

bool soundBell(Tone tone) noexcept {
    Voice& voice = voices[static_cast<std::size_t>(tone)];
    if (voice.busy.exchange(true)) return false;
    if (voice.limit.mayRing(GetTickCount()) && startThread(voice)) return true;
    voice.busy = false;
    return false;
}

}  // namespace kavrelon
