#include "htmllabel/win32/Win32LabelWindow.h"

#include <algorithm>
#include <utility>

#include "htmllabel/HTMLLabel.h"
#include "htmllabel/win32/LabelAccessible.h"
#include "htmllabel/win32/ViewPortMessages.h"
#include "support/SystemColours.h"
#include "support/win32/Messages.h"
#include "support/win32/PlatformGeometry.h"
#include "support/win32/WideText.h"

namespace kavrelon {
namespace {

constexpr const char* kOuterClass = "kavrelon.HTMLLabel";
constexpr const char* kViewPortClass = "kavrelon.picViewPort";
int outerClassHolders = 0;
int viewPortClassHolders = 0;

constexpr UINT_PTR tmrHyperlinkClick = 1;
constexpr UINT kLinkTimerMilliseconds = 100;
constexpr double kTwipsPerInch = 1440;

/// Numbers of the platform's pointers: their names do not work with the single-byte calls.
constexpr WORD kArrowCursor = 32512;
constexpr WORD kHourglassCursor = 32514;
constexpr WORD kHandCursor = 32649;

WORD cursorNumber(MousePointer pointer) {
    switch (pointer) {
        case MousePointer::Hourglass:
            return kHourglassCursor;
        case MousePointer::Custom:
            return kHandCursor;
        case MousePointer::Default:
        case MousePointer::Arrow:
            break;
    }
    return kArrowCursor;
}

void fillBlock(HDC context, const RECT& block, Colour colour) {
    SetDCBrushColor(context, toColorRef(colour));
    FillRect(context, &block, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void moveWindow(HWND window, const RECT& place) {
    SetWindowPos(window, nullptr, static_cast<int>(place.left), static_cast<int>(place.top),
                 static_cast<int>(std::max(place.right - place.left, 0L)),
                 static_cast<int>(std::max(place.bottom - place.top, 0L)), SWP_NOZORDER | SWP_NOACTIVATE);
}

/// The context for painting the part of a window that is due, for the length of a scope.
class PaintContext {
  public:
    explicit PaintContext(HWND window) : window_(window) { BeginPaint(window, &paint_); }
    ~PaintContext() { EndPaint(window_, &paint_); }
    PaintContext(const PaintContext&) = delete;
    PaintContext& operator=(const PaintContext&) = delete;

    HDC get() const { return paint_.hdc; }
    const RECT& due() const { return paint_.rcPaint; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
};

}  // namespace

std::shared_ptr<Win32LabelWindow> Win32LabelWindow::create(HINSTANCE module, HWND parent, const RECT& place,
                                                           std::weak_ptr<HTMLLabel> label,
                                                           LabelContainer& container) {
    std::shared_ptr<Win32LabelWindow> window(
        new Win32LabelWindow(module, parent, place, std::move(label), container));
    window->listenTo(window->outer_.get());
    window->listenTo(window->picViewPort_.get());
    return window;
}

Win32LabelWindow::Win32LabelWindow(HINSTANCE module, HWND parent, const RECT& place,
                                   std::weak_ptr<HTMLLabel> label, LabelContainer& container)
    : outerClass_(windowClass(module, kOuterClass, CS_HREDRAW | CS_VREDRAW), outerClassHolders),
      viewPortClass_(windowClass(module, kViewPortClass, 0), viewPortClassHolders),
      label_(std::move(label)),
      container_(&container),
      outer_(createWindow(outerClass_, parent, WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place)),
      picViewPort_(createWindow(viewPortClass_, outer_.get(), WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS, {})),
      vscScroll_(ScrollBar::vscScroll),
      hscScroll_(ScrollBar::hscScroll) {
    vscScroll_.create(module, outer_.get());
    hscScroll_.create(module, outer_.get());
    // Compatible with the desktop rather than with this window, since the desktop outlives the surface.
    picHTML_.hWnd(GetDesktopWindow());
}

Win32LabelWindow::~Win32LabelWindow() {
    close();
}

WindowHandle Win32LabelWindow::createWindow(const SharedWindowClass& windowClass, HWND parent, DWORD style,
                                            const RECT& place) {
    return takeOver(CreateWindowExA(0, windowClass.name(), "", WS_CHILD | style, static_cast<int>(place.left),
                                    static_cast<int>(place.top), static_cast<int>(place.right - place.left),
                                    static_cast<int>(place.bottom - place.top), parent, nullptr,
                                    windowClass.module(), nullptr));
}

void Win32LabelWindow::detach() noexcept {
    stopListeningTo(outer_.get());
    stopListeningTo(picViewPort_.get());
    label_.reset();
    if (accessible_) accessible_->disconnect();
    accessible_ = {};
    container_ = nullptr;
    // It is a top-level window, which is not destroyed with this one.
    toolTip_.destroy();
    vscScroll_.forget();
    hscScroll_.forget();
    static_cast<void>(picViewPort_.release());
}

void Win32LabelWindow::close() noexcept {
    if (outer_ == nullptr) return;
    detach();
    outer_.reset();
}

// Only the view port can be destroyed alone: the outer window detaches itself and its parts before they go.
void Win32LabelWindow::windowDestroyed() {
    static_cast<void>(picViewPort_.release());
}

WindowAnswer Win32LabelWindow::handle(const WindowMessage& message) {
    const auto alive = shared_from_this();
    if (message.id == WM_DESTROY && message.window == outer_.get()) {
        LabelContainer* const container = container_;
        detach();
        static_cast<void>(outer_.release());
        if (container != nullptr) container->labelWindowDestroyed();
        return std::nullopt;
    }
    const std::shared_ptr<HTMLLabel> label = label_.lock();
    if (label == nullptr) return std::nullopt;
    if (const WindowAnswer answer = onTitle(*label, message)) return answer;
    return message.window == outer_.get() ? onOuter(*label, message) : onViewPort(*label, message);
}

// Screen readers call the control by its document's title. Without one, they call it by the window's own
// text.
WindowAnswer Win32LabelWindow::onTitle(const HTMLLabel& label, const WindowMessage& message) {
    if (message.id != WM_GETTEXT && message.id != WM_GETTEXTLENGTH) return std::nullopt;
    const std::optional<std::string> ansi = label.document().title();
    if (!ansi) return std::nullopt;
    const std::wstring title = toWide(*ansi);
    if (message.id == WM_GETTEXTLENGTH) return static_cast<LRESULT>(title.size());
    if (message.wParam == 0) return 0;
    const std::size_t length = std::min<std::size_t>(title.size(), message.wParam - 1);
    auto* out = reinterpret_cast<wchar_t*>(message.lParam);
    *std::ranges::copy_n(title.data(), static_cast<std::ptrdiff_t>(length), out).out = L'\0';
    return static_cast<LRESULT>(length);
}

WindowAnswer Win32LabelWindow::onOuter(HTMLLabel& label, const WindowMessage& message) {
    switch (message.id) {
        case WM_ERASEBKGND:
            eraseOuter(reinterpret_cast<HDC>(message.wParam));
            return 1;
        case WM_SIZE:
            // A new border changes only the inner size, which is none of the label's business.
            if (std::exchange(sizeTold_, sizeInTwips()) != sizeInTwips()) label.UserControl_Resize();
            return 0;
        case WM_SHOWWINDOW:
            if (message.wParam != FALSE) label.UserControl_Show();
            return std::nullopt;
        case WM_SETFOCUS:
            setFocus();
            return 0;
        case WM_VSCROLL:
        case WM_HSCROLL:
            return onScroll(label, message);
        case WM_MOUSEWHEEL:
            // From the scroll bars, which do not use it.
            return handleMouse(label, *container_, message);
        case WM_TIMER:
            if (tmrHyperlinkClick_) label.tmrHyperlinkClick_Timer();
            return 0;
        default:
            return std::nullopt;
    }
}

LRESULT Win32LabelWindow::onScroll(HTMLLabel& label, const WindowMessage& message) {
    ScrollBarControl& bar = message.id == WM_VSCROLL ? vscScroll_ : hscScroll_;
    const std::optional<int> value = bar.scrolled(message.wParam);
    if (!value) return 0;
    updateOrigin();
    if (message.id == WM_VSCROLL) {
        label.vscScroll_Change(*value);
    } else {
        label.hscScroll_Change(*value);
    }
    return 0;
}

WindowAnswer Win32LabelWindow::onViewPort(HTMLLabel& label, const WindowMessage& message) {
    switch (message.id) {
        case WM_ERASEBKGND:
            // Painting covers every pixel; erasing before it would only flicker.
            return 1;
        case WM_PAINT:
            paintViewPort(label);
            return 0;
        case WM_GETOBJECT:
            if (static_cast<LONG>(message.lParam) != OBJID_CLIENT) return std::nullopt;
            return onAccessible(message);
        case WM_SETCURSOR:
            if (LOWORD(message.lParam) != HTCLIENT) return std::nullopt;
            SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(cursorNumber(pointer_))));
            return TRUE;
        default:
            break;
    }
    if (const WindowAnswer answer = handleMouse(label, *container_, message)) return answer;
    const WindowAnswer answer = handleKeys(label, *container_, message);
    const bool focus = message.id == WM_SETFOCUS || message.id == WM_KILLFOCUS;
    if (focus && container_ != nullptr) container_->focusChanged(message.id == WM_SETFOCUS);
    return answer;
}

LRESULT Win32LabelWindow::onAccessible(const WindowMessage& message) {
    if (!accessible_) *accessible_.put() = new LabelAccessible(label_, picViewPort_.get());
    return LresultFromObject(IID_IAccessible, message.wParam, static_cast<IAccessible*>(accessible_.get()));
}

void Win32LabelWindow::documentChanged() {
    for (const DWORD event : {EVENT_OBJECT_REORDER, EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_VALUECHANGE})
        NotifyWinEvent(event, picViewPort_.get(), OBJID_CLIENT, CHILDID_SELF);
}

void Win32LabelWindow::focusMoved() {
    const auto label = label_.lock();
    if (label == nullptr) return;
    NotifyWinEvent(EVENT_OBJECT_FOCUS, picViewPort_.get(), OBJID_CLIENT,
                   LabelAccessible::childInFocus(*label));
}

void Win32LabelWindow::eraseOuter(HDC context) const {
    RECT inner{};
    GetClientRect(outer_.get(), &inner);
    fillBlock(context, inner, look_.BackColor);
    if (placement_.shpCornerVisible) fillBlock(context, toPlatform(placement_.shpCorner), kButtonFaceColour);
}

void Win32LabelWindow::paintViewPort(HTMLLabel& label) {
    const HWND viewPort = picViewPort_.get();
    if (painting_) {
        // This message came in during another paint, whose events let messages through: it waits until that
        // is done.
        ValidateRect(viewPort, nullptr);
        paintAgain_ = true;
        return;
    }
    painting_ = true;
    {
        const PaintContext screen(viewPort);
        paintDue(label, screen.get(), screen.due());
    }
    painting_ = false;
    if (std::exchange(paintAgain_, false) && picViewPort_ != nullptr)
        InvalidateRect(picViewPort_.get(), nullptr, FALSE);
}

void Win32LabelWindow::paintDue(HTMLLabel& label, HDC screen, const RECT& due) {
    RECT inner{};
    GetClientRect(picViewPort_.get(), &inner);
    const LONG width = due.right - due.left;
    const LONG height = due.bottom - due.top;
    if (width <= 0 || height <= 0) return;
    // Drawing in memory and copying at once avoids flicker. Only the visible part is drawn: a bitmap of a
    // whole long document would not fit into a 32-bit process.
    picHTML_.Width(width);
    picHTML_.Height(height);
    {
        const GdiCanvas::Target target(canvas_, picHTML_.hDc());
        SetViewportOrgEx(picHTML_.hDc(), static_cast<int>(-due.left), static_cast<int>(-due.top), nullptr);
        label.picViewPort_Paint(canvas_, {static_cast<int>(inner.right), static_cast<int>(inner.bottom)});
    }
    picHTML_.Draw(screen, 0, 0, width, height, due.left, due.top);
}

void Win32LabelWindow::move(const RECT& place) {
    moveWindow(outer_.get(), place);
}

void Win32LabelWindow::show(bool visible) {
    if (outer_ == nullptr) return;
    const auto alive = shared_from_this();  // a resize asks the container, which may close the window
    if (const auto label = label_.lock(); label != nullptr && visible) label->UserControl_Resize();
    ShowWindow(outer_.get(), visible ? SW_SHOWNA : SW_HIDE);
}

void Win32LabelWindow::setFocus() {
    if (picViewPort_ != nullptr) SetFocus(picViewPort_.get());
}

Size Win32LabelWindow::sizeInTwips() const {
    RECT outer{};
    if (outer_ == nullptr || !GetWindowRect(outer_.get(), &outer)) return {};
    return {static_cast<int>((outer.right - outer.left) * twipsPerPixelX()),
            static_cast<int>((outer.bottom - outer.top) * twipsPerPixelY())};
}

double Win32LabelWindow::twipsPerPixelX() const {
    return kTwipsPerInch / std::max(canvas_.resolutionX(), 1);
}

double Win32LabelWindow::twipsPerPixelY() const {
    return kTwipsPerInch / std::max(canvas_.resolutionY(), 1);
}

Size Win32LabelWindow::scrollBarThickness() const {
    return {GetSystemMetrics(SM_CXVSCROLL), GetSystemMetrics(SM_CYHSCROLL)};
}

bool Win32LabelWindow::containerVisible() const {
    return container_ != nullptr && container_->visible();
}

bool Win32LabelWindow::userMode() const {
    return container_ != nullptr && container_->userMode();
}

std::optional<int> Win32LabelWindow::parentWindowState() const {
    return container_ != nullptr ? container_->parentWindowState() : std::nullopt;
}

void Win32LabelWindow::callParent(const std::string& procedure, const std::vector<std::string>& arguments) {
    if (container_ != nullptr) container_->callParent(procedure, arguments);
}

void Win32LabelWindow::setSurface(const LabelSurface& surface) {
    if (outer_ == nullptr) return;
    look_ = surface;
    const bool border = surface.BorderStyle != 0;
    const bool threeDimensional = border && surface.Appearance == 1;
    const auto set = [this](int which, LONG bit, bool on) {
        const LONG bits = GetWindowLongA(outer_.get(), which);
        SetWindowLongA(outer_.get(), which, on ? bits | bit : bits & ~bit);
    };
    set(GWL_STYLE, WS_BORDER, border && !threeDimensional);
    set(GWL_EXSTYLE, WS_EX_CLIENTEDGE, threeDimensional);
    SetWindowPos(outer_.get(), nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    InvalidateRect(outer_.get(), nullptr, TRUE);
}

void Win32LabelWindow::place(const LabelPlacement& placement) {
    if (outer_ == nullptr) return;
    placement_ = placement;
    moveWindow(picViewPort_.get(), toPlatform(placement.picViewPort));
    vscScroll_.place(placement.vscScroll);
    hscScroll_.place(placement.hscScroll);
    InvalidateRect(outer_.get(), nullptr, TRUE);
}

void Win32LabelWindow::setScrollBar(ScrollBar bar, const ScrollState& state) {
    (bar == ScrollBar::vscScroll ? vscScroll_ : hscScroll_).show(state);
    toolTip_.hide();
    updateOrigin();
}

void Win32LabelWindow::updateOrigin() {
    canvas_.setOrigin({hscScroll_.state().Value, vscScroll_.state().Value});
}

void Win32LabelWindow::setMousePointer(MousePointer pointer) {
    if (std::exchange(pointer_, pointer) == pointer || picViewPort_ == nullptr) return;
    // The platform asks for the pointer before it sends the move that changes it.
    POINT mouse{};
    if (GetCursorPos(&mouse) && WindowFromPoint(mouse) == picViewPort_.get()) {
        SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(cursorNumber(pointer))));
    }
}

void Win32LabelWindow::setToolTipText(const std::string& text) {
    toolTip_.show(outerClass_.module(), picViewPort_.get(), text);
}

void Win32LabelWindow::enableLinkTimer(bool on) {
    if (outer_ == nullptr || std::exchange(tmrHyperlinkClick_, on) == on) return;
    if (on) {
        SetTimer(outer_.get(), tmrHyperlinkClick, kLinkTimerMilliseconds, nullptr);
    } else {
        KillTimer(outer_.get(), tmrHyperlinkClick);
    }
}

void Win32LabelWindow::repaintViewPort() {
    if (picViewPort_ == nullptr) return;
    InvalidateRect(picViewPort_.get(), nullptr, FALSE);
    UpdateWindow(picViewPort_.get());
}

void Win32LabelWindow::processMessages() {
    if (container_ != nullptr && container_->letsMessagesThrough()) letMessagesThrough();
}

}  // namespace kavrelon
