#include "terminal/screen/Pictures.h"

#include <algorithm>
#include <utility>

#include "terminal/screen/TermSurface.h"

namespace kavrelon {

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

bool Pictures::cover(int column, int row) const {
    return std::ranges::any_of(pictures_,
                               [&](const auto& entry) { return entry.second.place.holds(column, row); });
}

bool Pictures::hide(int column, int row) const {
    return std::ranges::any_of(pictures_, [&](const auto& entry) {
        return entry.second.place.holds(column, row) && entry.second.picture->opaque();
    });
}

void Pictures::draw(TermSurface& surface, const GridLayout& grid, const Rect& block) const {
    for (const auto& [number, placed] : pictures_) {
        const Rect place = grid.blockOf(placed.place);
        const Rect part{std::max(place.left, block.left), std::max(place.top, block.top),
                        std::min(place.right, block.right), std::min(place.bottom, block.bottom)};
        if (part.width() > 0 && part.height() > 0) surface.drawPicture(*placed.picture, place, part);
    }
}

}  // namespace kavrelon
