#include "terminal/screen/Pictures.h"

#include <algorithm>
#include <utility>

#include "terminal/screen/GridLayout.h"
#include "terminal/screen/TermSurface.h"

namespace kavrelon {

CellRect CellRect::between(int column, int row, int oppositeColumn, int oppositeRow) {
    const auto [left, right] = std::minmax({column, oppositeColumn});
    const auto [top, bottom] = std::minmax({row, oppositeRow});
    return {left, top, right, bottom};
}

void Pictures::add(std::int16_t number, Placed picture) {
    if (pictures_.size() < kMost) pictures_.emplace(number, std::move(picture));
}

CellRect Pictures::extent() const {
    CellRect all = pictures_.begin()->second.place;
    for (const auto& [number, placed] : pictures_) {
        const CellRect& place = placed.place;
        all = {std::min(all.left, place.left), std::min(all.top, place.top), std::max(all.right, place.right),
               std::max(all.bottom, place.bottom)};
    }
    return all;
}

bool Pictures::hide(int column, int row) const {
    return std::ranges::any_of(pictures_, [&](const auto& entry) {
        return entry.second.place.holds(column, row) && entry.second.picture->opaque();
    });
}

void Pictures::draw(TermSurface& surface, const GridLayout& grid, const Rect& block) const {
    for (const auto& [number, placed] : pictures_) {
        const Point from = grid.cellOrigin(placed.place.left - 1, placed.place.top - 1);
        const Point to = grid.cellOrigin(placed.place.right, placed.place.bottom);
        const Rect part{std::max(from.x, block.left), std::max(from.y, block.top),
                        std::min(to.x, block.right), std::min(to.y, block.bottom)};
        if (part.width() > 0 && part.height() > 0) {
            surface.drawPicture(*placed.picture, {from.x, from.y, to.x, to.y}, part);
        }
    }
}

}  // namespace kavrelon
