#pragma once

#include <windows.h>

#include <algorithm>
#include <span>
#include <stdexcept>
#include <vector>

namespace kavrelon {

/// Counts the calls that this program makes of an imported drawing function, by the context drawn on. One at
/// a time for functions of a type.
template <class Function>
class CountedCalls;

template <class Result, class... Rest>
class CountedCalls<Result WINAPI(HDC, Rest...)> {
  public:
    explicit CountedCalls(Result(WINAPI* function)(HDC, Rest...)) : slot_(slotOf(function)) {
        original = function;
        targets.clear();
        replace(&counting);
    }
    ~CountedCalls() { replace(original); }
    CountedCalls(const CountedCalls&) = delete;
    CountedCalls& operator=(const CountedCalls&) = delete;

    int on(HDC context) const { return static_cast<int>(std::ranges::count(targets, context)); }

  private:
    using Pointer = Result(WINAPI*)(HDC, Rest...);

    static Result WINAPI counting(HDC target, Rest... rest) {
        targets.push_back(target);
        return original(target, rest...);
    }
    static Pointer& slotOf(Pointer function) {
        auto* const image = reinterpret_cast<BYTE*>(GetModuleHandleA(nullptr));
        const auto* const start = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
        const auto* const header = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + start->e_lfanew);
        const IMAGE_DATA_DIRECTORY& table = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
        const std::span slots(reinterpret_cast<Pointer*>(image + table.VirtualAddress),
                              table.Size / sizeof(Pointer));
        const auto found = std::ranges::find(slots, function);
        if (found == slots.end()) throw std::runtime_error("the function is not imported");
        return *found;
    }
    void replace(Pointer function) {
        DWORD before = 0;
        VirtualProtect(&slot_, sizeof slot_, PAGE_READWRITE, &before);
        slot_ = function;
        VirtualProtect(&slot_, sizeof slot_, before, &before);
    }

    static inline Pointer original = nullptr;
    static inline std::vector<HDC> targets;
    Pointer& slot_;
};

template <class Result, class... Rest>
CountedCalls(Result(WINAPI*)(HDC, Rest...)) -> CountedCalls<Result WINAPI(HDC, Rest...)>;

}  // namespace kavrelon
