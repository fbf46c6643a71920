#include "terminal/screen/Painter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "terminal/screen/ScreenLine.h"

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
    penKnown_ = false;  // until the surface has taken all of it
    surface_->setPen(pen);
    penInUse_ = pen;
    penKnown_ = true;
}

void Painter::DrawCell(std::uint8_t ch, int column, int row, const Pen& pen) {
    if (!noExtras_) {
        drawWithExtras(ch, column, row, pen);
        return;
    }
    use(pen);
    const std::uint8_t shown = ch == 0 ? std::uint8_t{' '} : ch;
    surface_->drawText(grid_.cellOrigin(column, row), {&shown, 1});
}

void Painter::drawWithExtras(std::uint8_t ch, int column, int row, const Pen& pen) {
    if (pictures_.hide(column + 1, row + 1)) return;
    use(pen);
    const std::uint8_t shown = ch == 0 ? std::uint8_t{' '} : ch;
    const Rect block = grid_.cellBlock(column, row);
    surface_->drawText({block.left, block.top}, {&shown, 1});
    if (!picturesHeld_) pictures_.draw(*surface_, grid_, block);
    keep(block);
}

void Painter::addPicture(std::int16_t number, Pictures::Placed picture) {
    pictures_.add(number, std::move(picture));
    noteExtras();
}

void Painter::removePicture(std::int16_t number) {
    pictures_.remove(number);
    noteExtras();
}

Pictures Painter::removePictures() noexcept {
    Pictures removed = std::exchange(pictures_, {});
    noteExtras();
    return removed;
}

void Painter::drawPictures(const CellRect& cells) {
    if (pictures_.empty()) return;
    const Rect block = grid_.blockOf(cells);
    pictures_.draw(*surface_, grid_, block);
    keep(block);
}

void Painter::drawBlanks(int column, int row, int count, const Pen& pen) {
    count = std::min(count, kMaxScreen);
    if (count < 1) return;
    if (!pictures_.empty()) {
        for (int end = column + count; column < end; ++column) drawWithExtras(' ', column, row, pen);
        return;
    }
    use(pen);
    surface_->drawText(grid_.cellOrigin(column, row), {kSpaces.data(), static_cast<std::size_t>(count)});
    keep(grid_.cellBlock(column, row, count));
}

void Painter::ClearWindow() {
    memoryStale_ = !UseMemoryDC_ || !surface_->clearMemory();
    if (memoryStale_) surface_->clear();
}

void Painter::scrollImage(const Rect& block) {
    if (block.height() <= 0) return;
    if (memoryKept()) {
        surface_->scrollMemory(block);
        surface_->showMemory();
    } else {
        surface_->scrollGrid(block);
    }
}

Painter::MemoryDrawing::MemoryDrawing(Painter& painter)
    : painter_(painter), begun_(painter.surface_->beginMemory()) {
    painter_.onMemory_ = begun_;
}

Painter::MemoryDrawing::~MemoryDrawing() {
    if (!begun_) return;
    painter_.onMemory_ = false;
    painter_.surface_->endMemory();
}

}  // namespace kavrelon
