#pragma once

#include <windows.h>

#include <string_view>

#include "support/Geometry.h"

namespace kavrelon::bench {

/// The least that a terminal can be: no buffer, one text call for each character the moment that it comes,
/// and one call that scrolls. It knows as many sequences as the measured streams hold, and draws on the
/// window with the font that is selected there.
class BareTerminal {
  public:
    BareTerminal(HDC context, Point corner, Size cell, Size screen);

    /// Ends with whole sequences only.
    void play(std::string_view bytes);
    /// The next block of a stream, without the start of a sequence at its end.
    static std::string_view wholeBlock(std::string_view stream);

  private:
    void put(char ch);
    void lineFeed();
    std::string_view sequence(std::string_view bytes);
    void setRendition(int code);
    void useColours();

    HDC context_;
    Point corner_;
    Size cell_;
    Size screen_;
    int column_ = 0;
    int line_ = 0;
    int text_ = 7;
    int back_ = 0;
    bool bold_ = true;
};

}  // namespace kavrelon::bench
