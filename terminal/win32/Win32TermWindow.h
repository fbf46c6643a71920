#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "support/win32/WindowHandle.h"
#include "support/win32/WindowProcedure.h"
#include "terminal/TermWindow.h"
#include "terminal/win32/Caret.h"
#include "terminal/win32/KeyMessages.h"
#include "terminal/win32/TermMenus.h"
#include "terminal/win32/Win32TermSurface.h"
#include "terminal/win32/WindowClass.h"

namespace kavrelon {

/// A top-level terminal window of the desktop.
///
/// When the platform destroys the window itself, its owner is told as if it had been closed, and this object
/// ignores calls from then on.
class Win32TermWindow final : public TermWindow, private WindowProcedure {
  public:
    /// Throws std::bad_alloc when the platform has no window to give.
    Win32TermWindow(const WindowClass& windowClass, std::weak_ptr<TermWindowEvents> events);
    ~Win32TermWindow() override;
    Win32TermWindow(const Win32TermWindow&) = delete;
    Win32TermWindow& operator=(const Win32TermWindow&) = delete;

    bool drawable() const override { return surface_.drawable(); }
    Rect dueArea() const override { return surface_.dueArea(); }
    void drawText(Point at, std::span<const std::uint8_t> text) override { surface_.drawText(at, text); }
    void setPen(const Pen& pen) override { surface_.setPen(pen); }
    void drawPicture(const Picture& picture, const Rect& place, const Rect& clip) override {
        surface_.drawPicture(picture, place, clip);
    }
    void invertBlock(const Rect& block) override { surface_.invertBlock(block); }
    void clear() override { surface_.clear(); }
    void clearOutsideGrid() override { surface_.clearOutsideGrid(); }
    void setGrid(const Rect& grid, Size cell) override { surface_.setGrid(grid, cell); }
    void scrollGrid(const Rect& block) override { surface_.scrollGrid(block); }
    void setFont(const FontChoice& font) override { surface_.setFont(font); }
    void setFontSize(double points) override { surface_.setFontSize(points); }
    std::string fontName() const override { return surface_.fontName(); }
    double fontSize() const override { return surface_.fontSize(); }
    double pointsPerPixel() const override { return surface_.pointsPerPixel(); }
    Size measureCell() override { return surface_.measureCell(); }
    Size innerSize() const override { return surface_.innerSize(); }
    bool hasMemory() const override { return surface_.hasMemory(); }
    bool beginMemory() override { return surface_.beginMemory(); }
    void endMemory() override { surface_.endMemory(); }
    bool clearMemory() override { return surface_.clearMemory(); }
    bool keepBlock(const Rect& block) override { return surface_.keepBlock(block); }
    void scrollMemory(const Rect& block) override { surface_.scrollMemory(block); }
    void showMemory() override { surface_.showMemory(); }
    void dropMemory() override { surface_.dropMemory(); }

    void close() noexcept override;
    WindowId id() const override { return reinterpret_cast<WindowId>(window_.get()); }
    Point innerCorner() const override;
    void show() override;
    WindowState state() const override;
    void setState(WindowState state) override;
    void requestInnerSize(Size size) override;
    void makeActive() override;
    void setFocus() override;
    void placeCaret(const Rect& cell) override { caret_.place(cell); }

    std::string caption() const override;
    void setCaption(const std::string& text) override;
    TitleBarSettings titleBarSettings() const override;
    std::uint32_t styleBits() const override;
    void setStyleBits(std::uint32_t bits) override;

    void enableTimer(TermTimer timer, bool on) override;
    void beep(Tone tone) override;
    std::optional<std::string> clipboardText(bool bytes) override;
    bool setClipboardText(const std::string& text) override;
    bool clearClipboard() override;
    void showContextMenu(bool copyEnabled, bool pasteEnabled) override;

    void checkFontEntry(int index) override { menus_.checkFontEntry(index); }
    void checkPrinterTypeEntry(int index) override { menus_.checkPrinterTypeEntry(index); }
    void checkCRtoCRLF(bool on) override { menus_.checkCRtoCRLF(on); }
    void setScreenWidthCaption(std::string_view caption) override { menus_.setScreenWidthCaption(caption); }
    void enableRemoteMenu(bool enabled) override;
    void reportFailure(const std::string& text) override;
    bool confirm(const std::string& text) override;

  private:
    static WindowHandle create(const WindowClass& windowClass, HMENU menu);

    // One handler for each family of messages. The object outlives the events of a message, whose receiver
    // owns it.
    WindowAnswer handle(const WindowMessage& message) override;
    WindowAnswer onDrawing(TermWindowEvents& events, const WindowMessage& message);
    WindowAnswer onCommand(TermWindowEvents& events, const WindowMessage& message);
    void onFocus(TermWindowEvents& events, const WindowMessage& message);
    static WindowAnswer onSession(TermWindowEvents& events, const WindowMessage& message);
    template <class Change>
    void redrawAtOnce(HWND window, Change change);
    void windowDestroyed() override;

    std::weak_ptr<TermWindowEvents> events_;
    TermMenus menus_;
    WindowHandle window_;
    Win32TermSurface surface_;
    KeyMessages keys_;
    Caret caret_;
    WindowState stateWhenShown_ = WindowState::Normal;
    /// The state and the inner area of the last message about them.
    std::pair<WPARAM, LPARAM> sizeTold_{~WPARAM{0}, 0};
    std::array<bool, 2> timers_{};
};

}  // namespace kavrelon
