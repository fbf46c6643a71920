// Whatever the blocks that a stream comes in, the recogniser finds the same, and loses no byte.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "fuzz/Input.h"
#include "headless/HeadlessSession.h"
#include "recognizer/EscapeRecognizer.h"
#include "support/Bytes.h"

namespace {

using namespace kavrelon;
using fuzz::Bytes;

/// Plain and dropped bytes as they are, sequences by row and fields.
class Transcript final : public EscapeSink {
  public:
    void plain(Bytes bytes) override { add('p', textOf(bytes)); }
    void unmatched(Bytes bytes) override {
        add('u', textOf(bytes));
        last_ = 0;
    }
    void sequence(std::int16_t index, std::span<const std::string_view> fields) override {
        add('s', std::to_string(index));
        for (const std::string_view field : fields) add('f', field);
        last_ = 0;
    }

    std::string text;

  private:
    void add(char kind, std::string_view bytes) {
        fuzz::require(!bytes.empty() || kind == 'f', "nothing is told of no bytes");
        if (kind != 'p' || last_ != 'p') text += kind;
        text += bytes;
        last_ = kind;
    }

    char last_ = 0;
};

std::string recognise(Bytes stream, std::size_t blockLength) {
    Transcript transcript;
    EscapeRecognizer recognizer(HeadlessSession::escapeTree(), transcript);
    fuzz::feedInBlocks(stream, blockLength, [&](Bytes block) { recognizer.feed(block); });
    // CAN ends whatever is unfinished.
    recognizer.feed(std::array<std::uint8_t, 1>{24});
    return transcript.text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::require(recognise(input.stream, input.blockLength()) == recognise(input.stream, size + 1),
                  "blocks do not matter");
    return 0;
}
