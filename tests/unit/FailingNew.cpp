#include "tests/unit/FailingNew.h"

#include <cstdlib>
#include <new>

namespace kavrelon {
namespace {

/// How many allocations are left to the one that fails, 0 when none is to.
std::size_t left = 0;

void* allocate(std::size_t size) noexcept {
    if (left != 0 && --left == 0) return nullptr;
    return std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size) {
    if (void* const memory = allocate(size)) return memory;
    throw std::bad_alloc();
}

}  // namespace

FailNth::FailNth(std::size_t n) {
    left = n;
}

FailNth::~FailNth() {
    left = 0;
}

bool FailNth::failed() const {
    return left == 0;
}

}  // namespace kavrelon

// All of the ordinary ones: a program that replaced only some would mix two heaps, which sanitizers report.
void* operator new(std::size_t size) {
    return kavrelon::allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return kavrelon::allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return kavrelon::allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return kavrelon::allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
