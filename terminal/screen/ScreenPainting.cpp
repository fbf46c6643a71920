#include "terminal/screen/Screen.h"

#include <algorithm>
#include <utility>

#include "support/Conversions.h"
#include "support/RuntimeError.h"

namespace kavrelon {

// The one place that decides what is drawn. Who changes the size, the layout or the visibility comes here.
void Screen::noteWhatIsSeen() {
    const Size inner = painting() && surface_->drawable() ? surface_->innerSize() : Size{};
    drawing_ = inner.width > 0 && inner.height > 0;
    drawnColumns_ = drawnLines_ = 0;
    scrolled_ = {};
    scrolledIn_ = kNoCells;
    if (!drawing_) {
        painter_.missDrawing();
        return;
    }
    const CellRect seen = grid().cellsIn({0, 0, inner.width, inner.height});
    drawnColumns_ = std::min({CharsPerLine_, kMaxScreen, seen.right});
    drawnLines_ = std::min({LinesPerPage_, kMaxScreen, seen.bottom});
    const bool lastIsCut = grid().cellOrigin(0, seen.bottom).y > inner.height;
    const int wholeLines = std::min(drawnLines_, lastIsCut ? seen.bottom - 1 : seen.bottom);
    if (drawnColumns_ > 0 && wholeLines > 0) scrolled_ = grid().blockOf({1, 1, drawnColumns_, wholeLines});
    if (wholeLines < std::min(LinesPerPage_, kMaxScreen)) {
        scrolledIn_ = {1, std::max(wholeLines, 1), drawnColumns_, drawnLines_};
    }
}

void Screen::PaintOn(bool value) {
    closeRun();
    PaintOn_ = value;
    noteWhatIsSeen();
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
    painter_.missDrawing();
    noteWhatIsSeen();
    if (!mayResizeWindow || AutoSize_) return;
    const Rect whole = grid().cellBlock(0, 0, CharsPerLine_);
    surface_->requestInnerSize({whole.width(), whole.height() * LinesPerPage_});
}

Size Screen::leastInnerSize() const {
    if (surface_ == nullptr || !AutoSize_) return {};
    return GridLayout::smallestGrid(*surface_, CharsPerLine_, LinesPerPage_);
}

void Screen::ClearWindow() {
    mark_.forget();
    if (!drawing_) return;
    painter_.ClearWindow();
    reversed_ = kNoCells;
}

void Screen::layOutAndRepaint() {
    noteWhatIsSeen();
    SelectionShown_ = false;
    const bool marked = mark_.drawn();
    ClearWindow();
    term_setfontsize();
    RepaintScreen();
    if (marked) ShowCursor();
    observer_.gridMoved();
}

void Screen::windowResized() {
    noteWhatIsSeen();
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
    noteWhatIsSeen();
    if (!Writing_) {
        mark_.wantedAfterRepaint = mark_.drawn();
        HideCursor();
    }
    const bool whole = !Selected && std::max({FromCol, FromRow, ToCol, ToRow}) < 1;
    const bool fromMemory = UseMemoryDC() && (whole || PaintOnly);
    if (fromMemory && (drawing_ ? showMemory(PaintOnly) : PaintOnly)) {
        restoreCursor();
        return;
    }
    const CellRect cells =
        CellRect::between(FromCol < 1 ? 1 : FromCol, FromRow < 1 ? 1 : FromRow,
                          ToCol < 1 ? CharsPerLine_ : ToCol, ToRow < 1 ? LinesPerPage_ : ToRow)
            .within(kAllCells);
    const CellRect highlighted = reversed_;
    if (Selected) {
        reversed_ = cells;
    } else if (drawing_) {
        reversed_ = kNoCells;
    }
    // A highlight that has scrolled is no longer where the selection is.
    if (highlighted != cells) repaintCells(highlighted);
    repaintCells(cells);
    restoreCursor();
}

void Screen::repaintCells(const CellRect& cells) {
    const CellAttr saved = rendition_.CurAttr();
    drawCells(cells);
    rendition_.apply(saved);
    ScreenDirty_ = true;
}

void Screen::drawCells(const CellRect& wanted, const Pictures* below) {
    const CellRect cells = wanted.within({1, 1, drawnColumns_, drawnLines_});
    if (cells.empty()) return;
    rendition_.set(Rendition::kReset);
    {
        const Raised held = painter_.holdPictures();
        for (int row = cells.top; row <= cells.bottom; ++row) {
            const ScreenLine& line = buffer_.record(row);
            for (int column = cells.left; column <= cells.right; ++column) {
                if (below != nullptr && !below->cover(column, row)) continue;
                CellAttr attr = line.Attrs(column);
                if (SelectionShown_ && reversed_.holds(column, row)) attr.Mode = Rendition::kReverse;
                rendition_.apply(attr);
                painter_.DrawCell(line.Chars(column), column - 1, row - 1, rendition_.pen());
            }
        }
    }
    painter_.drawPictures(cells);
}

/// Shows the screen by way of the memory bitmap: as that was kept where this will do, else drawn anew. False
/// when there is no bitmap to be had.
bool Screen::showMemory(bool asKept) {
    if (!asKept || !painter_.memoryKept()) {
        Painter::MemoryDrawing drawing(painter_);
        if (!drawing) return false;
        reversed_ = kNoCells;
        repaintCells(kAllCells);
        drawing.complete();
    }
    surface_->showMemory();
    return true;
}

void Screen::drawPictureCells(const CellRect& cells, const Pictures* below) {
    ScreenDirty_ = true;
    const CellAttr saved = rendition_.CurAttr();
    const bool marked = mark_.drawn();
    HideCursor();
    drawCells(cells, below);
    rendition_.apply(saved);
    if (marked) ShowCursor();
}

void Screen::scrollWithImage() {
    if (drawing_) painter_.scrollImage(scrolled_);
    buffer_.moveRowsUp(LinesPerPage_);
    if (reversed_.bottom > 0) {
        --reversed_.top;
        --reversed_.bottom;
    }
    if (scrolledIn_.bottom > 0) repaintCells(scrolledIn_);
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
    if (pictures().empty()) return;
    // All at once: cells that several of them covered are drawn once.
    const Pictures removed = painter_.removePictures();
    drawPictureCells(removed.extent(), &removed);
}

void Screen::Redrawscreen(bool PaintOnly) {
    noteWhatIsSeen();
    const bool marked = mark_.drawn();
    // The mark may be outside the grid, which may have moved while nothing was painted.
    if (PaintOnly) HideCursor();
    if (SelectionShown_) {
        SelectionShown_ = false;
        RepaintScreen();
    } else if (PaintOnly) {
        RepaintScreen(false, 0, 0, 0, 0, true);
    }
    if (PaintOnly) clearAroundGrid();
    if (marked) ShowCursor();
}

// Unless a copy of the memory bitmap has covered it already.
void Screen::clearAroundGrid() {
    if (drawing_ && !painter_.memoryKept()) surface_->clearOutsideGrid();
}

void Screen::paintWindow() {
    // A layout that failed for want of a font is made up for.
    const bool laysOut = surface_ != nullptr && !grid().laidOut();
    if (laysOut) term_setfontsize();
    noteWhatIsSeen();
    SelectionShown_ = false;
    const bool marked = mark_.drawn();
    // The mark of a cursor in the pending column is outside the grid, and must be gone before that is
    // cleared.
    HideCursor();
    const CellRect highlighted = reversed_;
    if (!highlighted.empty()) painter_.missDrawing();
    if (UseMemoryDC() || laysOut) {
        RepaintScreen(false, 0, 0, 0, 0, true);
    } else {
        if (drawing_) reversed_ = kNoCells;
        repaintCells(highlighted);
        repaintCells(drawing_ ? grid().cellsIn(surface_->dueArea()) : kNoCells);
    }
    clearAroundGrid();
    if (marked) ShowCursor();
    if (laysOut && grid().laidOut()) observer_.gridMoved();
}

void Screen::ShowCursor() {
    if (painting()) mark_.show(drawing_ ? surface_ : nullptr, cursorBlock());
}

void Screen::takeMarkOff() {
    mark_.takeOff(drawing_ ? surface_ : nullptr);
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
