#include "bench/Engines.h"
#include "headless/HeadlessSession.h"

namespace kavrelon::bench {
namespace {

class OurEngine final : public Engine {
  public:
    OurEngine(ScreenExtent extent, bool paintOn) {
        session_.connect();
        auto lines = static_cast<std::int16_t>(extent.lines);
        session_.screen().ScreenSize(static_cast<std::int16_t>(extent.columns), lines);
        session_.screen().PaintOn(paintOn);
        // The escape tree is compiled for the first block: let that not be one that is measured.
        session_.feed({});
    }

    void feed(std::span<const std::uint8_t> block) override { session_.feed(block); }

    char shown(int column, int line) const override {
        const std::uint8_t code = session_.stored(column, line);
        return code == 0 ? ' ' : static_cast<char>(code);
    }

  private:
    HeadlessSession session_;
};

}  // namespace

std::unique_ptr<Engine> makeOurEngine(ScreenExtent extent, bool paintOn) {
    return std::make_unique<OurEngine>(extent, paintOn);
}

}  // namespace kavrelon::bench
