#pragma once

#include <string>

namespace kavrelon {

/// A document of some hundred words in all that the label knows: blocks, lists, tables in tables, floating
/// pictures and tables, links, styles, hard spaces, and sizes of all kinds. The same for a seed on every
/// system. Links are closed and hold texts and styles only; nothing is hidden.
std::string randomHtml(unsigned seed);

}  // namespace kavrelon
