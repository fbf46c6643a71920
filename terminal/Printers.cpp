#include "terminal/Printers.h"

#include <algorithm>

namespace kavrelon {

Size printedCell(Size page, int columns, int lines) {
    const int width = std::max(page.width / std::max(columns, 1), 1);
    const int height = std::min(page.height / std::max(lines, 1), 2 * width);
    return {width, std::max(height, 1)};
}

PrinterMenu::PrinterMenu(Printers& printers, const std::string& chosen) {
    const std::vector<std::string> names = printers.names();
    const std::string fallback = printers.defaultName();
    const bool chosenIsThere = std::find(names.begin(), names.end(), chosen) != names.end();
    inUse_ = chosenIsThere ? chosen : fallback;
    for (const std::string& name : names) {
        entries_.push_back({name == fallback ? name + " (default)" : name, name, name == inUse_});
    }
}

}  // namespace kavrelon
