#include "terminal/Painter.h"

#include <algorithm>
#include <array>

#include "terminal/ScreenLine.h"

namespace kavrelon {
namespace {

constexpr auto kSpaces = [] {
    std::array<std::uint8_t, kMaxScreen> spaces{};
    spaces.fill(' ');
    return spaces;
}();

}  // namespace

void Painter::use(const Pen& pen) {
    if (penKnown_ && pen == penInUse_) return;
    surface_->setPen(pen);
    penInUse_ = pen;
    penKnown_ = true;
}

void Painter::drawCell(std::uint8_t ch, int column, int row, const Pen& pen) {
    use(pen);
    const std::uint8_t shown = ch == 0 ? std::uint8_t{' '} : ch;
    surface_->drawText(grid_.cellOrigin(column, row), {&shown, 1});
    if (useMemoryDC_) surface_->keepBlock(grid_.cellBlock(column, row));
}

void Painter::drawBlanks(int column, int row, int count, const Pen& pen) {
    count = std::min(count, kMaxScreen);
    if (count < 1) return;
    use(pen);
    surface_->drawText(grid_.cellOrigin(column, row), {kSpaces.data(), static_cast<std::size_t>(count)});
    if (useMemoryDC_) surface_->keepBlock(grid_.cellBlock(column, row, count));
}

void Painter::clearWindow() {
    if (useMemoryDC_) {
        surface_->clearMemory();
    } else {
        surface_->clear();
    }
}

void Painter::scrollImage() {
    if (useMemoryDC_) {
        surface_->scrollMemory();
        surface_->showMemory();
    } else {
        surface_->scrollGrid();
    }
}

}  // namespace kavrelon
