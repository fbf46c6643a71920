#pragma once

#include <windows.h>

#include <cstddef>

#include <gtest/gtest.h>

namespace kavrelon {

// How much this process has of what it can run out of.

/// The drawing objects, counted in the table that the process shares with the platform: not every platform
/// has a count of its own.
inline int countGdiObjects() {
    constexpr std::size_t kTableInProcess = 0x94, kEntries = 65536, kEntrySize = 24, kTypeInEntry = 14;
    const char* process = nullptr;
    asm("movl %%fs:0x30, %0" : "=r"(process));
    const char* table = *reinterpret_cast<const char* const*>(process + kTableInProcess);
    int count = 0;
    for (std::size_t entry = 0; entry < kEntries; ++entry) {
        if (table[entry * kEntrySize + kTypeInEntry] != 0) ++count;
    }
    return count;
}

inline DWORD countHandles() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

/// The memory that is this process's own.
inline std::size_t committedBytes() {
    std::size_t sum = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0; at += region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) sum += region.RegionSize;
    }
    return sum;
}

/// Expects that `work`, which was done once already, takes nothing for good.
template <class Work>
void expectNothingLeftBehind(Work work) {
    const int objects = countGdiObjects();
    const DWORD handles = countHandles();
    const std::size_t memory = committedBytes();
    work();
    EXPECT_EQ(countGdiObjects(), objects);
    EXPECT_EQ(countHandles(), handles);
    EXPECT_LT(committedBytes(), memory + 256 * 1024);
}

}  // namespace kavrelon
