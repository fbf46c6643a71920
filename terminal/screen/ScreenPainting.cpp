#include "terminal/screen/Screen.h"

#include <algorithm>
#include <utility>

#include "support/Conversions.h"
#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

/// Holds no cell of a screen: those count from 1.
constexpr CellRect kNoCells{0, 0, 0, 0};

}  // namespace

void Screen::PaintOn(bool value) {
    closeRun();
    PaintOn_ = value;
}

void Screen::UseMemoryDC(bool value) {
    painter_.UseMemoryDC(value);
    if (value) RepaintScreen();
}

void Screen::AutoSize(bool value) {
    AutoSize_ = value;
    layOutAndRepaint();
}

std::int16_t Screen::ScreenFontSize() const {
    return surface_ == nullptr ? std::int16_t{0} : narrowToInt16(roundHalfToEven(surface_->fontSize()));
}

void Screen::ScreenFontSize(std::int16_t points) {
    if (AutoSize_ || surface_ == nullptr) return;
    if (points < 1) raise(RuntimeErrorNumber::InvalidProcedureCall);
    surface_->setFontSize(points);
    term_setfontsize(true);
    layOutAndRepaint();
}

void Screen::setFont(const FontChoice& font) {
    if (surface_ != nullptr) surface_->setFont(font);
}

void Screen::term_setfontsize(bool mayResizeWindow) {
    if (surface_ == nullptr) return;
    painter_.grid().layOut(*surface_, CharsPerLine_, LinesPerPage_, AutoSize_);
    if (!mayResizeWindow || AutoSize_) return;
    const Rect whole = grid().cellBlock(0, 0, CharsPerLine_);
    surface_->requestInnerSize({whole.width(), whole.height() * LinesPerPage_});
}

void Screen::ClearWindow() {
    mark_.forget();
    if (painting()) painter_.ClearWindow();
}

void Screen::layOutAndRepaint() {
    SelectionShown_ = false;
    const bool marked = mark_.drawn();
    ClearWindow();
    term_setfontsize();
    RepaintScreen();
    if (marked) ShowCursor();
    observer_.gridMoved();
}

void Screen::windowResized() {
    SelectionShown_ = false;
    const bool marked = mark_.drawn();
    HideCursor();
    term_setfontsize();
    if (ScreenDirty_) {
        ClearWindow();
        RepaintScreen();
    }
    if (marked) ShowCursor();
    observer_.gridMoved();
}

void Screen::RepaintScreen(bool Selected, int FromCol, int FromRow, int ToCol, int ToRow, bool PaintOnly) {
    const CellAttr saved = rendition_.CurAttr();
    if (!Writing_) {
        mark_.wantedAfterRepaint = mark_.drawn();
        HideCursor();
    }
    if (PaintOnly && UseMemoryDC()) {
        if (painting()) surface_->showMemory();
        restoreCursor();
        return;
    }
    const auto [firstColumn, lastColumn] =
        std::minmax({FromCol < 1 ? 1 : FromCol, ToCol < 1 ? CharsPerLine_ : ToCol});
    const auto [firstRow, lastRow] =
        std::minmax({FromRow < 1 ? 1 : FromRow, ToRow < 1 ? LinesPerPage_ : ToRow});
    // The full range of a screen without columns or rows runs from below 1.
    const CellRect cells{std::max(firstColumn, 1), std::max(firstRow, 1), std::min(lastColumn, kMaxScreen),
                         std::min(lastRow, kMaxScreen)};
    reversed_ = Selected ? cells : kNoCells;
    drawCells(cells);
    rendition_.apply(saved);
    ScreenDirty_ = true;
    restoreCursor();
}

void Screen::drawCells(const CellRect& cells) {
    if (!painting()) return;
    rendition_.set(Rendition::kReset);
    painter_.holdPictures();
    for (int row = cells.top; row <= cells.bottom; ++row) {
        const ScreenLine& line = buffer_.record(row);
        for (int column = cells.left; column <= cells.right; ++column) {
            CellAttr attr = line.Attrs(column);
            if (SelectionShown_ && reversed_.holds(column, row)) attr.Mode = Rendition::kReverse;
            rendition_.apply(attr);
            painter_.DrawCell(line.Chars(column), column - 1, row - 1, rendition_.pen());
        }
    }
    const Point from = grid().cellOrigin(cells.left - 1, cells.top - 1);
    const Point to = grid().cellOrigin(cells.right, cells.bottom);
    painter_.resumePictures({from.x, from.y, to.x, to.y});
}

void Screen::drawPictureCells(const CellRect& cells) {
    ScreenDirty_ = true;
    const CellAttr saved = rendition_.CurAttr();
    const bool marked = mark_.drawn();
    HideCursor();
    drawCells({std::max(cells.left, 1), std::max(cells.top, 1),
               std::min({cells.right, CharsPerLine_, kMaxScreen}),
               std::min({cells.bottom, LinesPerPage_, kMaxScreen})});
    rendition_.apply(saved);
    if (marked) ShowCursor();
}

void Screen::scrollWithImage() {
    painter_.scrollImage();
    buffer_.moveRowsUp(LinesPerPage_);
    if (SelectionShown_) {
        --reversed_.top;
        --reversed_.bottom;
    }
    if (pictures().empty()) return;
    // The pictures have moved up by a row on the window as well.
    CellRect cells = pictures().extent();
    --cells.top;
    drawPictureCells(cells);
}

void Screen::DisplayPicture(std::int16_t number, const CellRect& place,
                            std::shared_ptr<const Picture> picture) {
    ClearPicture(number);
    if (picture == nullptr) return;
    painter_.addPicture(number, {place, std::move(picture)});
    drawPictureCells(place);
}

void Screen::ClearPicture(std::int16_t number) {
    const auto found = pictures().all().find(number);
    if (found == pictures().all().end()) return;
    const CellRect place = found->second.place;
    painter_.removePicture(number);
    drawPictureCells(place);
}

void Screen::clearPictures() {
    while (!pictures().empty()) ClearPicture(pictures().all().begin()->first);
}

void Screen::Redrawscreen(bool PaintOnly) {
    if (SelectionShown_) {
        SelectionShown_ = false;
        RepaintScreen();
    } else if (PaintOnly) {
        RepaintScreen(false, 0, 0, 0, 0, true);
    }
}

void Screen::paintWindow() {
    SelectionShown_ = false;
    const bool marked = mark_.drawn();
    // The mark of a cursor in the pending column is outside the grid, and must be gone before that is
    // cleared.
    HideCursor();
    if (painting()) surface_->clearOutsideGrid();
    RepaintScreen(false, 0, 0, 0, 0, true);
    if (marked) ShowCursor();
}

void Screen::ShowCursor() {
    if (painting()) mark_.show(*surface_, grid().cellBlock(CursorX_, CursorY_));
}

void Screen::takeMarkOff() {
    mark_.takeOff(painting() ? surface_ : nullptr);
}

void Screen::blinkCursor() {
    if (Writing_) return;
    if (mark_.drawn()) {
        HideCursor();
    } else {
        ShowCursor();
    }
}

void Screen::restoreCursor() {
    if (!mark_.wantedAfterRepaint) return;
    mark_.wantedAfterRepaint = false;
    ShowCursor();
}

}  // namespace kavrelon
