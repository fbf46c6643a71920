#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "helpbox/HelpWindow.h"
#include "htmllabel/LabelContainer.h"
#include "support/win32/SharedWindowClass.h"
#include "support/win32/WindowHandle.h"
#include "support/win32/WindowProcedure.h"

namespace kavrelon {

class Win32LabelWindow;

/// A help box's window on the desktop. A click on it counts as one on its owner, which has the keyboard.
///
/// When the platform destroys the window, for example with its owner, the box is told, and this object
/// ignores calls from then on.
class Win32HelpWindow final : public HelpWindow, private LabelContainer, private WindowProcedure {
  public:
    static constexpr const char* kClassName = "kavrelon.frmHelp";

    /// `module` is the module of this code. Throws std::bad_alloc when the platform cannot create the window.
    Win32HelpWindow(HINSTANCE module, std::weak_ptr<HelpWindowEvents> events);
    ~Win32HelpWindow() override;
    Win32HelpWindow(const Win32HelpWindow&) = delete;
    Win32HelpWindow& operator=(const Win32HelpWindow&) = delete;

    int twipsPerPixelX() const override { return twipsPerPixelX_; }
    int twipsPerPixelY() const override { return twipsPerPixelY_; }
    void close() noexcept override;
    LabelWindow* addLabel(const std::shared_ptr<HTMLLabel>& label) override;
    void sizeLabel(Size twips) override;
    Size innerSize() const override;
    void setOwner(WindowId owner) override;
    void setVisible(bool visible) override;
    void Move(double left, double top, double width, double height) override;
    Rect rectangle() const override;
    Rect rectangleOf(WindowId window) const override;
    bool isShown(WindowId window) const override;
    Point cursor() const override;
    bool isHeld(std::int16_t wanted) const override;
    void drawFocusRectangle(const Rect& block) override;
    void popUpRightClickMenu() override;

  private:
    WindowAnswer handle(const WindowMessage& message) override;
    void windowDestroyed() override;

    // What the label asks its container. Messages are not let through for it: boxes are shown while the host
    // is receiving data, and nothing that arrives later may overtake the rest of it.
    bool visible() const noexcept override { return placed_; }
    bool userMode() const noexcept override { return true; }
    std::optional<int> parentWindowState() const noexcept override { return 0; }
    bool takesFocus() const noexcept override { return false; }
    bool letsMessagesThrough() const noexcept override { return false; }
    void mouseReleased() noexcept override;
    /// A help box has no procedures that its text could call.
    void callParent(const std::string&, const std::vector<std::string>&) noexcept override {}

    std::weak_ptr<HelpWindowEvents> events_;
    SharedWindowClass class_;
    WindowHandle window_;
    std::shared_ptr<Win32LabelWindow> label_;
    int twipsPerPixelX_;
    int twipsPerPixelY_;
    /// The box has an owner and a position, so that its text is worth laying out.
    bool placed_ = false;
};

}  // namespace kavrelon
