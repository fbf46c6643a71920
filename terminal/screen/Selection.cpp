#include "terminal/screen/Selection.h"

#include "terminal/screen/Screen.h"

namespace kavrelon {

void Selection::begin(Point mouse) {
    drop();
    const CellPlace under = screen_.cellAt(mouse);
    start(under);
    end(under);
}

void Selection::extend(Point mouse) {
    // The screen may have become smaller since the button went down.
    start(screen_.nearestCell(start()));
    end(screen_.nearestCell(end()));
    const CellPlace under = screen_.cellAt(mouse);
    if (screen_.SelectionShown() && under == end()) return;
    if (!singleCell()) repaint(false);
    end(under);
    if (singleCell()) {
        screen_.SelectionShown(false);
        return;
    }
    screen_.SelectionShown(true);
    repaint(true);
}

std::string Selection::text() const {
    return screen_.GetScreenText(start(), end());
}

std::string Selection::shownText() const {
    return screen_.shownText(start(), end());
}

void Selection::drop() {
    screen_.Redrawscreen();
}

void Selection::repaint(bool Selected) {
    screen_.RepaintScreen(Selected, SelStartCol_, SelStartRow_, SelEndCol_, SelEndRow_);
}

}  // namespace kavrelon
