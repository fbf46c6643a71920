#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "gdi/pcMemDC.h"
#include "htmllabel/LabelContainer.h"
#include "htmllabel/LabelWindow.h"
#include "htmllabel/win32/GdiCanvas.h"
#include "htmllabel/win32/LinkToolTip.h"
#include "htmllabel/win32/ScrollBarControl.h"
#include "support/com/ComPtr.h"
#include "support/win32/SharedWindowClass.h"
#include "support/win32/WindowHandle.h"
#include "support/win32/WindowProcedure.h"

namespace kavrelon {

class HTMLLabel;
class LabelAccessible;

/// A label's window: a child window with the view port, the scroll bars and the corner between them.
///
/// Its owner makes the label, then the window, attaches one to the other, and shows the window:
///
///     auto label = std::make_shared<HTMLLabel>();
///     auto window = Win32LabelWindow::create(module, parent, place, label, container);
///     label->attach(window.get(), &events);
///     window->show(true);
///     ...
///     label->attach(nullptr, nullptr);
///     window->close();
///
/// The label is not owned. The window keeps itself alive while it handles a message, so that an event may
/// close it or drop the last reference. When the platform destroys the window, for example with its parent,
/// the object ignores calls from then on. It is used on the thread that created it.
class Win32LabelWindow final : public LabelWindow,
                               public std::enable_shared_from_this<Win32LabelWindow>,
                               private WindowProcedure {
  public:
    /// `module` is the module of this code; `place` is in pixels of the parent's inner area. The window is
    /// not visible yet. The container must live until `close`. Throws std::bad_alloc when the platform cannot
    /// create the window.
    static std::shared_ptr<Win32LabelWindow> create(HINSTANCE module, HWND parent, const RECT& place,
                                                    std::weak_ptr<HTMLLabel> label,
                                                    LabelContainer& container);
    ~Win32LabelWindow() override;
    Win32LabelWindow(const Win32LabelWindow&) = delete;
    Win32LabelWindow& operator=(const Win32LabelWindow&) = delete;

    /// The outer window, and the view port in it, which has the focus when the label has it. Null once
    /// closed.
    HWND hWnd() const { return outer_.get(); }
    HWND picViewPort() const { return picViewPort_.get(); }

    /// Moves and sizes the window, in pixels of the parent's inner area.
    void move(const RECT& place);
    void show(bool visible);
    /// Gives the view port the keyboard.
    void setFocus();
    /// Destroys the platform's window; the label and the container are not called any more. May be called
    /// from events, and more than once.
    void close() noexcept;

    Canvas& canvas() override { return canvas_; }
    Size sizeInTwips() const override;
    double twipsPerPixelX() const override;
    double twipsPerPixelY() const override;
    Size scrollBarThickness() const override;
    bool containerVisible() const override;
    bool userMode() const override;
    std::optional<int> parentWindowState() const override;
    void callParent(const std::string& procedure, const std::vector<std::string>& arguments) override;
    void setSurface(const LabelSurface& surface) override;
    void place(const LabelPlacement& placement) override;
    void setScrollBar(ScrollBar bar, const ScrollState& state) override;
    void setMousePointer(MousePointer pointer) override;
    void setToolTipText(const std::string& text) override;
    void enableLinkTimer(bool on) override;
    void repaintViewPort() override;
    void documentChanged() override;
    void focusMoved() override;
    void processMessages() override;

  private:
    Win32LabelWindow(HINSTANCE module, HWND parent, const RECT& place, std::weak_ptr<HTMLLabel> label,
                     LabelContainer& container);
    static WindowHandle createWindow(const SharedWindowClass& windowClass, HWND parent, DWORD style,
                                     const RECT& place);

    // One handler for each family of messages.
    WindowAnswer handle(const WindowMessage& message) override;
    void windowDestroyed() override;
    WindowAnswer onOuter(HTMLLabel& label, const WindowMessage& message);
    WindowAnswer onViewPort(HTMLLabel& label, const WindowMessage& message);
    LRESULT onScroll(HTMLLabel& label, const WindowMessage& message);
    LRESULT onAccessible(const WindowMessage& message);
    static WindowAnswer onTitle(const HTMLLabel& label, const WindowMessage& message);
    void eraseOuter(HDC context) const;
    void paintViewPort(HTMLLabel& label);
    void paintDue(HTMLLabel& label, HDC screen, const RECT& due);
    void updateOrigin();
    void detach() noexcept;

    SharedWindowClass outerClass_;
    SharedWindowClass viewPortClass_;
    std::weak_ptr<HTMLLabel> label_;
    LabelContainer* container_;
    GdiCanvas canvas_;
    pcMemDC picHTML_;
    bool painting_ = false;
    bool paintAgain_ = false;
    WindowHandle outer_;
    WindowHandle picViewPort_;
    ScrollBarControl vscScroll_;
    ScrollBarControl hscScroll_;
    LinkToolTip toolTip_;
    /// Made when somebody asks for it.
    ComPtr<LabelAccessible> accessible_;
    LabelSurface look_;
    LabelPlacement placement_;
    Size sizeTold_;
    MousePointer pointer_ = MousePointer::Default;
    /// Whether the timer is on.
    bool tmrHyperlinkClick_ = false;
};

}  // namespace kavrelon
