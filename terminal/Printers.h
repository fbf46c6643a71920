#pragma once

#include <string>
#include <vector>

#include "support/Geometry.h"

namespace kavrelon {

/// The system's printers.
class Printers {
  public:
    virtual ~Printers() = default;

    /// The names of all printers, in the system's order.
    virtual std::vector<std::string> names() = 0;
    /// The name of the default one; empty when there is none.
    virtual std::string defaultName() = 0;
    /// Prints lines of single-byte characters on one page: fixed pitch, black on white, as large as `columns`
    /// allow. Returns false when the printer does not take the page.
    virtual bool print(const std::string& printer, const std::vector<std::string>& lines, int columns) = 0;
};

/// The size in pixels of a printed character that lets a screen fill the page's width, or its height when
/// that comes first. A character is at most twice as high as wide, and at least 1 x 1.
Size printedCell(Size page, int columns, int lines);

/// What the printer menu shows: the system's printers, the default one marked, and the one in use checked.
class PrinterMenu {
  public:
    struct Entry {
        std::string caption;
        std::string printer;
        bool checked = false;
    };

    /// `chosen` is the printer that the user picked earlier; empty or unknown means the default one.
    PrinterMenu(Printers& printers, const std::string& chosen);

    const std::vector<Entry>& entries() const { return entries_; }
    /// The printer in use; empty when the system has none.
    const std::string& printerInUse() const { return inUse_; }

  private:
    std::vector<Entry> entries_;
    std::string inUse_;
};

}  // namespace kavrelon
