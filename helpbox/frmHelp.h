#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "helpbox/HelpWindow.h"
#include "htmllabel/HTMLLabel.h"

namespace kavrelon {

class frmHelp;

/// The owner of a help box, which is kept alive during each of the calls. None throws; each may close the
/// box.
class HelpBoxOwner {
  public:
    virtual ~HelpBoxOwner() = default;

    /// The user has closed the box, or the platform has.
    virtual void HelpBoxClosed(const frmHelp& box) noexcept = 0;
    /// The user has clicked a link.
    virtual void HelpBoxLink(const std::string& Href) noexcept = 0;
    /// The picture of this name for the text of a box; null when there is none.
    virtual std::shared_ptr<const Picture> HelpBoxPicture(const std::string& Source) noexcept = 0;
};

/// A help box: a small window over the terminal's that shows a text, plain or in a small subset of HTML, at a
/// place given in character cells. The user drags it with the left mouse button and closes it from a menu.
///
/// Once it is closed, the object stays and ignores all calls. Callers keep it alive while they are inside.
class frmHelp final : public HelpWindowEvents,
                      public std::enable_shared_from_this<frmHelp>,
                      public HTMLLabelEvents {
  public:
    /// Creates the box and loads it: its window exists, hidden.
    static std::shared_ptr<frmHelp> load(HelpPlatform& platform, std::weak_ptr<HelpBoxOwner> owner);
    ~frmHelp() override;
    frmHelp(const frmHelp&) = delete;
    frmHelp& operator=(const frmHelp&) = delete;

    /// Sets where the grid of cells is, in pixels from the corner of the parent window's rectangle, and the
    /// size of a cell. Moves a box that has been shown; so do `SetBoxCord` and `FontInfo`.
    void SetBase(std::int16_t XOffset, std::int16_t YOffset, float CharWidth, float CharHeight);
    /// Sets the box's rectangle in cells. Rows count from 0, but columns from 1.
    void SetBoxCord(std::int16_t iTop, std::int16_t iLeft, std::int16_t iWidth, std::int16_t iHeight);
    std::int16_t BoxTop() const { return mintTop; }
    std::int16_t BoxLeft() const { return mintLeft; }
    std::int16_t BoxWidth() const { return mintWidth; }
    std::int16_t BoxHeight() const { return mintHeight; }

    /// The text as the label keeps it.
    const std::string& HelpInfo() const { return txtHelp->DocumentHTML(); }
    /// Shows a text: HTML when it contains "<html>", plain text otherwise. "^" breaks the line in plain text;
    /// in HTML it is white space.
    void HelpInfo(std::string_view text);
    /// Sets the text's font, one point smaller than the size given.
    void FontInfo(const std::string& sFontName, std::int16_t iFontSize);
    /// `SetBase` and `FontInfo` in one, by which the text is laid out once at most.
    void followGrid(std::int16_t XOffset, std::int16_t YOffset, float CharWidth, float CharHeight,
                    const std::string& sFontName, std::int16_t iFontSize);
    /// Shows the box above `OwnerForm`, at its cells of the window `ParenthWnd`: at once, or as soon as that
    /// window is visible.
    void ShowBox(WindowId OwnerForm, WindowId ParenthWnd);
    /// The parent window has moved, or it was shown, hidden, minimised or restored: the box follows it,
    /// keeping the offset from a drag.
    void parentChanged();
    /// Closes the box for good. May be called more than once.
    void Unload() noexcept;
    bool isLoaded() const { return loaded_; }

    // Events of the platform's window
    void Form_Resize() noexcept override;
    void Form_Unload() noexcept override;
    void mnuRightClickClose_Click() noexcept override;
    void dragEnded() noexcept override;
    // Events of the label
    void HyperlinkClick(const std::string& Href) noexcept override;
    std::shared_ptr<const Picture> LoadImage(const std::string& Source) noexcept override;
    void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept override;
    void MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept override;
    void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept override;

  private:
    explicit frmHelp(std::weak_ptr<HelpBoxOwner> owner) : owner_(std::move(owner)) {}

    void Form_Load();
    void placeAgain();
    /// The text's font, when that is another one and a size that text can have. True when it was set.
    bool setFont(const std::string& name, std::int16_t size);
    /// Sets or changes the document by `change`, and lays it out.
    template <class Change>
    void changeText(Change change);
    void layOutText();
    bool textFits() const;
    /// Moves the window to this block of the desktop, in pixels.
    void moveTo(const Rect& place);

    void beginDrag();
    void drag();
    void stopDrag();
    void drop();

    std::weak_ptr<HelpBoxOwner> owner_;
    // The box owns the label's window, and detaches the label before that is destroyed.
    std::shared_ptr<HTMLLabel> txtHelp = std::make_shared<HTMLLabel>();
    // Lives as long as the box, which may be closed from within one of its calls.
    std::unique_ptr<HelpWindow> window_;
    bool loaded_ = false;
    std::string document_;

    std::int32_t mlTwipsPerPixelX = 0;
    std::int32_t mlTwipsPerPixelY = 0;
    std::int16_t mintXOffset = 0;
    std::int16_t mintYOffset = 0;
    float msglCharWidth = 0;
    float msglCharHeight = 0;
    std::int16_t mintTop = 0;
    std::int16_t mintLeft = 0;
    std::int16_t mintWidth = 0;
    std::int16_t mintHeight = 0;
    bool mblnShown = false;
    /// A resize leaves the layout of the text to the caller of what caused it, who is told that it is due.
    bool layoutHeld_ = false;
    bool layoutDue_ = false;
    WindowId mhParent = 0;
    /// The parent window's corner when the box was last placed relative to it.
    Point parentCorner_;

    Point dragStart_;
    Rect dragWindow_;
    Rect focusRectangle_;
    bool dragging_ = false;
    std::int16_t pressed_ = 0;
    bool dragged_ = false;
};

}  // namespace kavrelon
