#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kavrelon {

/// What a label's window asks of whoever put it on a form. None throws.
class LabelContainer {
  public:
    virtual ~LabelContainer() = default;

    /// Whether the container shows the control.
    virtual bool visible() const noexcept = 0;
    /// The container runs the control rather than designing with it.
    virtual bool userMode() const noexcept = 0;
    /// The form's "WindowState" (0 normal, 1 minimised, 2 maximised); nothing when there is a form that has
    /// none. A container without a form counts as normal.
    virtual std::optional<int> parentWindowState() const noexcept = 0;
    /// Calls a public procedure of the form with these arguments; failures are dropped. Anything may happen
    /// meanwhile, the end of the control included.
    virtual void callParent(const std::string& procedure,
                            const std::vector<std::string>& arguments) noexcept = 0;

    /// Whether a click gives the label the keyboard.
    virtual bool takesFocus() const noexcept { return true; }
    /// Whether the label may let window messages through while it takes a document.
    virtual bool letsMessagesThrough() const noexcept { return true; }
    /// Whether the key message under way came to the label before it came to its window, and was left to the
    /// container, which had no use for it either.
    virtual bool keyWasRefused() noexcept { return false; }
    /// All mouse buttons have been let go, or the mouse was taken away: the end of every drag, also of one
    /// that ends over a link.
    virtual void mouseReleased() noexcept {}
    /// The view port has got the keyboard, or lost it. The control may end meanwhile.
    virtual void focusChanged(bool /*hasFocus*/) noexcept {}
};

}  // namespace kavrelon
