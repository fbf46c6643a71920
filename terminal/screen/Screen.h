#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "terminal/screen/CursorMark.h"
#include "terminal/screen/Painter.h"
#include "terminal/screen/Rendition.h"
#include "terminal/screen/ScreenBuffer.h"
#include "terminal/screen/ScreenObserver.h"

namespace kavrelon {

/// The character screen: the buffer, the cursor and every operation that changes them, each mirrored on the
/// window at once while painting is on.
///
/// Columns and rows are 0-based. The cursor's column ranges to `CharsPerLine` inclusive: in the column after
/// the last shown one, the pending column, it waits for the character that makes it wrap. Operations fail
/// only where they would store outside the buffer (SubscriptOutOfRange); what was stored before stays.
///
/// To draw is to put cells on the window. To repaint is to draw them from the buffer, with the cursor mark
/// off meanwhile. To clear the window is to fill it with its background; to blank rows is to fill them with
/// the blank line, in the buffer alone.
class Screen {
  public:
    static constexpr std::int16_t kDefaultColumns = 80;
    static constexpr std::int16_t kDefaultLines = 25;

    /// The observer must outlive the screen.
    explicit Screen(ScreenObserver& observer) : observer_(observer) {}

    /// Takes the window to draw on, which must live until `detach`. Without one the buffer still works, and
    /// received bytes are dropped.
    void attach(TermSurface& surface);
    /// Forgets the window, its cursor mark and the pictures; draws nothing.
    void detach();
    /// Lays the grid out and blanks the screen in the default attribute; later calls do nothing.
    void InitScreen();

    // Output

    /// Writes one byte at the cursor.
    void WriteTerm(std::uint8_t Ch) {
        if (isPrinted(Ch) && CursorX_ < runEnd_) [[likely]] {
            storeInRun(Ch);
        } else {
            writeSlowly(Ch);
        }
    }
    /// The two bracket a burst of changes: the cursor mark is off the window in between, and does not blink.
    void DataReceiveStart();
    void DataReceiveEnd() {
        if (mark_.wantedAfterBurst) {
            mark_.wantedAfterBurst = false;
            ShowCursor();
        }
        Writing_ = false;
    }
    /// Makes changes that send no messages in such a bracket. Where they fail it stays open: the mark is off
    /// until the next one, or the next printed byte.
    template <class Changes>
    void inBurst(const Changes& changes) {
        beginBurst();
        try {
            changes();
        } catch (...) {
            closeRun();
            throw;
        }
        DataReceiveEnd();
    }

    /// Carries out the rendition code that is the first character's code; an empty text raises
    /// InvalidProcedureCall.
    void term_setattr(std::string_view Ch);
    /// The same by its code; one without a meaning changes nothing.
    void setRendition(std::uint8_t code) {
        rendition_.set(code);
        ScreenDirty_ = true;
    }
    /// The default foreground in bold; the background stays.
    void ResetScreenDefaults() { term_setattr("0"); }

    // Cursor and size

    std::int16_t CursorX() const { return static_cast<std::int16_t>(CursorX_); }
    /// Values out of range are clamped.
    void CursorX(int value);
    std::int16_t CursorY() const { return static_cast<std::int16_t>(CursorY_); }
    void CursorY(int value);
    /// Sets the column, then the row. The mark on the window follows at the next blink.
    void SetCursor(int Col, int Row);
    std::int16_t CharsPerLine() const { return static_cast<std::int16_t>(CharsPerLine_); }
    /// Stores the number of columns, whatever it is, and forgets a shown selection; draws nothing.
    void CharsPerLine(std::int16_t value);
    std::int16_t LinesPerPage() const { return static_cast<std::int16_t>(LinesPerPage_); }
    void LinesPerPage(std::int16_t value);
    bool AutoWrap() const { return AutoWrap_; }
    void AutoWrap(bool value) { AutoWrap_ = value; }
    /// Sets the size, lays the grid out and repaints; the buffer keeps its contents. Sizes below 1 mean the
    /// default, sizes above 1024 mean 1024; the height that was used is left in `Height`.
    void ScreenSize(std::int16_t Width, std::int16_t& Height);

    // Erasing. What is erased takes the default attribute, whatever the current one is.

    /// Blanks the screen, brings the cursor home, removes pictures and sets the rendition to bold.
    void ClearScreen();
    /// Blanks the cursor's row.
    void ClearLine();
    /// Empties the cells from the cursor to the pending column; none when the cursor is in that.
    void ClearEndOfLine();
    /// Stores spaces up to the cursor. The window loses the whole row until the next repaint.
    void ClearStartOfLine();
    /// As `ClearEndOfLine`, and blanks the rows below.
    void ClearEndOfScreen();
    /// Blanks the rows down to the cursor's, that one included.
    void ClearBeginOfScreen();

    // Painting

    /// While it is off nothing is drawn, by any operation; on at first.
    bool PaintOn() const { return PaintOn_; }
    void PaintOn(bool value);
    /// What is drawn is kept in the window's memory bitmap as well; off at first.
    bool UseMemoryDC() const { return painter_.UseMemoryDC(); }
    void UseMemoryDC(bool value);
    /// The font follows the window's size; on at first.
    bool AutoSize() const { return AutoSize_; }
    void AutoSize(bool value);
    /// The font's size in points, rounded.
    std::int16_t ScreenFontSize() const;
    /// Sets it, lays the grid out and repaints; ignored while `AutoSize` is on. Raises InvalidProcedureCall
    /// below 1.
    void ScreenFontSize(std::int16_t points);
    /// Chooses the window's font; what is laid out and drawn stays.
    void setFont(const FontChoice& font);
    /// The window may have been shown or hidden.
    void visibilityChanged() { noteWhatIsSeen(); }
    /// Lays the grid out in the window; with `AutoSize` the font follows the window, without it a window that
    /// is neither maximised nor minimised is asked to fit the grid when `mayResizeWindow`.
    void term_setfontsize(bool mayResizeWindow = false);
    /// The smallest inner area that shows the whole screen while the font follows the window; 0 x 0 while it
    /// does not.
    Size leastInnerSize() const;
    /// Clears the window, lays the grid out and repaints the screen.
    void layOutAndRepaint();
    /// The window's inner area has changed: lays the grid out, and repaints if anything was written.
    void windowResized();
    /// Repaints the cells between two corners, 1-based; a bound below 1 means the full range. With `Selected`
    /// they are the selection, drawn in reverse while that is shown. With `PaintOnly` the memory bitmap is
    /// shown instead when it is in use.
    void RepaintScreen(bool Selected = false, int FromCol = 0, int FromRow = 0, int ToCol = 0, int ToRow = 0,
                       bool PaintOnly = false);
    /// Takes the highlight of a selection off. Without one, `PaintOnly` repaints as above, and nothing
    /// happens otherwise.
    void Redrawscreen(bool PaintOnly = false);
    /// The platform wants the part of the window that is due: repaints it, without a highlight, and clears
    /// what is around the grid.
    void paintWindow();

    const Pictures& pictures() const { return painter_.pictures(); }
    /// Shows a picture over a rectangle of cells until it is cleared or the screen is. It takes the place of
    /// an older one of its number, which goes also when there is no picture (null) to come.
    void DisplayPicture(std::int16_t number, const CellRect& place, std::shared_ptr<const Picture> picture);
    /// Removes a picture, if there is one; what was below it shows again.
    void ClearPicture(std::int16_t number);
    void clearPictures();

    /// The cells last repainted as `Selected` are shown in reverse.
    bool SelectionShown() const { return SelectionShown_; }
    void SelectionShown(bool value) { SelectionShown_ = value; }

    /// The cell under a pixel of the window, or the nearest one.
    CellPlace cellAt(Point pixel) const;
    /// The place itself, or the nearest one on the screen.
    CellPlace nearestCell(CellPlace place) const;
    /// The text between two corners, in any order, with a line break before each row but the first and the
    /// last. Empty cells count as spaces, and hold spaces afterwards.
    std::string GetScreenText(CellPlace corner, CellPlace opposite);
    /// The same text; empty cells stay empty.
    std::string shownText(CellPlace corner, CellPlace opposite) const;
    /// How many rows and columns there are, as far as they can be stored.
    int shownRows() const { return std::clamp(LinesPerPage_, 0, kMaxScreen); }
    int shownColumns() const { return std::clamp(CharsPerLine_, 0, kMaxScreen); }
    /// What a row shows, 1 to `kMaxScreen`, empty cells as spaces; and all rows.
    std::string line(int row) const;
    std::vector<std::string> lines() const;

    /// Draws the cursor mark, a block of inverted pixels, unless it is drawn.
    void ShowCursor();
    /// Takes the mark off the cell where it was drawn, wherever the cursor is by now.
    void HideCursor() {
        if (mark_.drawn()) takeMarkOff();
    }
    /// One tick of the blink.
    void blinkCursor();
    /// Puts back a mark that a repaint took off and has not put back.
    void restoreCursor();

    /// The block of the cursor's cell, where the mark is drawn.
    Rect cursorBlock() const { return grid().cellBlock(CursorX_, CursorY_); }

    /// Whether anything was stored, erased, scrolled or repainted, or a rendition code set, since the last
    /// `ClearScreen`.
    bool ScreenDirty() const { return ScreenDirty_; }
    bool cursorDrawn() const { return mark_.drawn(); }
    const ScreenBuffer& buffer() const { return buffer_; }
    const Rendition& rendition() const { return rendition_; }
    const GridLayout& grid() const { return painter_.grid(); }

  private:
    static constexpr int kTabStops = 21;
    static constexpr CellRect kNoCells{1, 1, 0, 0};
    static constexpr CellRect kAllCells{1, 1, kMaxScreen, kMaxScreen};

    static constexpr bool isPrinted(std::uint8_t ch) { return kPrinted[ch]; }
    static constexpr auto kPrinted = [] {
        std::array<bool, 256> printed{};
        printed.fill(true);
        for (const int control : {0, 7, 8, 9, 10, 11, 12, 13, 17}) {
            printed[static_cast<std::size_t>(control)] = false;
        }
        return printed;
    }();

    bool painting() const { return PaintOn_ && surface_ != nullptr; }
    void noteWhatIsSeen();
    void clearAroundGrid();
    int LastLine() const { return LinesPerPage_ - 1; }
    int RightMargin() const { return CharsPerLine_; }

    void storeInRun(std::uint8_t ch) {
        // Never negative, so that it is an index as it is.
        const auto column = static_cast<unsigned>(CursorX_);
        run_.cells[column].take(rendition_.stamp(), ch);
        ++CursorX_;
    }
    // Kept out of the loops that feed bytes: inlined there, it would crowd out the common case.
    [[gnu::noinline]] void writeSlowly(std::uint8_t ch);
    [[gnu::noinline]] void print(std::uint8_t ch);
    void backspace();
    void tabulate();
    void lineFeed();
    // Kept out of the line feed of a run, which saves few registers that way.
    [[gnu::noinline]] void moveDown();
    void ScrollUp();
    void beginBurst() {
        Writing_ = true;
        mark_.wantedAfterBurst = mark_.drawn();
        HideCursor();
    }
    void openRun(int end);
    /// Closes the run and returns its end, with which it can be opened again; 0 if it was closed.
    int closeRun() {
        noteRun();
        return std::exchange(runEnd_, 0);
    }
    /// Tells the buffer how far the run has been written; due before the cursor leaves the end of what was
    /// written. The cursor of a screen wider than can be stored may be past the row. Inlined, whatever the
    /// compiler thinks: every line end passes here twice.
    [[gnu::always_inline]] void noteRun() {
        if (runEnd_ != 0 && *run_.extent <= CursorX_) *run_.extent = std::min(CursorX_, runEnd_) + 1;
    }
    /// The one way to change the column, but for the stores that move it on.
    void moveToColumn(int column) {
        noteRun();
        CursorX_ = column;
    }
    void blankRows(int first, int last);
    void BlankBuffer() { blankRows(0, LastLine()); }
    void sizeChanged();
    void takeMarkOff();
    void ClearWindow();
    void addShown(int row, int firstColumn, int lastColumn, std::string& text) const;
    void drawBlankRows(int firstRow, int lastRow);
    void drawCells(const CellRect& wanted, const Pictures* below = nullptr);
    void repaintCells(const CellRect& cells);
    bool showMemory(bool asKept);
    void drawPictureCells(const CellRect& cells, const Pictures* below = nullptr);
    // Kept out of the scroll that a burst without painting consists of.
    [[gnu::noinline]] void scrollWithImage();

    ScreenObserver& observer_;
    TermSurface* surface_ = nullptr;
    ScreenBuffer buffer_;
    Rendition rendition_;
    Painter painter_;
    CursorMark mark_;

    // The run: the cursor's row, open for characters that need nothing but storing, and so without any of the
    // other duties of `print`. It is open only while nothing is drawn, so that the mark is off, and while no
    // bracket is left open, which a printed byte would end. It ends (runEnd_, 0 while it is closed) where a
    // character wraps or is refused. Whatever blanks or moves the cursor's row, takes the cursor to another
    // one, leaves a bracket open or lets something be drawn closes it; a scroll takes it to the row that it
    // has blanked.
    ScreenBuffer::RowInPlace run_{};
    int runEnd_ = 0;

    int CursorX_ = 0;
    int CursorY_ = 0;
    int CharsPerLine_ = 0;
    int LinesPerPage_ = 0;
    std::array<std::int16_t, kTabStops> TabStops_{};
    bool initialised_ = false;
    bool AutoWrap_ = true;
    bool PaintOn_ = true;
    bool AutoSize_ = true;
    bool Writing_ = false;
    bool ScreenDirty_ = false;
    bool SelectionShown_ = false;
    // The cells that the window shows in reverse: while a selection is shown, and then until they are drawn.
    CellRect reversed_ = kNoCells;

    // What of the screen is drawn, brought up to date wherever it may change, so that a character costs two
    // comparisons: the columns and lines of which something can be seen, none while nothing is drawn.
    bool drawing_ = false;
    int drawnColumns_ = 0;
    int drawnLines_ = 0;
    // What a scroll does then: it moves the pixels of the lines that can be seen whole, and draws those that
    // come into the window from below its edge.
    Rect scrolled_;
    CellRect scrolledIn_ = kNoCells;
};

}  // namespace kavrelon
