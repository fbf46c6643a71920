#pragma once

#include <string>
#include <string_view>

#include "samplehost/RemoteOutput.h"

namespace kavrelon {

/// The eight colours of the terminal.
enum class Ink { Black, Red, Green, Yellow, Blue, Magenta, Cyan, White };

/// The renditions, by their codes. `Normal` and `Dim` draw the colour at three fifths of its brightness,
/// `Bold` at full brightness, `Blink` in italics.
enum class Look { Normal = 0, Bold = 1, Dim = 2, Underline = 4, Blink = 5, Reverse = 7, Hidden = 8 };

/// How text is drawn. A foreground colour resets the rendition, so the three are always sent together.
struct Style {
    Ink fore = Ink::White;
    Ink back = Ink::Black;
    Look look = Look::Bold;
};

/// A block of cells, counted from 0.
struct CellBox {
    int column = 0;
    int row = 0;
    int columns = 0;
    int rows = 0;
};

/// The text with its control characters as numbers in angle brackets.
std::string spelledOut(std::string_view text);

enum class FrameLines { Single, Double };

/// Composes what a remote system sends to the terminal: text, the sequences that the terminal knows, and text
/// commands.
///
/// Cells are counted from 0 and from the writer's own origin, so that a page for 80 x 25 can be in the middle
/// of a larger screen. Line-drawing characters are those of code page 437.
class TerminalWriter {
  public:
    /// Appends to `out`, which must outlive the writer.
    explicit TerminalWriter(RemoteOutput& out) : output_(out), out_(out.bytes()) {}

    void setOrigin(int column, int row);

    TerminalWriter& at(int column, int row);
    TerminalWriter& style(const Style& style);
    /// Appends single-byte text unchanged.
    TerminalWriter& text(std::string_view text);
    /// Text, cut or padded with blanks to `width` cells.
    TerminalWriter& field(std::string_view text, int width);
    TerminalWriter& repeat(char character, int count);
    /// Moves to the first column of the next row; on the last row the screen scrolls.
    TerminalWriter& newLine();
    TerminalWriter& clearToEndOfLine();
    /// Erases the whole screen and moves the cursor to its top left corner.
    TerminalWriter& clearScreen();

    /// Draws the border of `box` in the current style.
    TerminalWriter& frame(const CellBox& box, FrameLines lines);
    TerminalWriter& horizontalRule(int column, int row, int columns, FrameLines lines);

    TerminalWriter& sizeScreen(int columns, int rows);
    /// Puts a new, empty screen on top of this one.
    TerminalWriter& newScreen();
    /// Removes the top screen; the one below is unchanged.
    TerminalWriter& closeScreen();
    /// Shows a help box over the screen, in place of the one with this number (0 to 50). The text is plain,
    /// with "^" for a line break, or HTML that begins with "<html>".
    TerminalWriter& helpBox(int number, const CellBox& place, std::string_view text);
    TerminalWriter& hideHelpBox(int number);
    /// Shows a picture over these cells, in place of the one with this number. The name is that of a file in
    /// the user's picture folder.
    TerminalWriter& showPicture(int number, const CellBox& place, std::string_view name);
    TerminalWriter& clearPicture(int number);
    TerminalWriter& allowPasting(bool allowed);
    TerminalWriter& allowCopying(bool allowed);
    TerminalWriter& logOn(std::string_view user);
    TerminalWriter& logOff();
    /// Adds an entry to the Knowledge Base menu: a web address, without a comma.
    TerminalWriter& addKnowledgeBase(std::string_view url, std::string_view description);
    /// Adds an entry to the Remote menu: a program to start on the user's machine.
    TerminalWriter& addRemote(std::string_view commandLine, std::string_view description);

  private:
    TerminalWriter& privateSequence(std::string_view body);
    TerminalWriter& command(const std::string& text);

    RemoteOutput& output_;
    std::string& out_;
    int originColumn_ = 0;
    int originRow_ = 0;
};

}  // namespace kavrelon
