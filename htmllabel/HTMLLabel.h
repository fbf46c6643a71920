#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "htmllabel/HTMLLabelProperties.h"
#include "htmllabel/LabelPictures.h"
#include "htmllabel/LabelWindow.h"
#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Layout.h"
#include "htmllabel/layout/PlainText.h"
#include "support/RuntimeError.h"

namespace kavrelon {

/// What the label tells its container. A handler may do anything with the label: set another document, change
/// properties, or destroy it. None throws.
class HTMLLabelEvents {
  public:
    virtual ~HTMLLabelEvents() = default;

    virtual void HyperlinkClick(const std::string& Href) noexcept = 0;
    /// The picture for this source; null when the container has none. Asked once for each source of a
    /// document.
    virtual std::shared_ptr<const Picture> LoadImage(const std::string& Source) noexcept = 0;
    // Button and Shift are bits, of `buttons` and of `shifts`: those of public events. Positions are in
    // twips.
    virtual void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept = 0;
    virtual void MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept = 0;
    virtual void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept = 0;
};

/// The label: a control that shows a document in a small subset of HTML, scrolls it and follows its links.
///
/// Portable: its window, scroll bars and timer are behind the `LabelWindow` seam. Make one with
/// `std::make_shared`; its handlers keep it alive while they run, so that an event may drop the last
/// reference.
///
/// Anything may be done to the label while it lets messages through or fires an event. When several documents
/// are being set at once, the one started last stays, and the other calls return without effect.
class HTMLLabel : public std::enable_shared_from_this<HTMLLabel> {
  public:
    HTMLLabel() = default;
    HTMLLabel(const HTMLLabel&) = delete;
    HTMLLabel& operator=(const HTMLLabel&) = delete;

    /// Gives the label its window and its listener; null removes them. Neither is owned. A label without a
    /// window still takes properties and a document; the document is laid out when a window shows it.
    void attach(LabelWindow* window, HTMLLabelEvents* events);

    // Properties. Setting the font or `BackColor` parses the document again; the others are stored and take
    // effect at the next parse or layout. Any value is accepted.
    static constexpr const char* Version = "0.3.0";
    const std::string& DefaultFontName() const { return properties_.DefaultFontName; }
    void DefaultFontName(const std::string& value);
    float DefaultFontSize() const { return properties_.DefaultFontSize; }  // points
    void DefaultFontSize(float value);
    Colour BackColor() const { return properties_.BackColor; }
    void BackColor(Colour value);
    std::int16_t Appearance() const { return properties_.Appearance; }  // 0 flat, 1 three-dimensional
    void Appearance(std::int16_t value);
    std::int16_t BorderStyle() const { return properties_.BorderStyle; }  // 0 none, 1 fixed single
    void BorderStyle(std::int16_t value);
    bool EnableTooltips() const { return properties_.EnableTooltips; }
    void EnableTooltips(bool value) { properties_.EnableTooltips = value; }
    bool EnableScroll() const { return properties_.EnableScroll; }
    void EnableScroll(bool value) { properties_.EnableScroll = value; }
    bool EnableAnchors() const { return properties_.EnableAnchors; }
    void EnableAnchors(bool value) { properties_.EnableAnchors = value; }
    bool UnderlineLinks() const { return properties_.UnderlineLinks; }
    void UnderlineLinks(bool value) { properties_.UnderlineLinks = value; }
    std::int16_t DefaultPadding() const { return properties_.DefaultPadding; }  // pixels
    void DefaultPadding(std::int16_t value) { properties_.DefaultPadding = value; }
    std::int16_t DefaultSpacing() const { return properties_.DefaultSpacing; }  // pixels
    void DefaultSpacing(std::int16_t value) { properties_.DefaultSpacing = value; }
    /// The normalised text of the document.
    const std::string& DocumentHTML() const {
        return pendingText_ ? *pendingText_ : document_.mstrDocument();
    }
    /// Parses the text and, when the container shows the control, lays it out and draws it from the top. A
    /// document set while the control is hidden is laid out when it is first shown or painted.
    void DocumentHTML(std::string_view value);
    /// Takes over the control's size, and lays the document out in it, from its top, without parsing or
    /// measuring it again.
    void layOutAgain() noexcept;
    /// The document's title; "Unknown" when it has none.
    std::string DocumentTitle() const { return document_.title().value_or("Unknown"); }

    /// All properties that a container saves. Setting them parses a document only once.
    const HTMLLabelProperties& savedProperties() const { return properties_; }
    void savedProperties(const HTMLLabelProperties& properties);

    /// What the document says, in the ANSI code page: its text without tags, blocks divided by CR LF and the
    /// cells of a table's row by tabs. Empty without a document.
    const std::string& Text() const { return plainText().text; }

    /// A link that leads somewhere, for those who do not see the page.
    struct Link {
        int place = 0;     // in the document's list of links
        std::string name;  // its text; without one its tooltip
        std::string href;
        Rect box;  // pixels of the view port, which it may be out of; empty while it is not laid out
        bool inFocus = false;
    };
    /// In document order; none while anchors are off.
    std::vector<Link> links() const;
    /// Moves the keyboard's frame to a link, by its place, and scrolls it into view; or follows it as the
    /// Enter key does. False, and nothing happens, when there is no such link to be seen.
    bool focusLink(int place);
    bool followLink(int place);

    const HTMLDocument& document() const { return document_; }
    const ScrollState& vscScroll() const { return vscScroll_; }
    const ScrollState& hscScroll() const { return hscScroll_; }

    // What the window tells the label: each event under the name of its handler. Positions are in pixels of
    // the view port. None throws.
    void UserControl_Resize() noexcept;
    void UserControl_Show() noexcept;
    /// The user moved a bar to this value. A value outside the bar's range is ignored.
    void vscScroll_Change(int value) noexcept;
    void hscScroll_Change(int value) noexcept;
    void picViewPort_MouseDown(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept;
    void picViewPort_MouseMove(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept;
    void picViewPort_MouseUp(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept;
    /// The mouse wheel turned by this many notches, positive away from the user. True when the label can
    /// scroll at all.
    bool picViewPort_MouseWheel(double notches) noexcept;
    /// True when the label has used the key.
    bool picViewPort_KeyDown(std::int16_t KeyCode, std::int16_t Shift) noexcept;
    void picViewPort_GotFocus() noexcept;
    void picViewPort_LostFocus() noexcept;
    void tmrHyperlinkClick_Timer() noexcept;
    /// Draws what the view port shows. The canvas takes positions in the document: the window has shifted it
    /// so that the document's pixel (`hscScroll().Value`, `vscScroll().Value`) is the view port's top left
    /// one.
    void picViewPort_Paint(Canvas& canvas, Size viewPort) noexcept;

    /// Draws the top of the document laid out to the width of a page, on any canvas: for printing, and where
    /// there is no window. What the window shows does not change.
    void drawPage(Canvas& canvas, Size page);

  private:
    // The number of a call that sets a document: of several at once only the last one counts.
    using Operation = unsigned;
    enum class StartAt : std::uint8_t { Top, SamePlace };
    using MouseEvent = void (HTMLLabelEvents::*)(std::int16_t, std::int16_t, float, float) noexcept;

    // Runs a handler: keeps the label alive during it, and lets no error out.
    template <class Handler>
    void handle(Handler&& handler) noexcept {
        carryOn([&] {
            const auto alive = weak_from_this().lock();
            std::forward<Handler>(handler)();
        });
    }

    void setDocument(std::string text, StartAt start);
    bool parseAgain();
    bool parseWith(HTMLLabelProperties properties);
    void parse(std::string_view text);
    bool loadPictures();
    void layOut(Point offset);
    std::vector<std::string> pictureSources() const;
    LayoutDefaults layoutDefaults() const;
    void showPointer(MousePointer pointer);
    void showSurface();
    void repaint();

    LabelOutline outline() const;
    int lineHeight() const;
    void fitParts(Point offset, int line);
    void scrollHome();
    void scrollTo(ScrollBar bar, int value);
    void scrollIntoView(const Rect& box);
    bool scrollByKey(std::int16_t KeyCode, std::int16_t Shift);

    void fire(MouseEvent event, std::int16_t Button, std::int16_t Shift, Point mouse);
    const PlainText& plainText() const;
    const HTMLElement* linkAt(Point mouse) const;
    void follow(const HTMLElement& link);
    void jumpTo(std::string_view name);
    bool linkKey(std::int16_t KeyCode, std::int16_t Shift);
    bool walkLinks(int step);
    void moveFocus(std::optional<int> place);
    bool canReach(int place) const;
    const HTMLElement& link(int place) const;
    Rect linkBox(int place) const;
    Rect inViewPort(const Rect& box) const;

    LabelWindow* window_ = nullptr;
    HTMLLabelEvents* events_ = nullptr;
    HTMLLabelProperties properties_ = HTMLLabelProperties::atCreation();

    HTMLDocument document_;
    // A text that becomes the document once the pending messages are through.
    std::optional<std::string> pendingText_;
    LabelPictures pictures_;
    // What it says, once somebody has asked for it.
    mutable std::optional<PlainText> plainText_;
    // Null until the document has been laid out for this window.
    std::unique_ptr<Layout> layout_;
    Operation operation_ = 0;
    // The operation whose pictures are being asked for.
    std::optional<Operation> loading_;

    // The control's size at the last resize that counted, in twips.
    Size outerSize_;
    LabelPlacement placement_;
    ScrollState vscScroll_;
    ScrollState hscScroll_;
    // The part of a pixel that the wheel has turned so far.
    double wheelRest_ = 0;

    std::string mstrPendingHref;
    bool hasFocus_ = false;
    // The link that the keyboard has moved to: its position in the document's list of links.
    std::optional<int> linkInFocus_;
};

}  // namespace kavrelon
