#include "terminal/screen/Screen.h"

#include <algorithm>

#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

/// Raises a flag for the length of a scope.
class Raised {
  public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    ~Raised() { flag_ = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

  private:
    bool& flag_;
};

int sizeOr(std::int16_t wanted, std::int16_t fallback) {
    return wanted < 1 ? fallback : std::min<int>(wanted, kMaxScreen);
}

}  // namespace

void Screen::attach(TermSurface& surface) {
    surface_ = &surface;
    painter_.attach(&surface);
}

void Screen::detach() {
    endRun();
    mark_.forget();
    painter_.removePictures();
    surface_ = nullptr;
    painter_.attach(nullptr);
}

void Screen::InitScreen() {
    if (initialised_) return;
    initialised_ = true;
    if (linesPerPage_ == 0) linesPerPage_ = kDefaultLines;
    if (charsPerLine_ == 0) charsPerLine_ = kDefaultColumns;
    term_setfontsize();
    term_setattr("0");
    setRendition(Rendition::kForeground + 7);
    setRendition(Rendition::kBackground);
    rendition_.keepAsDefault();
    buffer_.setBlankLine(rendition_.defaultAttr());
    buffer_.blankRows(0, lastLine());
}

void Screen::control(std::uint8_t ch) {
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
            noteRun();
            cursorX_ = 0;
            return;
        default:  // NUL and DC1 are ignored
            return;
    }
}

void Screen::print(std::uint8_t ch) {
    if (surface_ == nullptr) return;
    HideCursor();
    const Raised writing(writing_);
    if (cursorX_ == rightMargin() && autoWrap_) {
        noteRun();
        cursorX_ = 0;
        lineFeed();
    }
    screenDirty_ = true;
    if (beginRun()) {
        storeInRun(ch);
        return;
    }
    buffer_.put(column(), cursorY_, {ch, rendition_.attr()});
    if (painting() && cursorX_ < rightMargin()) painter_.drawCell(ch, column(), cursorY_, rendition_.pen());
    ++cursorX_;
}

void Screen::backspace() {
    if (cursorX_ < 1) return;
    HideCursor();
    noteRun();
    --cursorX_;
}

void Screen::tabulate() {
    HideCursor();
    noteRun();
    const auto searched = tabStops_.begin() + (kTabStops - 1);
    const auto next =
        std::find_if(tabStops_.begin(), searched, [this](std::int16_t stop) { return stop > cursorX_; });
    cursorX_ = *next;
}

void Screen::lineFeed() {
    noteRun();
    if (cursorY_ >= lastLine()) {
        scrollUp();
    } else {
        ++cursorY_;
    }
    if (runEnd_ != 0) moveRunToCursorRow();
}

void Screen::scrollUp() {
    screenDirty_ = true;
    if (painting()) {
        scrollOnWindow();
    } else {
        buffer_.scrollUp(linesPerPage_);
    }
}

bool Screen::beginRun() {
    const int end = std::min(rightMargin(), kMaxScreen);
    if (painting() || cursorX_ >= end) return false;
    runEnd_ = end;
    moveRunToCursorRow();
    return runEnd_ != 0;
}

void Screen::moveRunToCursorRow() {
    if (cursorY_ < kMaxScreen) {
        run_ = buffer_.rowInPlace(cursorY_);
    } else {
        runEnd_ = 0;
    }
}

void Screen::DataReceiveStart() {
    writing_ = true;
    mark_.wantedAfterBurst = mark_.drawn();
    HideCursor();
}

void Screen::DataReceiveEnd() {
    if (mark_.wantedAfterBurst) {
        mark_.wantedAfterBurst = false;
        ShowCursor();
    }
    writing_ = false;
}

void Screen::term_setattr(std::string_view Ch) {
    if (Ch.empty()) raise(RuntimeErrorNumber::InvalidProcedureCall);
    setRendition(static_cast<std::uint8_t>(Ch.front()));
}

void Screen::setRendition(std::uint8_t code) {
    rendition_.set(code);
    screenDirty_ = true;
}

void Screen::CursorX(int value) {
    noteRun();
    cursorX_ = std::max(std::min(value, charsPerLine_), 0);
}

void Screen::CursorY(int value) {
    endRun();
    cursorY_ = std::max(std::min(value, lastLine()), 0);
}

void Screen::SetCursor(int Col, int Row) {
    CursorX(Col);
    CursorY(Row);
}

void Screen::sizeChanged() {
    SetCursor(column(), cursorY_);
    selectionShown_ = false;
}

void Screen::CharsPerLine(std::int16_t value) {
    endRun();
    charsPerLine_ = value;
    sizeChanged();
}

void Screen::LinesPerPage(std::int16_t value) {
    endRun();
    linesPerPage_ = value;
    sizeChanged();
}

void Screen::AutoWrap(bool value) {
    endRun();
    autoWrap_ = value;
}

void Screen::ScreenSize(std::int16_t Width, std::int16_t& Height) {
    CharsPerLine(static_cast<std::int16_t>(sizeOr(Width, kDefaultColumns)));
    Height = static_cast<std::int16_t>(sizeOr(Height, kDefaultLines));
    LinesPerPage(Height);
    drawAnew();
}

void Screen::ClearScreen() {
    SetCursor(0, 0);
    observer_.screenErased();
    painter_.removePictures();
    buffer_.blankRows(0, lastLine());
    clearWindow();
    setRendition(Rendition::kNormal);
    setRendition(Rendition::kBold);
    screenDirty_ = false;
}

void Screen::blankOnWindow(int firstRow, int lastRow) {
    screenDirty_ = true;
    if (!painting()) return;
    lastRow = std::min(lastRow, kMaxScreen - 1);
    for (int row = firstRow; row <= lastRow; ++row)
        painter_.drawBlanks(0, row, charsPerLine_, rendition_.pen());
}

void Screen::ClearLine() {
    endRun();
    buffer_.blankRow(cursorY_);
    blankOnWindow(cursorY_, cursorY_);
}

void Screen::ClearEndOfLine() {
    endRun();
    screenDirty_ = true;
    if (painting()) {
        painter_.drawBlanks(column(), cursorY_, charsPerLine_ - column(), rendition_.pen());
    }
    if (cursorX_ + 1 > charsPerLine_) return;
    // One column past the last shown one: the pending column is erased too.
    buffer_.fill(column(), charsPerLine_, cursorY_, {0, rendition_.defaultAttr()});
}

void Screen::ClearStartOfLine() {
    endRun();
    blankOnWindow(cursorY_, cursorY_);
    // The window loses the whole row, the buffer only its start: the rest shows again at the next repaint.
    buffer_.fill(0, column(), cursorY_, {' ', rendition_.defaultAttr()});
}

void Screen::ClearEndOfScreen() {
    ClearEndOfLine();
    buffer_.blankRows(cursorY_ + 1, lastLine());
    observer_.rowsErased(cursorY_);
    blankOnWindow(cursorY_ + 1, lastLine());
}

void Screen::ClearBeginOfScreen() {
    endRun();
    blankOnWindow(0, cursorY_ - 1);
    ClearStartOfLine();
    buffer_.blankRows(0, cursorY_);
}

CellPlace Screen::cellAt(Point pixel) const {
    return grid().cellAt(pixel, std::min(charsPerLine_, kMaxScreen), std::min(linesPerPage_, kMaxScreen));
}

CellPlace Screen::nearestCell(CellPlace place) const {
    const auto within = [](int value, int most) {
        return std::clamp(value, 1, std::clamp(most, 1, kMaxScreen));
    };
    return {within(place.column, charsPerLine_), within(place.row, linesPerPage_)};
}

std::string Screen::GetScreenText(CellPlace corner, CellPlace opposite) {
    const auto [firstColumn, lastColumn] = std::minmax({corner.column, opposite.column});
    const auto [firstRow, lastRow] = std::minmax({corner.row, opposite.row});
    std::string text;
    for (int row = firstRow; row <= lastRow; ++row) {
        if (row != firstRow && row != lastRow) text += "\r\n";
        for (int column = firstColumn; column <= lastColumn; ++column) {
            Cell cell = buffer_.record(row).Cells[static_cast<std::size_t>(column)];
            if (cell.Char == 0) {
                cell.Char = ' ';
                buffer_.put(column - 1, row - 1, cell);
            }
            text += static_cast<char>(cell.Char);
        }
    }
    return text;
}

std::vector<std::string> Screen::lines() const {
    std::vector<std::string> lines;
    for (int row = 1; row <= std::min(linesPerPage_, kMaxScreen); ++row) {
        std::string& line = lines.emplace_back();
        for (int column = 1; column <= std::min(charsPerLine_, kMaxScreen); ++column) {
            const std::uint8_t ch = buffer_.record(row).Chars(column);
            line += ch == 0 ? ' ' : static_cast<char>(ch);
        }
    }
    return lines;
}

}  // namespace kavrelon
