#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kavrelon {

/// What a label's window asks of the form or program that shows it. None throws.
class LabelContainer {
  public:
    virtual ~LabelContainer() = default;

    /// Whether the container shows the control.
    virtual bool visible() const noexcept = 0;
    /// Whether the container runs the control rather than designing with it.
    virtual bool userMode() const noexcept = 0;
    /// The form's "WindowState" (0 normal, 1 minimised, 2 maximised); nothing when there is a form that has
    /// none. A container without a form counts as normal.
    virtual std::optional<int> parentWindowState() const noexcept = 0;
    /// Calls a public procedure of the form with these arguments; failures are dropped. Anything may happen
    /// during the call, even the end of the control.
    virtual void callParent(const std::string& procedure,
                            const std::vector<std::string>& arguments) noexcept = 0;

    /// Whether a click gives the label the keyboard.
    virtual bool takesFocus() const noexcept { return true; }
    /// Whether the label may let window messages through while it takes a document.
    virtual bool letsMessagesThrough() const noexcept { return true; }
    /// Whether the key message being handled was offered to the label before it reached the window, and
    /// neither the label nor the container used it.
    virtual bool keyWasRefused() noexcept { return false; }
    /// All mouse buttons have been released, or the mouse was captured by another window: the end of every
    /// drag, also of one that ends over a link.
    virtual void mouseReleased() noexcept {}
    /// The view port has gained or lost the keyboard. The control may end during the call.
    virtual void focusChanged(bool /*hasFocus*/) noexcept {}
    /// Others have destroyed the label's window, with the form for example. Not called when its owner closes
    /// it.
    virtual void labelWindowDestroyed() noexcept {}
};

}  // namespace kavrelon
