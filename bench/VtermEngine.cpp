#include <vterm.h>

#include "bench/Engines.h"

namespace kavrelon::bench {
namespace {

class VtermEngine final : public Engine {
  public:
    explicit VtermEngine(ScreenExtent extent) : vterm_(vterm_new(extent.lines, extent.columns), vterm_free) {
        vterm_set_utf8(vterm_.get(), 0);
        screen_ = vterm_obtain_screen(vterm_.get());
        vterm_screen_set_callbacks(screen_, nullptr, nullptr);
        vterm_screen_set_damage_merge(screen_, VTERM_DAMAGE_SCROLL);
        vterm_screen_reset(screen_, 1);
    }

    void feed(std::span<const std::uint8_t> block) override {
        vterm_input_write(vterm_.get(), reinterpret_cast<const char*>(block.data()), block.size());
    }

    char shown(int column, int line) const override {
        VTermScreenCell cell{};
        vterm_screen_get_cell(screen_, {line, column}, &cell);
        return cell.chars[0] == 0 ? ' ' : static_cast<char>(cell.chars[0]);
    }

  private:
    std::unique_ptr<VTerm, decltype(&vterm_free)> vterm_;
    VTermScreen* screen_;
};

}  // namespace

std::unique_ptr<Engine> makeVtermEngine(ScreenExtent extent) {
    return std::make_unique<VtermEngine>(extent);
}

}  // namespace kavrelon::bench
