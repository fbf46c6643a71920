// Whatever the remote side, the host, the user and the desktop do, and in the middle of what: the plug-in
// keeps its laws, and leaves nothing behind.

#include <cstddef>
#include <cstdint>

#include "fuzz/PluginDriver.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kavrelon::fuzz;
    PluginDriver(FuzzInput({data, size})).run();
    return 0;
}
