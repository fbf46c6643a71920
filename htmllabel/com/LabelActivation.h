#pragma once

#include <windows.h>

#include <oleidl.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "htmllabel/HTMLLabel.h"
#include "htmllabel/LabelContainer.h"
#include "htmllabel/com/LabelEvents.h"
#include "htmllabel/com/LabelSite.h"
#include "htmllabel/win32/Win32LabelWindow.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// The label in place: its window on the container's form, from activation to deactivation, and the keyboard
/// that it shares with the container.
///
/// A container may do anything while it is called, even end the activation.
class LabelActivation final : private LabelContainer {
  public:
    LabelActivation(IOleInPlaceActiveObject& object, const LabelSite& site, LabelEvents& events,
                    std::shared_ptr<HTMLLabel> label);
    ~LabelActivation() override;
    LabelActivation(const LabelActivation&) = delete;
    LabelActivation& operator=(const LabelActivation&) = delete;

    bool isActive() const noexcept { return static_cast<bool>(inPlaceSite_); }
    /// The label's window; null when there is none.
    HWND window() const noexcept;

    /// Shows the window on the form, where the container wants it. Throws a ComError when the container does
    /// not allow it.
    void activate();
    /// Gives the label the keyboard, and tells the container.
    void activateUi();
    void deactivateUi();
    void deactivate();
    void hide();

    /// Moves the window, in pixels of the form; the part outside `clip` stays hidden.
    void place(const RECT& place, const RECT& clip);
    /// Asks the container for this size, in pixels.
    void requestSize(Size size);
    /// Offers a key to the label, and then to the container. False when neither uses it.
    bool takesKey(MSG& message);
    /// The container has changed its ambient properties.
    void ambientsChanged() const;

  private:
    bool visible() const noexcept override { return visible_; }
    bool userMode() const noexcept override { return site_.runs(); }
    std::optional<int> parentWindowState() const noexcept override { return site_.formWindowState(); }
    void callParent(const std::string& procedure,
                    const std::vector<std::string>& arguments) noexcept override {
        if (site_.runs()) site_.callForm(procedure, arguments);
    }
    bool takesFocus() const noexcept override { return site_.runs(); }
    bool keyWasRefused() noexcept override { return refusedKey_ == GetMessageTime(); }
    void focusChanged(bool hasFocus) noexcept override;
    void labelWindowDestroyed() noexcept override;

    void openWindow();
    void closeWindow() noexcept;
    void releaseKeyboard() const;
    void beginUi();
    void announceAsActive(IOleInPlaceActiveObject* object) const;

    IOleInPlaceActiveObject& object_;
    const LabelSite& site_;
    LabelEvents& events_;
    std::shared_ptr<HTMLLabel> label_;

    // These exist while the label is in place.
    ComPtr<IOleInPlaceSite> inPlaceSite_;
    ComPtr<IOleInPlaceFrame> frame_;
    ComPtr<IOleInPlaceUIWindow> document_;
    std::shared_ptr<Win32LabelWindow> window_;
    bool visible_ = false;
    bool uiActive_ = false;
    bool hasFocus_ = false;
    bool clipped_ = false;
    /// The time of the last key that neither the label nor the container used.
    std::optional<LONG> refusedKey_;
};

}  // namespace kavrelon
