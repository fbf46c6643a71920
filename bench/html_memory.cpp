// Prints for each document the most bytes of the heap that the label holds at a time while it parses the
// document, lays it out and draws it.

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>

#include "headless/HtmlDocuments.h"
#include "headless/LabelEngine.h"
#include "headless/NumberIn.h"

namespace {

std::size_t held = 0;
std::size_t mostHeld = 0;

/// The size of what is put before each block: enough for the block's length, and the block stays aligned.
constexpr std::size_t kHeader = alignof(std::max_align_t);

}  // namespace

void* operator new(std::size_t size) {
    auto* const header = static_cast<std::size_t*>(std::malloc(size + kHeader));
    if (header == nullptr) throw std::bad_alloc();
    *header = size;
    held += size;
    mostHeld = std::max(mostHeld, held);
    return reinterpret_cast<std::byte*>(header) + kHeader;
}

void operator delete(void* block) noexcept {
    if (block == nullptr) return;
    void* const header = static_cast<std::byte*>(block) - kHeader;
    held -= *static_cast<std::size_t*>(header);
    std::free(header);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

int main(int argc, char** argv) {
    using namespace kavrelon;
    const auto length = argc == 2 ? numberIn<std::size_t>(argv[1]) : std::nullopt;
    if (!length || *length < 200) {
        std::fputs("usage: html_memory LENGTH\n", stderr);
        return 2;
    }
    for (const HtmlDocumentKind& kind : htmlDocumentKinds()) {
        const std::string html = kind.make(*length);
        const std::size_t before = held;
        mostHeld = held;
        LabelEngine label;
        label.parse(html);
        label.layOut({kPageWidth, 0});
        label.draw();
        std::printf("%s %zu\n", kind.name, mostHeld - before);
    }
}
