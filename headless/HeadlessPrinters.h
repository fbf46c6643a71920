#pragma once

#include <functional>
#include <string>
#include <vector>

#include "terminal/Printers.h"

namespace kavrelon {

/// Printers in memory.
class HeadlessPrinters final : public Printers {
  public:
    std::vector<std::string> installed;
    std::string defaultPrinter;
    /// What `print` answers.
    bool takesPages = true;
    /// The printer that was last asked to print, and what.
    std::string printedOn;
    std::vector<std::string> page;
    /// What happens while the printer has the thread.
    std::function<void()> whilePrinting = [] {};

    std::vector<std::string> names() override { return installed; }
    std::string defaultName() override { return defaultPrinter; }
    bool print(const std::string& printer, const std::vector<std::string>& lines, int columns) override;
};

}  // namespace kavrelon
