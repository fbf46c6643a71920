#pragma once

#include <cstdint>

#include "support/Geometry.h"
#include "terminal/screen/ScreenLine.h"
#include "terminal/screen/TermSurface.h"

namespace kavrelon {

/// `from` moved by `fraction` of the way to `to`, each component rounded half to even.
Colour BlendColour(Colour from, Colour to, double fraction);

/// The attribute with which characters are written: the codes last set, and the pen that they ask for.
///
/// A few of its rules surprise and are meant: normal draws dimmer than bold, blink is italic, any foreground
/// colour selects bold, and a reset keeps the background.
class Rendition {
  public:
    /// Codes of `set`.
    enum Code : std::uint8_t {
        kNormal = 0,
        kBold = 1,
        kDim = 2,
        kUnderline = 4,
        kBlink = 5,
        kReverse = 7,
        kHidden = 8,
        kForeground = 30,
        kBackground = 40,
        kReset = 48,
    };

    /// Carries out one rendition code; codes without a meaning change nothing.
    void set(std::uint8_t code);

    /// Makes the current attribute the one to which a reset returns, and which erasing stamps.
    void keepAsDefault() { DefaultAttr_ = stamp_.Attr; }

    /// Sets the codes that differ, foreground, background and rendition in this order.
    void apply(CellAttr attr);

    CellAttr CurAttr() const { return stamp_.Attr; }
    CellAttr DefaultAttr() const { return DefaultAttr_; }
    /// A cell of character 0 in the current attribute, to be copied and given its character.
    const Cell& stamp() const { return stamp_; }
    Colour ForeColour() const { return ForeColour_; }
    Colour BackColour() const { return BackColour_; }
    /// The pen of the current attribute.
    const Pen& pen() {
        if (penStale_) choosePen();
        return pen_;
    }

  private:
    void reset();
    void choosePen();

    // The current attribute, in a cell that a character only has to be put into.
    Cell stamp_;
    CellAttr DefaultAttr_;
    Colour ForeColour_ = 0;
    Colour BackColour_ = 0;
    // Chosen when something is drawn: most changes of attribute come in bursts, or while painting is off.
    Pen pen_;
    bool penStale_ = true;
};

}  // namespace kavrelon
