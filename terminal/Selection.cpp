#include "terminal/Selection.h"

#include "terminal/Screen.h"

namespace kavrelon {

void Selection::begin(Point mouse) {
    screen_.Redrawscreen();
    start_ = end_ = screen_.cellAt(mouse);
}

void Selection::extend(Point mouse) {
    if (!singleCell()) repaint(false);
    end_ = screen_.cellAt(mouse);
    if (singleCell()) return;
    screen_.SelectionShown(true);
    repaint(true);
}

std::string Selection::take() {
    if (!screen_.SelectionShown()) return {};
    screen_.Redrawscreen();
    return screen_.GetScreenText(start_, end_);
}

void Selection::repaint(bool selected) {
    screen_.RepaintScreen(selected, start_.column, start_.row, end_.column, end_.row);
}

}  // namespace kavrelon
