// Whatever the blocks that a stream comes in, the telnet filter shows and answers the same, and not too much.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fuzz/Input.h"
#include "samplehost/TelnetFilter.h"

namespace {

using namespace kavrelon;
using fuzz::Bytes;

class Side final : public TelnetSink {
  public:
    void application(Bytes bytes) override { shown.insert(shown.end(), bytes.begin(), bytes.end()); }
    void network(Bytes bytes) override { sent.insert(sent.end(), bytes.begin(), bytes.end()); }

    TelnetFilter filter{{}, *this};
    std::vector<std::uint8_t> shown;
    std::vector<std::uint8_t> sent;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    Side whole;
    whole.filter.feed(input.stream);
    Side cut;
    fuzz::feedInBlocks(input.stream, input.blockLength(), [&](Bytes block) { cut.filter.feed(block); });
    fuzz::require(whole.shown == cut.shown && whole.sent == cut.sent, "blocks do not matter");
    fuzz::require(whole.shown.size() <= input.stream.size(), "nothing is shown that was not received");
    fuzz::require(whole.sent.size() <= 6 * input.stream.size(), "answers are in proportion");
    return 0;
}
