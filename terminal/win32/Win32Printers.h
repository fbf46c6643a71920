#pragma once

#include "terminal/Printers.h"

namespace kavrelon {

/// The printers that Windows knows, local ones and connections.
class Win32Printers final : public Printers {
  public:
    std::vector<std::string> names() override;
    std::string defaultName() override;
    bool print(const std::string& printer, const std::vector<std::string>& lines, int columns) override;
};

}  // namespace kavrelon
