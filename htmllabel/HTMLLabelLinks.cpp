#include "htmllabel/HTMLLabel.h"

#include <algorithm>
#include <utility>

#include "htmllabel/FormCall.h"
#include "support/Keys.h"

namespace kavrelon {

namespace {

// Whether a link leads somewhere and is visible on the page.
bool isReachable(const HTMLElement& link) {
    return !link.strHref.empty() && link.lngRight > link.lngLeft && link.lngBottom > link.lngTop;
}

std::string_view toolTip(const HTMLElement& link) {
    return link.strTitle.empty() ? link.strHref : link.strTitle;
}

}  // namespace

void HTMLLabel::fire(MouseEvent event, std::int16_t Button, std::int16_t Shift, Point mouse) {
    if (window_ == nullptr || events_ == nullptr) return;
    (events_->*event)(Button, Shift, static_cast<float>(mouse.x * window_->twipsPerPixelX()),
                      static_cast<float>(mouse.y * window_->twipsPerPixelY()));
}

// The first link in the document whose box contains this pixel of the view port, not counting its edges.
const HTMLElement* HTMLLabel::linkAt(Point mouse) const {
    const int x = mouse.x + hscScroll_.Value;
    const int y = mouse.y + vscScroll_.Value;
    for (const std::int16_t index : document_.mintLinks()) {
        const HTMLElement& link = document_.mudtElements()[static_cast<std::size_t>(index)];
        if (link.strHref.empty()) continue;
        if (x > link.lngLeft && x < link.lngRight && y > link.lngTop && y < link.lngBottom) return &link;
    }
    return nullptr;
}

void HTMLLabel::picViewPort_MouseDown(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept {
    handle([=, this] { fire(&HTMLLabelEvents::MouseDown, Button, Shift, mouse); });
}

// While anchors are on, the container gets the moves outside links as `MouseUp`.
void HTMLLabel::picViewPort_MouseMove(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept {
    handle([=, this] {
        if (window_ == nullptr) return;
        if (!EnableAnchors()) return fire(&HTMLLabelEvents::MouseMove, Button, Shift, mouse);
        if (const HTMLElement* link = linkAt(mouse)) {
            window_->setMousePointer(MousePointer::Custom);
            if (!EnableTooltips()) return;
            window_->setToolTipText(std::string(toolTip(*link)));
            return;
        }
        window_->setMousePointer(MousePointer::Arrow);
        window_->setToolTipText({});
        fire(&HTMLLabelEvents::MouseUp, Button, Shift, mouse);
    });
}

void HTMLLabel::picViewPort_MouseUp(std::int16_t Button, std::int16_t Shift, Point mouse) noexcept {
    handle([=, this] {
        const HTMLElement* link = EnableAnchors() ? linkAt(mouse) : nullptr;
        if (link != nullptr) return follow(*link);
        fire(&HTMLLabelEvents::MouseUp, Button, Shift, mouse);
    });
}

// The container hears of a link from the timer, when none of the label's handlers is running.
void HTMLLabel::follow(const HTMLElement& link) {
    if (window_ == nullptr) return;
    if (EnableScroll() && link.strHref.starts_with('#')) return jumpTo(link.strHref.substr(1));
    mstrPendingHref = link.strHref;
    window_->enableLinkTimer(true);
}

void HTMLLabel::jumpTo(std::string_view name) {
    const auto elements = document_.mudtElements();
    const auto target = std::ranges::find(elements, name, &HTMLElement::strName);
    if (target != elements.end()) scrollTo(ScrollBar::vscScroll, std::min(target->lngTop, vscScroll_.Max));
}

void HTMLLabel::tmrHyperlinkClick_Timer() noexcept {
    handle([this] {
        if (window_ == nullptr) return;
        window_->enableLinkTimer(false);
        const std::string href = std::exchange(mstrPendingHref, {});
        if (href.empty()) return;
        if (isFormCall(href)) {
            const FormCall call = parseFormCall(std::string_view(href).substr(3));
            window_->callParent(call.procedure, call.arguments);
        } else if (events_ != nullptr) {
            events_->HyperlinkClick(href);
        }
    });
}

bool HTMLLabel::picViewPort_KeyDown(std::int16_t KeyCode, std::int16_t Shift) noexcept {
    bool own = false;
    handle([=, this, &own] { own = scrollByKey(KeyCode, Shift) || linkKey(KeyCode, Shift); });
    return own;
}

bool HTMLLabel::linkKey(std::int16_t KeyCode, std::int16_t Shift) {
    if (!EnableAnchors()) return false;
    if (KeyCode == keys::kTab && (Shift & ~shifts::kShift) == 0) return walkLinks(Shift == 0 ? 1 : -1);
    if (KeyCode != keys::kEnter || Shift != 0 || !linkInFocus_) return false;
    follow(link(*linkInFocus_));
    return true;
}

const HTMLElement& HTMLLabel::link(int place) const {
    const std::int16_t index = document_.mintLinks()[static_cast<std::size_t>(place)];
    return document_.mudtElements()[static_cast<std::size_t>(index)];
}

Rect HTMLLabel::linkBox(int place) const {
    const HTMLElement& element = link(place);
    return {element.lngLeft, element.lngTop, element.lngRight, element.lngBottom};
}

// Moves on to the next link that is reachable. After the last one the container gets the key, and the next
// move starts again at the first.
bool HTMLLabel::walkLinks(int step) {
    const int count = document_.mintLinkCount();
    const int outside = step > 0 ? -1 : count;
    int place = linkInFocus_.value_or(outside) + step;
    while (place >= 0 && place < count && !isReachable(link(place))) place += step;

    const bool found = place >= 0 && place < count;
    moveFocus(found ? std::optional(place) : std::nullopt);
    return found;
}

void HTMLLabel::moveFocus(std::optional<int> place) {
    linkInFocus_ = place;
    hasFocus_ = true;
    if (place) scrollIntoView(linkBox(*place));
    repaint();
    if (window_ != nullptr) window_->focusMoved();
}

bool HTMLLabel::canReach(int place) const {
    return EnableAnchors() && place >= 0 && place < document_.mintLinkCount() && isReachable(link(place));
}

bool HTMLLabel::focusLink(int place) {
    const auto alive = weak_from_this().lock();
    if (!canReach(place)) return false;
    moveFocus(place);
    return true;
}

bool HTMLLabel::followLink(int place) {
    const auto alive = weak_from_this().lock();
    if (!canReach(place)) return false;
    follow(link(place));
    return true;
}

const PlainText& HTMLLabel::plainText() const {
    if (!plainText_) plainText_ = kavrelon::plainText(document_);
    return *plainText_;
}

std::vector<HTMLLabel::Link> HTMLLabel::links() const {
    std::vector<Link> links;
    if (!EnableAnchors()) return links;
    const PlainText& said = plainText();
    for (int place = 0; place < document_.mintLinkCount(); ++place) {
        const HTMLElement& element = this->link(place);
        if (element.strHref.empty()) continue;
        const auto text = std::ranges::find(said.links, element.intIndex, &PlainText::Link::element);
        Link& link = links.emplace_back();
        link.place = place;
        link.name = text == said.links.end() ? std::string(toolTip(element))
                                             : said.text.substr(text->begin, text->end - text->begin);
        link.href = element.strHref;
        if (isReachable(element)) link.box = inViewPort(linkBox(place));
        link.inFocus = hasFocus_ && linkInFocus_ == place;
    }
    return links;
}

Rect HTMLLabel::inViewPort(const Rect& box) const {
    return {box.left - hscScroll_.Value, box.top - vscScroll_.Value, box.right - hscScroll_.Value,
            box.bottom - vscScroll_.Value};
}

void HTMLLabel::picViewPort_GotFocus() noexcept {
    handle([this] {
        hasFocus_ = true;
        if (!linkInFocus_) return;
        repaint();
        if (window_ != nullptr) window_->focusMoved();
    });
}

void HTMLLabel::picViewPort_LostFocus() noexcept {
    handle([this] {
        hasFocus_ = false;
        if (linkInFocus_) repaint();
    });
}

}  // namespace kavrelon
