#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "htmllabel/HTMLDocument.h"
#include "htmllabel/LabelWindow.h"
#include "htmllabel/Layout.h"

namespace kavrelon {

/// What the label tells its container. A handler may do anything with the label: give it another document,
/// change its properties, or destroy it. None throws.
class HTMLLabelEvents {
  public:
    virtual ~HTMLLabelEvents() = default;

    virtual void HyperlinkClick(const std::string& Href) noexcept = 0;
    /// The picture of this source; null when the container has none. Asked once for each source of a
    /// document.
    virtual std::shared_ptr<const Picture> LoadImage(const std::string& Source) noexcept = 0;
    // Button: bit 1 left, 2 right, 4 middle. Shift: bit 1 Shift, 2 Ctrl, 4 Alt. Places in twips.
    virtual void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept = 0;
    virtual void MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept = 0;
    virtual void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept = 0;
};

/// The label: a control that shows a document in a small subset of HTML, scrolls it and follows its links.
///
/// Portable: its window, scroll bars and timer stand behind the `LabelWindow` seam. Make one with
/// `std::make_shared`; its handlers keep it alive while they run, so that an event may drop the last
/// reference.
class HTMLLabel : public std::enable_shared_from_this<HTMLLabel> {
  public:
    HTMLLabel();
    ~HTMLLabel();
    HTMLLabel(const HTMLLabel&) = delete;
    HTMLLabel& operator=(const HTMLLabel&) = delete;

    /// Gives the label its window and its listener; null takes them away. Neither is owned.
    void attach(LabelWindow* window, HTMLLabelEvents* events);

    // Properties. Setting the font or `BackColor` parses the document again, the others are stored and take
    // effect with the next parse or layout.
    static constexpr const char* Version = "0.3.0";
    const std::string& DefaultFontName() const;
    void DefaultFontName(const std::string& value);
    float DefaultFontSize() const;  // points
    void DefaultFontSize(float value);
    Colour BackColor() const;
    void BackColor(Colour value);
    std::int16_t Appearance() const;  // 0 flat, 1 three-dimensional
    void Appearance(std::int16_t value);
    std::int16_t BorderStyle() const;  // 0 none, 1 fixed single
    void BorderStyle(std::int16_t value);
    bool EnableTooltips() const;
    void EnableTooltips(bool value);
    bool EnableScroll() const;
    void EnableScroll(bool value);
    bool EnableAnchors() const;
    void EnableAnchors(bool value);
    bool UnderlineLinks() const;
    void UnderlineLinks(bool value);
    std::int16_t DefaultPadding() const;  // pixels
    void DefaultPadding(std::int16_t value);
    std::int16_t DefaultSpacing() const;  // pixels
    void DefaultSpacing(std::int16_t value);
    /// The normalised text of the document.
    const std::string& DocumentHTML() const;
    /// Parses the text and, when the container shows the control, lays it out and draws it. A document set
    /// while the control is hidden is laid out when it is first painted.
    void DocumentHTML(std::string_view value);
    std::string DocumentTitle() const;

    const HTMLDocument& document() const;

    // What the window tells the label: each event under the name of its handler. Places are pixels of the
    // view port. None throws.
    void UserControl_Resize() noexcept;
    void UserControl_Show() noexcept;
    void vscScroll_Change(int value) noexcept;
    void hscScroll_Change(int value) noexcept;
    void picViewPort_MouseDown(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept;
    void picViewPort_MouseMove(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept;
    void picViewPort_MouseUp(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept;
    /// The mouse wheel turned by this many notches, away from the user being positive.
    void picViewPort_MouseWheel(double notches) noexcept;
    /// True when the key was the label's own.
    bool picViewPort_KeyDown(std::int16_t KeyCode, std::int16_t Shift) noexcept;
    void picViewPort_GotFocus() noexcept;
    void picViewPort_LostFocus() noexcept;
    void tmrHyperlinkClick_Timer() noexcept;
    /// Draws what the view port shows, from its top left corner on, with a canvas of its platform.
    void picViewPort_Paint(Canvas& canvas, Size viewPort) noexcept;
};

}  // namespace kavrelon
