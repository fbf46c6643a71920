#include "helpbox/frmHelp.h"

#include <utility>

#include "helpbox/HelpText.h"
#include "support/Conversions.h"
#include "support/Keys.h"
#include "support/Raised.h"
#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

/// By how much a box is taller than its cells, in twips.
constexpr double kExtraHeight = 100;

Rect shifted(const Rect& block, Point by) {
    return {block.left + by.x, block.top + by.y, block.right + by.x, block.bottom + by.y};
}

Point corner(const Rect& block) {
    return {block.left, block.top};
}

Point travel(Point from, Point to) {
    return {to.x - from.x, to.y - from.y};
}

}  // namespace

std::shared_ptr<frmHelp> frmHelp::load(HelpPlatform& platform, std::weak_ptr<HelpBoxOwner> owner) {
    std::shared_ptr<frmHelp> box(new frmHelp(std::move(owner)));
    box->window_ = platform.createHelpWindow(box);
    box->loaded_ = true;
    box->Form_Load();
    return box;
}

frmHelp::~frmHelp() {
    Unload();
}

void frmHelp::Form_Load() {
    mlTwipsPerPixelX = window_->twipsPerPixelX();
    mlTwipsPerPixelY = window_->twipsPerPixelY();
    txtHelp->BorderStyle(0);
    txtHelp->Appearance(0);
    txtHelp->EnableAnchors(true);
    txtHelp->EnableTooltips(true);
    LabelWindow* const label = window_->addLabel(txtHelp);
    if (isLoaded()) txtHelp->attach(label, this);
}

void frmHelp::Unload() noexcept {
    if (!std::exchange(loaded_, false)) return;
    stopDrag();
    owner_.reset();
    txtHelp->attach(nullptr, nullptr);
    window_->close();
}

void frmHelp::SetBase(std::int16_t XOffset, std::int16_t YOffset, float CharWidth, float CharHeight) {
    mintXOffset = XOffset;
    mintYOffset = YOffset;
    msglCharWidth = CharWidth;
    msglCharHeight = CharHeight;
    if (mblnShown) placeAgain();
}

void frmHelp::SetBoxCord(std::int16_t iTop, std::int16_t iLeft, std::int16_t iWidth, std::int16_t iHeight) {
    mintTop = iTop;
    mintLeft = iLeft;
    mintWidth = iWidth;
    mintHeight = iHeight;
    if (mblnShown) placeAgain();
}

void frmHelp::HelpInfo(std::string_view text) {
    document_ = helpDocument(text);
    changeText([this] { txtHelp->DocumentHTML(document_); });
}

void frmHelp::FontInfo(const std::string& sFontName, std::int16_t iFontSize) {
    followGrid(mintXOffset, mintYOffset, msglCharWidth, msglCharHeight, sFontName, iFontSize);
}

void frmHelp::followGrid(std::int16_t XOffset, std::int16_t YOffset, float CharWidth, float CharHeight,
                         const std::string& sFontName, std::int16_t iFontSize) {
    {
        const Raised held(layoutHeld_);
        layoutDue_ = false;
        SetBase(XOffset, YOffset, CharWidth, CharHeight);
    }
    if (!setFont(sFontName, iFontSize) && layoutDue_) layOutText();
}

bool frmHelp::setFont(const std::string& name, std::int16_t size) {
    HTMLLabelProperties properties = txtHelp->savedProperties();
    properties.DefaultFontName = name;
    // A size that no text can have leaves the one that the box has.
    const float wanted = static_cast<float>(size) - 1;
    if (HTMLLabelProperties::isFontSize(wanted)) properties.DefaultFontSize = wanted;
    if (properties == txtHelp->savedProperties()) return false;
    changeText([&] {
        properties.EnableScroll = txtHelp->EnableScroll();
        txtHelp->savedProperties(properties);
    });
    return true;
}

void frmHelp::ShowBox(WindowId OwnerForm, WindowId ParenthWnd) {
    if (!isLoaded()) return;
    mhParent = ParenthWnd;
    mblnShown = true;
    window_->setOwner(OwnerForm);
    // Placed before it appears, so that it is not seen to jump.
    placeAgain();
    parentChanged();
}

void frmHelp::placeAgain() {
    if (!isLoaded()) return;
    const Rect parent = window_->rectangleOf(mhParent);
    parentCorner_ = corner(parent);
    const double charWidth = msglCharWidth;
    const double charHeight = msglCharHeight;
    const int x = roundHalfToEven((mintLeft - 1) * charWidth + parent.left + mintXOffset - charWidth / 2);
    const int y = roundHalfToEven(mintTop * charHeight + parent.top + mintYOffset - charHeight / 2);
    const double width = (mintWidth + 2) * charWidth + charWidth;
    const double height = mintHeight * charHeight + charHeight;
    window_->Move(static_cast<double>(x) * mlTwipsPerPixelX, static_cast<double>(y) * mlTwipsPerPixelY,
                  width * mlTwipsPerPixelX, height * mlTwipsPerPixelY + kExtraHeight);
}

void frmHelp::moveTo(const Rect& place) {
    window_->Move(static_cast<double>(place.left) * mlTwipsPerPixelX,
                  static_cast<double>(place.top) * mlTwipsPerPixelY,
                  static_cast<double>(place.width()) * mlTwipsPerPixelX,
                  static_cast<double>(place.height()) * mlTwipsPerPixelY);
}

void frmHelp::parentChanged() {
    if (!isLoaded() || !mblnShown) return;
    const bool shown = window_->isShown(mhParent);
    if (shown) {
        // A minimised window has no real position; only that of a shown one counts.
        const Point parent = corner(window_->rectangleOf(mhParent));
        if (parent != parentCorner_) moveTo(shifted(window_->rectangle(), travel(parentCorner_, parent)));
        parentCorner_ = parent;
    } else {
        stopDrag();
    }
    if (isLoaded()) window_->setVisible(shown);
}

void frmHelp::Form_Resize() noexcept {
    carryOn([this] {
        if (!isLoaded()) return;
        window_->sizeLabel(window_->innerSize());
        layoutDue_ = true;
        if (mblnShown && !layoutHeld_) layOutText();
    });
}

bool frmHelp::textFits() const {
    return txtHelp->vscScroll().Max == 0 && txtHelp->hscScroll().Max == 0;
}

// A label that may scroll reserves room for its scroll bars: this one may scroll only when its text needs it.
void frmHelp::layOutText() {
    txtHelp->EnableScroll(false);
    txtHelp->layOutAgain();
    if (textFits()) return;
    txtHelp->EnableScroll(true);
    txtHelp->layOutAgain();
}

template <class Change>
void frmHelp::changeText(Change change) {
    if (!mblnShown) return change();
    txtHelp->EnableScroll(false);
    txtHelp->UserControl_Resize();
    try {
        change();
    } catch (...) {
        // The text that was there stays, and may have to fit into another size.
        layOutText();
        throw;
    }
    if (textFits()) return;
    txtHelp->EnableScroll(true);
    txtHelp->layOutAgain();
}

void frmHelp::Form_Unload() noexcept {
    mnuRightClickClose_Click();
}

void frmHelp::mnuRightClickClose_Click() noexcept {
    const std::shared_ptr<HelpBoxOwner> owner = owner_.lock();
    Unload();
    if (owner != nullptr) owner->HelpBoxClosed(*this);
}

// The label does not know whose events it fires: its handlers keep the box themselves.

void frmHelp::HyperlinkClick(const std::string& Href) noexcept {
    const auto keep = shared_from_this();
    if (!isLoaded()) return;
    // The label follows a link at the release of any button, even at the end of a drag.
    if (pressed_ == buttons::kRight) return window_->popUpRightClickMenu();
    const std::shared_ptr<HelpBoxOwner> owner = owner_.lock();
    if (pressed_ == buttons::kLeft && !dragged_ && owner != nullptr) owner->HelpBoxLink(Href);
}

std::shared_ptr<const Picture> frmHelp::LoadImage(const std::string& Source) noexcept {
    const auto keep = shared_from_this();
    const std::shared_ptr<HelpBoxOwner> owner = owner_.lock();
    return owner == nullptr ? nullptr : owner->HelpBoxPicture(Source);
}

void frmHelp::MouseDown(std::int16_t Button, std::int16_t, float, float) noexcept {
    pressed_ = Button;
    if (Button == buttons::kLeft) beginDrag();
}

void frmHelp::MouseMove(std::int16_t Button, std::int16_t, float, float) noexcept {
    if ((Button & buttons::kLeft) != 0) drag();
}

void frmHelp::MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept {
    if (!isLoaded()) return;
    const auto keep = shared_from_this();
    // With links on, the label reports moves as releases.
    if (window_->isHeld(Button)) return MouseMove(Button, Shift, X, Y);
    if (Button == buttons::kLeft) {
        drop();
    } else if (Button == buttons::kRight) {
        window_->popUpRightClickMenu();
    }
}

void frmHelp::dragEnded() noexcept {
    drop();
}

void frmHelp::beginDrag() {
    stopDrag();
    if (!isLoaded()) return;
    dragging_ = true;
    dragged_ = false;
    dragStart_ = window_->cursor();
    dragWindow_ = window_->rectangle();
    focusRectangle_ = dragWindow_;
    window_->drawFocusRectangle(focusRectangle_);
}

void frmHelp::drag() {
    if (!dragging_) return;
    const Rect now = shifted(dragWindow_, travel(dragStart_, window_->cursor()));
    if (now == focusRectangle_) return;
    dragged_ = true;
    window_->drawFocusRectangle(focusRectangle_);
    window_->drawFocusRectangle(now);
    focusRectangle_ = now;
}

void frmHelp::stopDrag() {
    if (!dragging_) return;
    dragging_ = false;
    window_->drawFocusRectangle(focusRectangle_);
}

void frmHelp::drop() {
    if (!dragging_) return;
    stopDrag();
    if (dragged_) moveTo(focusRectangle_);
}

}  // namespace kavrelon
