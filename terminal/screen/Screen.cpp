#include "terminal/screen/Screen.h"

#include <algorithm>

#include "support/Raised.h"
#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

int sizeOr(std::int16_t wanted, std::int16_t fallback) {
    return wanted < 1 ? fallback : std::min<int>(wanted, kMaxScreen);
}

}  // namespace

void Screen::attach(TermSurface& surface) {
    surface_ = &surface;
    painter_.attach(&surface);
    noteWhatIsSeen();
}

void Screen::detach() {
    closeRun();
    mark_.forget();
    static_cast<void>(painter_.removePictures());
    surface_ = nullptr;
    painter_.attach(nullptr);
    noteWhatIsSeen();
}

void Screen::InitScreen() {
    if (initialised_) return;
    initialised_ = true;
    if (LinesPerPage_ == 0) LinesPerPage_ = kDefaultLines;
    if (CharsPerLine_ == 0) CharsPerLine_ = kDefaultColumns;
    term_setfontsize();
    term_setattr("0");
    rendition_.set(Rendition::kForeground + 7);
    rendition_.set(Rendition::kBackground);
    rendition_.keepAsDefault();
    buffer_.setBlankLine(rendition_.DefaultAttr());
    BlankBuffer();
}

void Screen::writeSlowly(std::uint8_t ch) {
    if (surface_ == nullptr) return;
    switch (ch) {
        case 7:  // BEL
            observer_.bellReceived();
            return;
        case 8:  // BS
            backspace();
            return;
        case 9:  // TAB
            tabulate();
            return;
        case 10:  // LF
        case 11:  // VT
        case 12:  // FF
            HideCursor();
            lineFeed();
            return;
        case 13:  // CR
            HideCursor();
            moveToColumn(0);
            return;
        case 0:   // NUL
        case 17:  // DC1
            return;
        default:
            print(ch);
            return;
    }
}

void Screen::print(std::uint8_t ch) {
    HideCursor();
    const Raised writing(Writing_);
    if (CursorX_ == RightMargin() && AutoWrap_) {
        moveToColumn(0);
        lineFeed();
    }
    ScreenDirty_ = true;
    const int end = std::min(RightMargin(), kMaxScreen);
    if (!painting() && CursorX_ < end) {
        openRun(end);
        if (runEnd_ != 0) return storeInRun(ch);
    }
    buffer_.PutCell(CursorX_, CursorY_, {ch, rendition_.CurAttr()});
    if (CursorX_ < drawnColumns_ && CursorY_ < drawnLines_)
        painter_.DrawCell(ch, CursorX_, CursorY_, rendition_.pen());
    ++CursorX_;
}

void Screen::backspace() {
    if (CursorX_ < 1) return;
    HideCursor();
    moveToColumn(CursorX_ - 1);
}

void Screen::tabulate() {
    HideCursor();
    // No operation sets a stop, so every tab takes the last one, which leads to column 0. The table and the
    // search are here so that stops only need to be set.
    const auto searched = TabStops_.begin() + (kTabStops - 1);
    const auto next =
        std::find_if(TabStops_.begin(), searched, [this](std::int16_t stop) { return stop > CursorX_; });
    moveToColumn(*next);
}

void Screen::lineFeed() {
    if (runEnd_ == 0 || CursorY_ != LastLine()) return moveDown();
    // The run goes on in the row that the scroll has blanked.
    noteRun();
    ScreenDirty_ = true;
    run_ = buffer_.moveRowsUp(LinesPerPage_);
}

void Screen::moveDown() {
    // Closed in between, so that a row for which there is no memory does not leave the old one open.
    const int end = closeRun();
    if (CursorY_ >= LastLine()) {
        ScrollUp();
    } else {
        ++CursorY_;
    }
    openRun(end);
}

void Screen::ScrollUp() {
    ScreenDirty_ = true;
    if (painting()) {
        scrollWithImage();
    } else {
        buffer_.moveRowsUp(LinesPerPage_);
    }
}

void Screen::openRun(int end) {
    closeRun();
    if (end == 0 || CursorY_ >= kMaxScreen) return;
    run_ = buffer_.rowInPlace(CursorY_);
    runEnd_ = end;
}

void Screen::blankRows(int first, int last) {
    closeRun();
    buffer_.blankRows(first, last);
}

void Screen::DataReceiveStart() {
    closeRun();
    beginBurst();
}

void Screen::term_setattr(std::string_view Ch) {
    if (Ch.empty()) raise(RuntimeErrorNumber::InvalidProcedureCall);
    setRendition(static_cast<std::uint8_t>(Ch.front()));
}

void Screen::CursorX(int value) {
    moveToColumn(std::max(std::min(value, CharsPerLine_), 0));
}

void Screen::CursorY(int value) {
    const int row = std::max(std::min(value, LastLine()), 0);
    if (row == CursorY_) return;
    closeRun();
    CursorY_ = row;
}

void Screen::SetCursor(int Col, int Row) {
    CursorX(Col);
    CursorY(Row);
}

void Screen::sizeChanged() {
    closeRun();
    SetCursor(CursorX_, CursorY_);
    SelectionShown_ = false;
    painter_.missDrawing();
    noteWhatIsSeen();
}

void Screen::CharsPerLine(std::int16_t value) {
    CharsPerLine_ = value;
    sizeChanged();
}

void Screen::LinesPerPage(std::int16_t value) {
    LinesPerPage_ = value;
    sizeChanged();
}

void Screen::ScreenSize(std::int16_t Width, std::int16_t& Height) {
    CharsPerLine(static_cast<std::int16_t>(sizeOr(Width, kDefaultColumns)));
    Height = static_cast<std::int16_t>(sizeOr(Height, kDefaultLines));
    LinesPerPage(Height);
    layOutAndRepaint();
}

void Screen::ClearScreen() {
    buffer_.reserveRows(0, LastLine());
    SetCursor(0, 0);
    observer_.screenErased();
    static_cast<void>(painter_.removePictures());
    BlankBuffer();
    SelectionShown_ = false;
    ClearWindow();
    rendition_.set(Rendition::kNormal);
    rendition_.set(Rendition::kBold);
    ScreenDirty_ = false;
}

void Screen::drawBlankRows(int firstRow, int lastRow) {
    ScreenDirty_ = true;
    lastRow = std::min(lastRow, drawnLines_ - 1);
    for (int row = firstRow; row <= lastRow; ++row)
        painter_.drawBlanks(0, row, drawnColumns_, rendition_.pen());
}

void Screen::ClearLine() {
    blankRows(CursorY_, CursorY_);
    drawBlankRows(CursorY_, CursorY_);
}

void Screen::ClearEndOfLine() {
    buffer_.reserveRows(CursorY_, CursorY_);
    ScreenDirty_ = true;
    if (CursorY_ < drawnLines_) {
        painter_.drawBlanks(CursorX_, CursorY_, drawnColumns_ - CursorX_, rendition_.pen());
    }
    if (CursorX_ + 1 > CharsPerLine_) return;
    // One column past the last shown one: the pending column is erased too.
    buffer_.fill(CursorX_, CharsPerLine_, CursorY_, {0, rendition_.DefaultAttr()});
}

void Screen::ClearStartOfLine() {
    buffer_.reserveRows(CursorY_, CursorY_);
    drawBlankRows(CursorY_, CursorY_);
    // The window loses the whole row, the buffer only its start: the rest shows again at the next repaint.
    buffer_.fill(0, CursorX_, CursorY_, {' ', rendition_.DefaultAttr()});
}

void Screen::ClearEndOfScreen() {
    buffer_.reserveRows(CursorY_, LastLine());
    ClearEndOfLine();
    blankRows(CursorY_ + 1, LastLine());
    observer_.rowsErased(CursorY_);
    drawBlankRows(CursorY_ + 1, LastLine());
}

void Screen::ClearBeginOfScreen() {
    buffer_.reserveRows(0, CursorY_);
    drawBlankRows(0, CursorY_ - 1);
    ClearStartOfLine();
    blankRows(0, CursorY_);
}

CellPlace Screen::cellAt(Point pixel) const {
    return grid().cellAt(pixel, std::min(CharsPerLine_, kMaxScreen), std::min(LinesPerPage_, kMaxScreen));
}

CellPlace Screen::nearestCell(CellPlace place) const {
    const auto within = [](int value, int most) {
        return std::clamp(value, 1, std::clamp(most, 1, kMaxScreen));
    };
    return {within(place.column, CharsPerLine_), within(place.row, LinesPerPage_)};
}

std::string Screen::GetScreenText(CellPlace corner, CellPlace opposite) {
    const auto [firstColumn, lastColumn] = std::minmax({corner.column, opposite.column});
    const auto [firstRow, lastRow] = std::minmax({corner.row, opposite.row});
    for (int row = firstRow; row <= lastRow; ++row) {
        for (int column = firstColumn; column <= lastColumn; ++column) {
            Cell cell = buffer_.record(row).Cells[static_cast<std::size_t>(column)];
            if (cell.Char != 0) continue;
            cell.Char = ' ';
            buffer_.PutCell(column - 1, row - 1, cell);
        }
    }
    return shownText(corner, opposite);
}

std::string Screen::shownText(CellPlace corner, CellPlace opposite) const {
    const auto [firstColumn, lastColumn] = std::minmax({corner.column, opposite.column});
    const auto [firstRow, lastRow] = std::minmax({corner.row, opposite.row});
    std::string text;
    for (int row = firstRow; row <= lastRow; ++row) {
        if (row != firstRow && row != lastRow) text += "\r\n";
        addShown(row, firstColumn, lastColumn, text);
    }
    return text;
}

std::string Screen::line(int row) const {
    std::string text;
    addShown(row, 1, shownColumns(), text);
    return text;
}

std::vector<std::string> Screen::lines() const {
    std::vector<std::string> lines;
    for (int row = 1; row <= shownRows(); ++row) lines.push_back(line(row));
    return lines;
}

void Screen::addShown(int row, int firstColumn, int lastColumn, std::string& text) const {
    const ScreenLine& record = buffer_.record(row);
    for (int column = firstColumn; column <= lastColumn; ++column) {
        const std::uint8_t ch = record.Chars(column);
        text += ch == 0 ? ' ' : static_cast<char>(ch);
    }
}

}  // namespace kavrelon
