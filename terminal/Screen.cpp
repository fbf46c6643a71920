#include "terminal/Screen.h"

#include <algorithm>

#include "support/RuntimeError.h"
#include "terminal/HelpBoxes.h"
#include "terminal/TermWindow.h"

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

void Screen::attach(TermWindow& window) {
    window_ = &window;
    painter_.attach(&window);
}

void Screen::detach() {
    endRun();
    mark_.forget();
    window_ = nullptr;
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

void Screen::writeAny(std::uint8_t ch) {
    endRun();
    if (window_ == nullptr) return;
    switch (ch) {
        case 0:   // NUL
        case 17:  // DC1
            return;
        case 7:  // BEL
            window_->enableTimer(TermTimer::Beep, true);
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
            cursorX_ = 0;
            return;
        default:
            print(ch);
    }
}

void Screen::print(std::uint8_t ch) {
    HideCursor();
    const Raised writing(writing_);
    if (cursorX_ >= rightMargin() && autoWrap_) {
        cursorX_ = 0;
        lineFeed();
    }
    buffer_.put(cursorX_, cursorY_, ch, rendition_.attr());
    screenDirty_ = true;
    if (painting()) {
        if (cursorX_ < rightMargin()) painter_.drawCell(ch, cursorX_, cursorY_, rendition_.pen());
        ++cursorX_;
    } else {
        ++cursorX_;
        beginRun();
    }
}

void Screen::backspace() {
    if (cursorX_ < 1) return;
    HideCursor();
    --cursorX_;
}

void Screen::tabulate() {
    HideCursor();
    const auto searched = tabStops_.begin() + (kTabStops - 1);
    const auto stop =
        std::find_if(tabStops_.begin(), searched, [this](std::int16_t column) { return column > cursorX_; });
    cursorX_ = *stop;
}

void Screen::lineFeed() {
    if (cursorY_ >= lastLine()) {
        scrollUp();
    } else {
        ++cursorY_;
    }
}

void Screen::scrollUp() {
    if (painting()) painter_.scrollImage();
    buffer_.scrollUp(linesPerPage_);
    screenDirty_ = true;
}

void Screen::beginRun() {
    ScreenLine& row = buffer_.rowForWriting(cursorY_);
    runChars_ = row.Chars.data() + 1;
    runAttrs_ = row.Attrs.data() + 1;
    runEnd_ = std::min(rightMargin(), kMaxScreen);
}

void Screen::endRun() {
    if (runEnd_ == 0) return;
    runEnd_ = 0;
    buffer_.noteWritten(cursorY_, cursorX_);
}

void Screen::DataReceiveStart() {
    endRun();
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
    endRun();
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
    SetCursor(cursorX_, cursorY_);
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
    helpBoxes_.closeAll();
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
        painter_.drawBlanks(cursorX_, cursorY_, charsPerLine_ - cursorX_, rendition_.pen());
    }
    if (cursorX_ + 1 > charsPerLine_) return;
    // One column past the last shown one: the pending column is erased too.
    buffer_.fill(cursorX_, charsPerLine_, cursorY_, 0, rendition_.defaultAttr());
}

void Screen::ClearStartOfLine() {
    endRun();
    blankOnWindow(cursorY_, cursorY_);
    // The window loses the whole row, the buffer only its start: the rest shows again at the next repaint.
    buffer_.fill(0, cursorX_, cursorY_, ' ', rendition_.defaultAttr());
}

void Screen::ClearEndOfScreen() {
    ClearEndOfLine();
    buffer_.blankRows(cursorY_ + 1, lastLine());
    helpBoxes_.closeFrom(cursorY_);
    blankOnWindow(cursorY_ + 1, lastLine());
}

void Screen::ClearBeginOfScreen() {
    endRun();
    blankOnWindow(0, cursorY_ - 1);
    ClearStartOfLine();
    buffer_.blankRows(0, cursorY_);
}

}  // namespace kavrelon
