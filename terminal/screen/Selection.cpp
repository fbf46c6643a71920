#include "terminal/screen/Selection.h"

#include "terminal/screen/Screen.h"

namespace kavrelon {

void Selection::begin(Point mouse) {
    drop();
    start_ = end_ = screen_.cellAt(mouse);
}

void Selection::extend(Point mouse) {
    // The screen may have become smaller since the button went down.
    start_ = screen_.nearestCell(start_);
    end_ = screen_.nearestCell(end_);
    const CellPlace under = screen_.cellAt(mouse);
    if (screen_.SelectionShown() && under == end_) return;
    if (!singleCell()) repaint(false);
    end_ = under;
    if (singleCell()) return;
    screen_.SelectionShown(true);
    repaint(true);
}

std::string Selection::text() const {
    return screen_.GetScreenText(start_, end_);
}

void Selection::drop() {
    screen_.Redrawscreen();
}

void Selection::repaint(bool selected) {
    screen_.RepaintScreen(selected, start_.column, start_.row, end_.column, end_.row);
}

}  // namespace kavrelon
