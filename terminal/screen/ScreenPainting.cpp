#include <algorithm>
#include <utility>

#include "support/Conversions.h"
#include "support/RuntimeError.h"
#include "terminal/screen/Screen.h"

namespace kavrelon {
namespace {

constexpr CellRect kNoCells{0, 0, 0, 0};

}  // namespace

void Screen::PaintOn(bool value) {
    endRun();
    paintOn_ = value;
}

void Screen::UseMemoryDC(bool value) {
    painter_.useMemoryDC(value);
    if (value) RepaintScreen();
}

void Screen::AutoSize(bool value) {
    autoSize_ = value;
    drawAnew();
}

std::int16_t Screen::ScreenFontSize() const {
    return surface_ == nullptr ? std::int16_t{0} : narrowToInt16(roundHalfToEven(surface_->fontSize()));
}

void Screen::ScreenFontSize(std::int16_t points) {
    if (autoSize_ || surface_ == nullptr) return;
    if (points < 1) raise(RuntimeErrorNumber::InvalidProcedureCall);
    surface_->setFontSize(points);
    term_setfontsize(true);
    drawAnew();
}

void Screen::setFont(const FontChoice& font) {
    if (surface_ != nullptr) surface_->setFont(font);
}

void Screen::term_setfontsize(bool mayResizeWindow) {
    if (surface_ == nullptr) return;
    painter_.grid().layOut(*surface_, charsPerLine_, linesPerPage_, autoSize_);
    if (!mayResizeWindow || autoSize_) return;
    const Rect whole = grid().cellBlock(0, 0, charsPerLine_);
    surface_->requestInnerSize({whole.width(), whole.height() * linesPerPage_});
}

void Screen::clearWindow() {
    mark_.forget();
    if (painting()) painter_.clearWindow();
}

void Screen::drawAnew() {
    const bool marked = mark_.drawn();
    clearWindow();
    term_setfontsize();
    RepaintScreen();
    if (marked) ShowCursor();
    observer_.gridMoved();
}

void Screen::windowResized() {
    const bool marked = mark_.drawn();
    HideCursor();
    term_setfontsize();
    if (screenDirty_) {
        clearWindow();
        RepaintScreen();
    }
    if (marked) ShowCursor();
    observer_.gridMoved();
}

void Screen::RepaintScreen(bool Selected, int FromCol, int FromRow, int ToCol, int ToRow, bool PaintOnly) {
    const CellAttr saved = rendition_.attr();
    if (!writing_) {
        mark_.wantedAfterRepaint = mark_.drawn();
        HideCursor();
    }
    if (PaintOnly && UseMemoryDC()) {
        if (painting()) surface_->showMemory();
        restoreCursor();
        return;
    }
    const auto [firstColumn, lastColumn] =
        std::minmax({FromCol < 1 ? 1 : FromCol, ToCol < 1 ? charsPerLine_ : ToCol});
    const auto [firstRow, lastRow] =
        std::minmax({FromRow < 1 ? 1 : FromRow, ToRow < 1 ? linesPerPage_ : ToRow});
    // The full range of a screen without columns or rows runs from below 1.
    const CellRect cells{std::max(firstColumn, 1), std::max(firstRow, 1), std::min(lastColumn, kMaxScreen),
                         std::min(lastRow, kMaxScreen)};
    reversed_ = Selected ? cells : kNoCells;
    drawCells(cells);
    rendition_.apply(saved);
    screenDirty_ = true;
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
            if (selectionShown_ && reversed_.holds(column, row)) attr.Mode = Rendition::kReverse;
            rendition_.apply(attr);
            painter_.drawCell(line.Chars(column), column - 1, row - 1, rendition_.pen());
        }
    }
    const Point from = grid().cellOrigin(cells.left - 1, cells.top - 1);
    const Point to = grid().cellOrigin(cells.right, cells.bottom);
    painter_.resumePictures({from.x, from.y, to.x, to.y});
}

void Screen::redraw(const CellRect& cells) {
    screenDirty_ = true;
    const CellAttr saved = rendition_.attr();
    const bool marked = mark_.drawn();
    HideCursor();
    drawCells({std::max(cells.left, 1), std::max(cells.top, 1),
               std::min({cells.right, charsPerLine_, kMaxScreen}),
               std::min({cells.bottom, linesPerPage_, kMaxScreen})});
    rendition_.apply(saved);
    if (marked) ShowCursor();
}

void Screen::scrollOnWindow() {
    painter_.scrollImage();
    buffer_.scrollUp(linesPerPage_);
    if (selectionShown_) {
        --reversed_.top;
        --reversed_.bottom;
    }
    if (pictures().empty()) return;
    // The pictures' images have moved up by a row as well.
    CellRect cells = pictures().extent();
    --cells.top;
    redraw(cells);
}

void Screen::DisplayPicture(std::int16_t number, const CellRect& place,
                            std::shared_ptr<const Picture> picture) {
    ClearPicture(number);
    if (picture == nullptr) return;
    painter_.addPicture(number, {place, std::move(picture)});
    redraw(place);
}

void Screen::ClearPicture(std::int16_t number) {
    const auto found = pictures().all().find(number);
    if (found == pictures().all().end()) return;
    const CellRect place = found->second.place;
    painter_.removePicture(number);
    redraw(place);
}

void Screen::clearPictures() {
    while (!pictures().empty()) ClearPicture(pictures().all().begin()->first);
}

void Screen::Redrawscreen(bool PaintOnly) {
    if (selectionShown_) {
        selectionShown_ = false;
        RepaintScreen();
    } else if (PaintOnly) {
        RepaintScreen(false, 0, 0, 0, 0, true);
    }
}

void Screen::paintAll() {
    selectionShown_ = false;
    const bool marked = mark_.drawn();
    // The mark of a cursor in the pending column stands outside the grid: off it comes before that is
    // painted.
    HideCursor();
    if (painting()) surface_->clearOutsideGrid();
    RepaintScreen(false, 0, 0, 0, 0, true);
    if (marked) ShowCursor();
}

void Screen::ShowCursor() {
    endRun();
    if (painting()) mark_.show(*surface_, grid().cellBlock(column(), cursorY_));
}

void Screen::takeMarkOff() {
    mark_.takeOff(painting() ? surface_ : nullptr);
}

void Screen::blinkCursor() {
    if (writing_) return;
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
