#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "headless/RecordingCanvas.h"
#include "htmllabel/HTMLLabel.h"
#include "htmllabel/LabelWindow.h"

namespace kavrelon {

/// A label's window in memory, on a screen of 96 pixels an inch whose scroll bars are 16 pixels thick: its
/// surroundings can be set, and it keeps what the label does with it. One that is owned by a shared pointer
/// stays until what it lets in has returned.
class HeadlessLabelWindow final : public LabelWindow,
                                  public std::enable_shared_from_this<HeadlessLabelWindow> {
  public:
    static constexpr double kTwipsPerPixel = 15;

    /// What is around the window.
    struct Surroundings {
        Size twips{3000, 1500};
        bool visible = true;
        bool userMode = true;
        std::optional<int> windowState = 0;
    };
    /// What the label has done with the window.
    struct Shown {
        LabelSurface surface;
        LabelPlacement placement;
        ScrollState vscScroll;
        ScrollState hscScroll;
        MousePointer pointer = MousePointer::Default;
        std::string toolTipText;
        bool tmrHyperlinkClick = false;
        int paints = 0;
        /// What screen readers were told: of how many documents, and moves of the keyboard's frame.
        int documents = 0;
        int focusMoves = 0;
        /// The frame that the last paint drew around what has the keyboard.
        std::optional<Rect> focus;
    };

    /// Painting goes to this label; null for none.
    void paintFor(const std::shared_ptr<HTMLLabel>& label) { label_ = label; }
    Surroundings& surroundings() { return surroundings_; }
    const Shown& shown() const { return shown_; }
    /// The text that the view port shows, painted anew, top to bottom: what stands on one baseline makes a
    /// line, with a blank wherever there is room between.
    std::vector<std::string> textLines();
    /// What happens while the label lets messages through, and when it calls a procedure of the form.
    void onMessages(std::function<void()> handler) { onMessages_ = std::move(handler); }
    void onCall(std::function<void(const std::string&, const std::vector<std::string>&)> handler) {
        onCall_ = std::move(handler);
    }

    Canvas& canvas() override { return canvas_; }
    Size sizeInTwips() const override { return surroundings_.twips; }
    double twipsPerPixelX() const override { return kTwipsPerPixel; }
    double twipsPerPixelY() const override { return kTwipsPerPixel; }
    Size scrollBarThickness() const override { return {16, 16}; }
    bool containerVisible() const override { return surroundings_.visible; }
    bool userMode() const override { return surroundings_.userMode; }
    std::optional<int> parentWindowState() const override { return surroundings_.windowState; }
    void callParent(const std::string& procedure, const std::vector<std::string>& arguments) override;
    void setSurface(const LabelSurface& surface) override { shown_.surface = surface; }
    void place(const LabelPlacement& placement) override { shown_.placement = placement; }
    void setScrollBar(ScrollBar bar, const ScrollState& state) override;
    void setMousePointer(MousePointer pointer) override { shown_.pointer = pointer; }
    void setToolTipText(const std::string& text) override { shown_.toolTipText = text; }
    void enableLinkTimer(bool on) override { shown_.tmrHyperlinkClick = on; }
    void repaintViewPort() override;
    void documentChanged() override { ++shown_.documents; }
    void focusMoved() override { ++shown_.focusMoves; }
    void processMessages() override;

  private:
    struct ViewPort final : RecordingCanvas {
        void drawFocus(const Rect& place) override { focus = place; }
        std::optional<Rect> focus;
    };

    ViewPort canvas_;
    std::weak_ptr<HTMLLabel> label_;
    Surroundings surroundings_;
    Shown shown_;
    std::function<void()> onMessages_;
    std::function<void(const std::string&, const std::vector<std::string>&)> onCall_;
};

}  // namespace kavrelon
