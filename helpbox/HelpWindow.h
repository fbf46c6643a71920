#pragma once

#include <cstdint>
#include <memory>

#include "support/Geometry.h"

namespace kavrelon {

class HTMLLabel;
class LabelWindow;

/// The platform's handle of a window, as a number; 0 is none.
using WindowId = std::uintptr_t;

/// The help box's platform seam: its window, and what a drag needs of the desktop.
///
/// A window is created hidden, with a thin border and without a caption, and never becomes the active one. No
/// call fails: a window ignores what it cannot do any more. Showing, moving or closing a window sends
/// messages, in which the host may do anything: close this window too, but not destroy the object, which its
/// owner keeps as long as somebody is inside.
class HelpWindow {
  public:
    virtual ~HelpWindow() = default;

    /// Takes the window off the desktop for good. May be called more than once, also in one of its events.
    virtual void close() noexcept = 0;

    /// Twips per pixel, rounded to the nearest whole number. `Move` counts in twips.
    virtual int twipsPerPixelX() const = 0;
    virtual int twipsPerPixelY() const = 0;

    /// Puts the label's window into the box. Null where labels are not drawn. It lives as long as the box's
    /// window.
    virtual LabelWindow* addLabel(const std::shared_ptr<HTMLLabel>& label) = 0;
    /// Places the label in the box's top left corner.
    virtual void sizeLabel(Size twips) = 0;
    /// The size inside the border, in twips.
    virtual Size innerSize() const = 0;

    /// Keeps the box above this window; the box is destroyed with it.
    virtual void setOwner(WindowId owner) = 0;
    virtual void setVisible(bool visible) = 0;
    /// Moves the whole window, in twips of the desktop.
    virtual void Move(double left, double top, double width, double height) = 0;
    /// The whole window, in pixels of the desktop.
    virtual Rect rectangle() const = 0;

    /// The whole of another window, in pixels of the desktop.
    virtual Rect rectangleOf(WindowId window) const = 0;
    /// Whether the user can see another window: it is neither hidden nor minimised.
    virtual bool isShown(WindowId window) const = 0;

    /// Where the mouse was in the event being handled, in pixels of the desktop.
    virtual Point cursor() const = 0;
    /// Whether one of these mouse buttons (bits of `buttons`) is down in the event being handled.
    virtual bool isHeld(std::int16_t wanted) const = 0;
    /// Draws the outline of a block of the desktop, in pixels; drawing it again removes it.
    virtual void drawFocusRectangle(const Rect& block) = 0;
    /// Pops `mnuRightClick` up at the mouse. The choice arrives as an event, before or after this returns.
    virtual void popUpRightClickMenu() = 0;
};

/// What a help box's window tells it. A handler may close the window. None throws.
class HelpWindowEvents {
  public:
    virtual ~HelpWindowEvents() = default;

    /// The size inside the border has changed.
    virtual void Form_Resize() noexcept = 0;
    /// The platform has destroyed the window.
    virtual void Form_Unload() noexcept = 0;
    virtual void mnuRightClickClose_Click() noexcept = 0;
    /// The mouse button was released during a drag, or another window has captured the mouse. The label does
    /// not always tell of it.
    virtual void dragEnded() noexcept = 0;
};

/// Where the windows of help boxes come from.
class HelpPlatform {
  public:
    virtual ~HelpPlatform() = default;

    /// Creates a hidden window whose events go to `events` for as long as that object lives. Throws when the
    /// platform has none to give.
    virtual std::unique_ptr<HelpWindow> createHelpWindow(std::weak_ptr<HelpWindowEvents> events) = 0;
};

}  // namespace kavrelon
