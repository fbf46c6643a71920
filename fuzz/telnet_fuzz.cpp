// Whatever the blocks that a stream comes in, the telnet filter shows and answers the same, and not too much;
// and so do the two filters behind it, for characters and colours.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/Input.h"
#include "samplehost/Charset.h"
#include "samplehost/DefaultColours.h"
#include "samplehost/TelnetFilter.h"
#include "support/Bytes.h"

namespace {

using namespace kavrelon;
using fuzz::Bytes;

class Side final : public TelnetSink {
  public:
    void application(Bytes bytes) override {
        shown.insert(shown.end(), bytes.begin(), bytes.end());
        std::string decoded;
        decoder.decode(textOf(bytes), decoded);
        colours.rewrite(decoded, translated);
    }
    void network(Bytes bytes) override { sent.insert(sent.end(), bytes.begin(), bytes.end()); }

    void interrupted() override {
        decoder.reset();
        colours.reset();
    }

    TelnetFilter filter{{}, *this};
    CharsetDecoder decoder{Charset::Utf8};
    DefaultColours colours;
    std::vector<std::uint8_t> shown;
    std::string translated;
    std::vector<std::uint8_t> sent;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    // A stream that begins with a Data Mark's byte begins within a Synch.
    const bool synch = !input.stream.empty() && input.stream[0] == 242;
    Side whole;
    if (synch) whole.filter.synch();
    whole.filter.feed(input.stream);
    Side cut;
    if (synch) cut.filter.synch();
    fuzz::feedInBlocks(input.stream, input.blockLength(), [&](Bytes block) { cut.filter.feed(block); });
    fuzz::require(whole.shown == cut.shown && whole.sent == cut.sent, "blocks do not matter");
    fuzz::require(whole.translated == cut.translated, "blocks do not matter to characters and colours");
    fuzz::require(whole.shown.size() <= input.stream.size(), "nothing is shown that was not received");
    fuzz::require(whole.sent.size() <= 6 * input.stream.size(), "answers are in proportion");
    return 0;
}
