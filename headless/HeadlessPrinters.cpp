#include "headless/HeadlessPrinters.h"

namespace kavrelon {

bool HeadlessPrinters::print(const std::string& printer, const std::vector<std::string>& lines, int) {
    printedOn = printer;
    page = lines;
    whilePrinting();
    return takesPages;
}

}  // namespace kavrelon
