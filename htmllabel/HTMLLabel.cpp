#include "htmllabel/HTMLLabel.h"

#include <utility>

namespace kavrelon {

void HTMLLabel::attach(LabelWindow* window, HTMLLabelEvents* events) {
    layout_.reset();  // it was measured with the previous window's fonts
    window_ = window;
    events_ = events;
    mstrPendingHref.clear();
    hasFocus_ = false;
    linkInFocus_.reset();
    vscScroll_ = {};
    hscScroll_ = {};
    outerSize_ = {};
    placement_ = {};
    if (window_ == nullptr) return;
    try {
        showSurface();
        // At design time no resize counts, and the parts must be in place all the same.
        outerSize_ = window_->sizeInTwips();
        fitParts({}, lineHeight());
    } catch (...) {
        attach(nullptr, nullptr);
        throw;
    }
}

void HTMLLabel::DefaultFontName(const std::string& value) {
    HTMLLabelProperties changed = properties_;
    changed.DefaultFontName = value;
    parseWith(changed);
}

void HTMLLabel::DefaultFontSize(float value) {
    HTMLLabelProperties changed = properties_;
    changed.DefaultFontSize = value;
    parseWith(changed);
}

void HTMLLabel::BackColor(Colour value) {
    HTMLLabelProperties changed = properties_;
    changed.BackColor = value;
    savedProperties(changed);
}

// True when there was a document. Where it cannot be parsed, the properties stay as they were.
bool HTMLLabel::parseWith(HTMLLabelProperties properties) {
    std::swap(properties_, properties);
    try {
        return parseAgain();
    } catch (...) {
        std::swap(properties_, properties);
        throw;
    }
}

void HTMLLabel::Appearance(std::int16_t value) {
    properties_.Appearance = value;
    showSurface();
}

void HTMLLabel::BorderStyle(std::int16_t value) {
    properties_.BorderStyle = value;
    showSurface();
}

void HTMLLabel::savedProperties(const HTMLLabelProperties& properties) {
    const bool parsed = parseWith(properties);
    showSurface();
    if (parsed) return;
    document_.mlngBodyBgColor(properties_.BackColor);
    repaint();
}

void HTMLLabel::DocumentHTML(std::string_view value) {
    setDocument(std::string(value), StartAt::Top);
}

// False when there is no document. A new document that is still waiting is the one that is parsed.
bool HTMLLabel::parseAgain() {
    if (!pendingText_ && document_.mintElementCount() == 0) return false;
    setDocument(DocumentHTML(), pendingText_ ? StartAt::Top : StartAt::SamePlace);
    return true;
}

// After everything that lets events in, this checks whether its document is still the one to set, and whether
// there is still a window.
void HTMLLabel::setDocument(std::string text, StartAt start) {
    const auto alive = weak_from_this().lock();
    const Operation mine = ++operation_;
    pendingText_ = std::move(text);
    showPointer(MousePointer::Hourglass);
    if (mine != operation_) return;

    const Point offset = start == StartAt::Top ? Point{} : Point{hscScroll_.Value, vscScroll_.Value};
    try {
        parse(*std::exchange(pendingText_, std::nullopt));
    } catch (...) {
        if (window_ != nullptr) window_->setMousePointer(MousePointer::Default);
        throw;
    }
    if (window_ != nullptr && window_->containerVisible()) {
        // The document is set by now. A layout for which there is no memory is tried again by each paint.
        carryOn([&] { layOut(offset); });
        repaint();
        if (mine != operation_) return;
    }
    showPointer(MousePointer::Default);
    if (mine == operation_ && window_ != nullptr) window_->documentChanged();
}

void HTMLLabel::parse(std::string_view text) {
    document_.setDocument(text, {.DefaultFontName = properties_.DefaultFontName,
                                 .DefaultFontSize = properties_.DefaultFontSize,
                                 .BackColor = properties_.BackColor,
                                 .EnableAnchors = properties_.EnableAnchors});
    // It refers to the records of the document before.
    layout_.reset();
    plainText_.reset();
    pictures_.clear();
    linkInFocus_.reset();
    scrollHome();
}

void HTMLLabel::showPointer(MousePointer pointer) {
    if (window_ != nullptr) window_->setMousePointer(pointer);
    if (window_ != nullptr) window_->processMessages();
}

void HTMLLabel::showSurface() {
    if (window_ == nullptr) return;
    window_->setSurface({.Appearance = properties_.Appearance,
                         .BorderStyle = properties_.BorderStyle,
                         .BackColor = properties_.BackColor});
}

void HTMLLabel::repaint() {
    if (window_ != nullptr) window_->repaintViewPort();
}

std::vector<std::string> HTMLLabel::pictureSources() const {
    std::vector<std::string> sources;
    if (!document_.mstrBackground().empty()) sources.push_back(document_.mstrBackground());
    for (const HTMLElement& element : document_.mudtElements()) {
        if (element.lngTagType == TAG_IMG && !element.strSrc.empty()) sources.emplace_back(element.strSrc);
    }
    return sources;
}

// Asks the container for the pictures that it has not been asked for yet. False when there is nothing to lay
// out now: a handler has set another document, or this call comes from a paint inside such a handler.
bool HTMLLabel::loadPictures() {
    const Operation mine = operation_;
    if (loading_ == mine) return false;
    loading_ = mine;
    try {
        for (const std::string& source : pictureSources()) {
            if (events_ == nullptr) break;
            if (pictures_.asked(source)) continue;
            auto picture = events_->LoadImage(source);
            if (mine != operation_) return false;
            pictures_.keep(source, std::move(picture));
        }
    } catch (...) {
        if (loading_ == mine) loading_.reset();
        throw;
    }
    loading_.reset();
    return true;
}

LayoutDefaults HTMLLabel::layoutDefaults() const {
    return {.DefaultFontName = properties_.DefaultFontName,
            .DefaultFontSize = properties_.DefaultFontSize,
            .UnderlineLinks = properties_.UnderlineLinks,
            .DefaultPadding = properties_.DefaultPadding,
            .DefaultSpacing = properties_.DefaultSpacing};
}

// The pass after the parser: pictures, layout, scroll bars. `offset` is the position in the document to show.
// A control without a size yet is not laid out: a later resize would not correct the layout.
void HTMLLabel::layOut(Point offset) {
    if (placement_.picViewPort.width() == 0 || placement_.picViewPort.height() == 0) return;
    if (!loadPictures() || window_ == nullptr) return;
    auto layout = std::make_unique<Layout>();
    layout->measure(document_, layoutDefaults(), pictures_, window_->canvas());
    const int line = lineHeight();
    LabelOutline whole = outline();
    whole.hscVisible = false;  // it depends on the layout
    const Rect page = placeLabelParts(whole).picViewPort;
    layout->place(document_, page.width(), page.height());
    layout_ = std::move(layout);
    fitParts(offset, line);
}

void HTMLLabel::layOutAgain() noexcept {
    handle([this] {
        UserControl_Resize();
        if (window_ == nullptr || document_.mintElementCount() == 0) return;
        // Where there is no memory for it, each paint tries again.
        std::unique_ptr<Layout> layout = std::exchange(layout_, nullptr);
        if (layout == nullptr) {
            layOut({});
        } else {
            layout->place(document_, placeLabelParts(outline()).picViewPort.width());
            layout_ = std::move(layout);
            fitParts({}, lineHeight());
        }
        repaint();
    });
}

void HTMLLabel::UserControl_Show() noexcept {
    handle([this] {
        if (layout_ != nullptr || document_.mintElementCount() == 0) return;
        layOut({});
        repaint();
    });
}

void HTMLLabel::picViewPort_Paint(Canvas& canvas, Size viewPort) noexcept {
    handle([this, &canvas, viewPort] {
        const LabelWindow* const window = window_;
        if (layout_ == nullptr && document_.mintElementCount() > 0) layOut({});
        if (window_ != window) return;  // and the canvas has gone with it

        const Rect part{hscScroll_.Value, vscScroll_.Value, hscScroll_.Value + viewPort.width,
                        vscScroll_.Value + viewPort.height};
        if (layout_ == nullptr) {
            canvas.fill(part, document_.mlngBodyBgColor());
            return;
        }
        layout_->draw(canvas, part);
        if (hasFocus_ && linkInFocus_ && EnableAnchors()) canvas.drawFocus(linkBox(*linkInFocus_));
    });
}

void HTMLLabel::drawPage(Canvas& canvas, Size page) {
    const auto alive = weak_from_this().lock();
    if (document_.mintElementCount() == 0) {
        canvas.fill({0, 0, page.width, page.height}, document_.mlngBodyBgColor());
        return;
    }
    if (!loadPictures()) return;
    Layout layout;
    layout.measure(document_, layoutDefaults(), pictures_, canvas);
    layout.placeUnmarked(document_, page.width, page.height);
    layout.draw(canvas, {0, 0, page.width, page.height});
}

}  // namespace kavrelon
