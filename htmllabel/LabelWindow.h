#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "htmllabel/LabelPlacement.h"
#include "htmllabel/ScrollState.h"
#include "htmllabel/layout/Canvas.h"
#include "support/Geometry.h"

namespace kavrelon {

/// The mouse pointers that the label shows, with their public numbers.
enum class MousePointer : std::int16_t { Default = 0, Arrow = 1, Hourglass = 11, Custom = 99 };

/// How the control's own surface looks, under and around its parts.
struct LabelSurface {
    std::int16_t Appearance = 1;   // 1 is three-dimensional
    std::int16_t BorderStyle = 0;  // 0 is none
    Colour BackColor = 0;
    bool operator==(const LabelSurface&) const = default;
};

/// The label's platform seam: the window that holds its parts, and what is around it.
///
/// No call fails: a window ignores what it cannot do any more. Only `repaintViewPort`, `processMessages`,
/// `callParent`, `documentChanged` and `focusMoved` let events in while they run; the other calls return
/// before anything else happens.
class LabelWindow {
  public:
    virtual ~LabelWindow() = default;

    /// The canvas that documents are measured with. Lives as long as the window.
    virtual Canvas& canvas() = 0;

    /// The control's outer size in twips, and the screen's resolution.
    virtual Size sizeInTwips() const = 0;
    virtual double twipsPerPixelX() const = 0;
    virtual double twipsPerPixelY() const = 0;
    /// The width of a vertical and the height of a horizontal scroll bar, in pixels.
    virtual Size scrollBarThickness() const = 0;

    /// Whether the container shows the control.
    virtual bool containerVisible() const = 0;
    /// Whether the container runs the control rather than designing with it.
    virtual bool userMode() const = 0;
    /// The containing form's "WindowState" (1 is minimised); nothing when there is a form that has none. A
    /// container without a form counts as normal (0).
    virtual std::optional<int> parentWindowState() const = 0;
    /// Calls a public procedure of the containing form with these arguments; failures are dropped. Anything
    /// may happen during the call, even the end of the control.
    virtual void callParent(const std::string& procedure, const std::vector<std::string>& arguments) = 0;

    virtual void setSurface(const LabelSurface& surface) = 0;
    /// Moves the parts. New area of the view port is painted later.
    virtual void place(const LabelPlacement& placement) = 0;
    /// Shows a bar in this state. `Value` is the part of the document that the view port's top left corner
    /// shows: the label repaints the view port itself.
    virtual void setScrollBar(ScrollBar bar, const ScrollState& state) = 0;
    virtual void setMousePointer(MousePointer pointer) = 0;
    /// The tooltip of the view port; empty for none.
    virtual void setToolTipText(const std::string& text) = 0;
    /// Starts or stops `tmrHyperlinkClick` (100 ms). Starting it while it runs does nothing.
    virtual void enableLinkTimer(bool on) = 0;
    /// Repaints the whole view port at once.
    virtual void repaintViewPort() = 0;
    /// The document is another one, or the keyboard has moved to another link: for screen readers and the
    /// like, which may ask about it during the call.
    virtual void documentChanged() = 0;
    virtual void focusMoved() = 0;
    /// Lets pending window messages through. Any event may arrive during the call, even the end of the
    /// control.
    virtual void processMessages() = 0;
};

}  // namespace kavrelon
