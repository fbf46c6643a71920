#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "headless/HeadlessDesktop.h"
#include "headless/HeadlessLabelWindow.h"
#include "helpbox/HelpWindow.h"

namespace kavrelon {

/// A help box's window in memory, at 15 twips a pixel and with a border that takes no room.
class HeadlessHelpWindow final : public HelpWindow {
  public:
    static constexpr int kTwipsPerPixel = 15;

    /// The desktop must outlive the window.
    HeadlessHelpWindow(HeadlessDesktop& desktop, std::weak_ptr<HelpWindowEvents> events);
    ~HeadlessHelpWindow() override;
    HeadlessHelpWindow(const HeadlessHelpWindow&) = delete;
    HeadlessHelpWindow& operator=(const HeadlessHelpWindow&) = delete;

    bool visible() const { return visible_; }
    WindowId owner() const { return owner_; }
    int openMenus() const { return openMenus_; }
    /// The outlines that are drawn on the desktop.
    const std::vector<Rect>& outlines() const { return outlines_; }
    std::shared_ptr<HelpWindowEvents> events() const { return events_.lock(); }
    std::shared_ptr<HTMLLabel> label() const { return label_.lock(); }
    /// The label's window; null before there is a label. It may outlive this one while it is painting.
    const std::shared_ptr<HeadlessLabelWindow>& labelWindow() const { return labelWindow_; }

    int twipsPerPixelX() const override { return kTwipsPerPixel; }
    int twipsPerPixelY() const override { return kTwipsPerPixel; }
    LabelWindow* addLabel(const std::shared_ptr<HTMLLabel>& label) override;
    void sizeLabel(Size twips) override;
    Size innerSize() const override {
        return {rectangle_.width() * kTwipsPerPixel, rectangle_.height() * kTwipsPerPixel};
    }
    void setOwner(WindowId owner) override;
    void close() noexcept override;
    void setVisible(bool visible) override;
    void Move(double left, double top, double width, double height) override;
    Rect rectangle() const override { return rectangle_; }
    Rect rectangleOf(WindowId window) const override { return desktop_.rectangleOf(window); }
    bool isShown(WindowId window) const override { return desktop_.isShown(window); }
    Point cursor() const override { return desktop_.cursor; }
    bool isHeld(std::int16_t buttons) const override { return (desktop_.heldButtons & buttons) != 0; }
    void drawFocusRectangle(const Rect& block) override;
    void popUpRightClickMenu() override {
        ++openMenus_;
        desktop_.onMessages();
    }

  private:
    HeadlessDesktop& desktop_;
    std::weak_ptr<HelpWindowEvents> events_;
    std::weak_ptr<HTMLLabel> label_;
    std::shared_ptr<HeadlessLabelWindow> labelWindow_;
    std::vector<Rect> outlines_;
    Rect rectangle_;
    WindowId owner_ = 0;
    bool visible_ = false;
    int openMenus_ = 0;
};

/// The window of a help box, null when it is gone.
HeadlessHelpWindow* windowOf(const HeadlessDesktop& desktop, const HelpWindowEvents& box);

}  // namespace kavrelon
