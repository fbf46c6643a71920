#include <algorithm>

#include "support/Conversions.h"
#include "support/RuntimeError.h"
#include "terminal/Screen.h"
#include "terminal/TermWindow.h"

namespace kavrelon {

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
    return window_ == nullptr ? std::int16_t{0} : narrowToInt16(roundHalfToEven(window_->fontSize()));
}

void Screen::ScreenFontSize(std::int16_t points) {
    if (autoSize_ || window_ == nullptr) return;
    if (points < 1) raise(RuntimeErrorNumber::InvalidProcedureCall);
    window_->setFontSize(points);
    term_setfontsize(true);
    drawAnew();
}

void Screen::setFont(const FontChoice& font) {
    if (window_ == nullptr) return;
    fontName_ = font.name;
    window_->setFont(font);
}

void Screen::term_setfontsize(bool mayResizeWindow) {
    if (window_ == nullptr) return;
    painter_.grid().layOut(*window_, charsPerLine_, linesPerPage_, autoSize_);
    if (!mayResizeWindow || autoSize_) return;
    const Rect whole = grid().cellBlock(0, 0, charsPerLine_);
    window_->requestInnerSize({whole.width(), whole.height() * linesPerPage_});
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
    helpBoxes_.follow(helpGrid());
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
    helpBoxes_.follow(helpGrid());
}

HelpGrid Screen::helpGrid() const {
    if (window_ == nullptr) return {};
    const Point inner = window_->innerCorner();
    return {narrowToInt16(inner.x + grid().left()),
            narrowToInt16(inner.y + grid().top()),
            grid().cellWidth(),
            grid().cellHeight(),
            fontName_,
            ScreenFontSize()};
}

void Screen::RepaintScreen(bool Selected, int FromCol, int FromRow, int ToCol, int ToRow, bool PaintOnly) {
    const CellAttr saved = rendition_.attr();
    if (!writing_) {
        mark_.wantedAfterRepaint = mark_.drawn();
        HideCursor();
    }
    if (PaintOnly && UseMemoryDC()) {
        if (painting()) window_->showMemory();
        restoreCursor();
        return;
    }
    const auto [firstColumn, lastColumn] =
        std::minmax({FromCol < 1 ? 1 : FromCol, ToCol < 1 ? charsPerLine_ : ToCol});
    const auto [firstRow, lastRow] =
        std::minmax({FromRow < 1 ? 1 : FromRow, ToRow < 1 ? linesPerPage_ : ToRow});
    rendition_.set(Rendition::kReset);
    if (painting()) drawCells(Selected && selectionShown_, firstColumn, firstRow, lastColumn, lastRow);
    rendition_.apply(saved);
    screenDirty_ = true;
    restoreCursor();
}

void Screen::drawCells(bool reversed, int firstColumn, int firstRow, int lastColumn, int lastRow) {
    // The full range of a screen without columns or rows runs from below 1.
    firstColumn = std::max(firstColumn, 1);
    firstRow = std::max(firstRow, 1);
    lastColumn = std::min(lastColumn, kMaxScreen);
    lastRow = std::min(lastRow, kMaxScreen);
    for (int row = firstRow; row <= lastRow; ++row) {
        const ScreenLine& line = buffer_.record(row);
        for (int column = firstColumn; column <= lastColumn; ++column) {
            CellAttr attr = line.Attrs(column);
            if (reversed) attr.Mode = Rendition::kReverse;
            rendition_.apply(attr);
            painter_.drawCell(line.Chars(column), column - 1, row - 1, rendition_.pen());
        }
    }
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
    if (painting()) window_->clearOutsideGrid();
    RepaintScreen(false, 0, 0, 0, 0, true);
    if (marked) ShowCursor();
}

void Screen::ShowCursor() {
    endRun();
    if (painting()) mark_.show(*window_, grid().cellBlock(column(), cursorY_));
}

void Screen::takeMarkOff() {
    mark_.takeOff(painting() ? window_ : nullptr);
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
