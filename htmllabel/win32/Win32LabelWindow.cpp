#include "htmllabel/win32/Win32LabelWindow.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "htmllabel/HTMLLabel.h"
#include "htmllabel/win32/ViewPortMessages.h"
#include "support/win32/Messages.h"
#include "support/win32/Module.h"

namespace kavrelon {
namespace {

constexpr const char* kOuterClass = "kavrelon.HTMLLabel";
constexpr const char* kViewPortClass = "kavrelon.picViewPort";
int outerClassHolders = 0;
int viewPortClassHolders = 0;

constexpr UINT_PTR kLinkTimer = 1;
constexpr UINT kLinkTimerMilliseconds = 100;
constexpr double kTwipsPerInch = 1440;

/// Numbers of the platform's own pointers, whose names do not go with the single-byte calls.
constexpr WORD kArrowCursor = 32512;
constexpr WORD kHourglassCursor = 32514;
constexpr WORD kHandCursor = 32649;

WNDCLASSEXA describe(HINSTANCE module, const char* name, WNDPROC procedure, UINT style) {
    WNDCLASSEXA result{};
    result.cbSize = sizeof result;
    result.style = style;
    result.lpfnWndProc = procedure;
    result.hInstance = module;
    result.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(kArrowCursor));
    result.lpszClassName = name;
    return result;
}

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

RECT toRect(const Rect& block) {
    return {block.left, block.top, block.right, block.bottom};
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

/// Paints what is due of a window for the length of a scope.
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
    // From here on messages arrive; those of the creation went to the platform's own procedure.
    for (const HWND part : {window->outer_.get(), window->viewPort_.get()}) {
        SetWindowLongPtrA(part, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window.get()));
    }
    return window;
}

Win32LabelWindow::Win32LabelWindow(HINSTANCE module, HWND parent, const RECT& place,
                                   std::weak_ptr<HTMLLabel> label, LabelContainer& container)
    : outerClass_(describe(module, kOuterClass, procedure, CS_HREDRAW | CS_VREDRAW), outerClassHolders),
      viewPortClass_(describe(module, kViewPortClass, procedure, 0), viewPortClassHolders),
      label_(std::move(label)),
      container_(&container),
      outer_(createWindow(outerClass_, parent, WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place)),
      viewPort_(createWindow(viewPortClass_, outer_.get(), WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS, {})),
      vscScroll_(ScrollBar::Vertical),
      hscScroll_(ScrollBar::Horizontal) {
    vscScroll_.create(module, outer_.get());
    hscScroll_.create(module, outer_.get());
    // Not compatible with this window but with the desktop, which stays as long as the surface.
    picHTML_.hWnd(GetDesktopWindow());
}

Win32LabelWindow::~Win32LabelWindow() {
    close();
}

WindowHandle Win32LabelWindow::createWindow(const SharedWindowClass& windowClass, HWND parent, DWORD style,
                                            const RECT& place) {
    WindowHandle window(CreateWindowExA(
        0, windowClass.name(), "", WS_CHILD | style, static_cast<int>(place.left),
        static_cast<int>(place.top), static_cast<int>(place.right - place.left),
        static_cast<int>(place.bottom - place.top), parent, nullptr, windowClass.module(), nullptr));
    if (window == nullptr) throw std::bad_alloc();
    return window;
}

void Win32LabelWindow::detach() noexcept {
    for (const HWND part : {outer_.get(), viewPort_.get()}) SetWindowLongPtrA(part, GWLP_USERDATA, 0);
    label_.reset();
    container_ = nullptr;
    // A window of its own on the desktop, which nobody takes along.
    toolTip_.destroy();
    vscScroll_.forget();
    hscScroll_.forget();
    static_cast<void>(viewPort_.release());
}

void Win32LabelWindow::close() noexcept {
    if (outer_ == nullptr) return;
    detach();
    outer_.reset();
}

LRESULT CALLBACK Win32LabelWindow::procedure(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam) noexcept {
    // The host may let go of everything while an event runs.
    const ModuleLock inUse;
    try {
        if (auto* self = reinterpret_cast<Win32LabelWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA))) {
            if (const auto alive = self->weak_from_this().lock()) {
                if (const Answer answer = alive->handle({window, message, wParam, lParam})) return *answer;
            }
        }
    } catch (...) {
        // What an event could not do is undone work, not a reason to take the host down.
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

Win32LabelWindow::Answer Win32LabelWindow::handle(const Message& message) {
    if (message.id == WM_DESTROY && message.window == outer_.get()) {
        detach();
        static_cast<void>(outer_.release());
        return std::nullopt;
    }
    const std::shared_ptr<HTMLLabel> label = label_.lock();
    if (label == nullptr) return std::nullopt;
    if (const Answer answer = onTitle(*label, message)) return answer;
    return message.window == outer_.get() ? onOuter(*label, message) : onViewPort(*label, message);
}

// The title is what programs that read the screen aloud call the control. Without one it is the window's own
// text.
Win32LabelWindow::Answer Win32LabelWindow::onTitle(const HTMLLabel& label, const Message& message) const {
    if (message.id != WM_GETTEXT && message.id != WM_GETTEXTLENGTH) return std::nullopt;
    const std::string title = label.DocumentTitle();
    if (title == "Unknown") return std::nullopt;
    switch (message.id) {
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(title.size());
        case WM_GETTEXT: {
            if (message.wParam == 0) return 0;
            const std::size_t length = std::min<std::size_t>(title.size(), message.wParam - 1);
            auto* out = reinterpret_cast<char*>(message.lParam);
            std::memcpy(out, title.data(), length);
            out[length] = '\0';
            return static_cast<LRESULT>(length);
        }
        default:
            return std::nullopt;
    }
}

Win32LabelWindow::Answer Win32LabelWindow::onOuter(HTMLLabel& label, const Message& message) {
    switch (message.id) {
        case WM_ERASEBKGND:
            eraseOuter(reinterpret_cast<HDC>(message.wParam));
            return 1;
        case WM_SIZE:
            // Another border changes the inner size alone, which tells the label nothing.
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
            // From the scroll bars, which do not want it.
            return handleMouse(label, *container_, viewPort_.get(), message.id, message.wParam,
                               message.lParam);
        case WM_TIMER:
            if (linkTimer_) label.tmrHyperlinkClick_Timer();
            return 0;
        default:
            return std::nullopt;
    }
}

LRESULT Win32LabelWindow::onScroll(HTMLLabel& label, const Message& message) {
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

Win32LabelWindow::Answer Win32LabelWindow::onViewPort(HTMLLabel& label, const Message& message) {
    switch (message.id) {
        case WM_ERASEBKGND:
            // Painting covers every pixel; erasing before it would only flicker.
            return 1;
        case WM_PAINT:
            paintViewPort(label);
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(message.lParam) != HTCLIENT) return std::nullopt;
            SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(cursorNumber(pointer_))));
            return TRUE;
        default:
            break;
    }
    if (const Answer answer =
            handleMouse(label, *container_, message.window, message.id, message.wParam, message.lParam)) {
        return answer;
    }
    const Answer answer = handleKeys(label, *container_, message.window, message.id, message.wParam);
    const bool focus = message.id == WM_SETFOCUS || message.id == WM_KILLFOCUS;
    if (focus && container_ != nullptr) container_->focusChanged(message.id == WM_SETFOCUS);
    return answer;
}

void Win32LabelWindow::eraseOuter(HDC context) const {
    RECT inner{};
    GetClientRect(outer_.get(), &inner);
    fillBlock(context, inner, look_.BackColor);
    if (placement_.cornerVisible) fillBlock(context, toRect(placement_.shpCorner), kButtonFaceColour);
}

void Win32LabelWindow::paintViewPort(HTMLLabel& label) {
    const HWND viewPort = viewPort_.get();
    if (painting_) {
        // An event of the painting under way let this one through: it waits for its turn.
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
    if (std::exchange(paintAgain_, false) && viewPort_ != nullptr)
        InvalidateRect(viewPort_.get(), nullptr, FALSE);
}

void Win32LabelWindow::paintDue(HTMLLabel& label, HDC screen, const RECT& due) {
    RECT inner{};
    GetClientRect(viewPort_.get(), &inner);
    const LONG width = due.right - due.left;
    const LONG height = due.bottom - due.top;
    if (width <= 0 || height <= 0) return;
    // Drawn out of sight and copied in one go, nothing flickers. Only what is seen is drawn: a bitmap of a
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
    const auto alive = shared_from_this();  // the resize asks the container, which may close the window
    if (const auto label = label_.lock(); label != nullptr && visible) label->UserControl_Resize();
    ShowWindow(outer_.get(), visible ? SW_SHOWNA : SW_HIDE);
}

void Win32LabelWindow::setFocus() {
    if (viewPort_ != nullptr) SetFocus(viewPort_.get());
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
    moveWindow(viewPort_.get(), toRect(placement.viewPort));
    vscScroll_.place(placement.vscScroll);
    hscScroll_.place(placement.hscScroll);
    InvalidateRect(outer_.get(), nullptr, TRUE);
}

void Win32LabelWindow::setScrollBar(ScrollBar bar, const ScrollState& state) {
    (bar == ScrollBar::Vertical ? vscScroll_ : hscScroll_).show(state);
    toolTip_.hide();
    updateOrigin();
}

void Win32LabelWindow::updateOrigin() {
    canvas_.setOrigin({hscScroll_.state().Value, vscScroll_.state().Value});
}

void Win32LabelWindow::setMousePointer(MousePointer pointer) {
    if (std::exchange(pointer_, pointer) == pointer || viewPort_ == nullptr) return;
    // The platform asks for the pointer before it tells of the move that changes it.
    POINT mouse{};
    if (GetCursorPos(&mouse) && WindowFromPoint(mouse) == viewPort_.get()) {
        SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(cursorNumber(pointer))));
    }
}

void Win32LabelWindow::setToolTipText(const std::string& text) {
    toolTip_.show(outerClass_.module(), viewPort_.get(), text);
}

void Win32LabelWindow::enableLinkTimer(bool on) {
    if (outer_ == nullptr || std::exchange(linkTimer_, on) == on) return;
    if (on) {
        SetTimer(outer_.get(), kLinkTimer, kLinkTimerMilliseconds, nullptr);
    } else {
        KillTimer(outer_.get(), kLinkTimer);
    }
}

void Win32LabelWindow::repaintViewPort() {
    if (viewPort_ == nullptr) return;
    InvalidateRect(viewPort_.get(), nullptr, FALSE);
    UpdateWindow(viewPort_.get());
}

void Win32LabelWindow::processMessages() {
    if (container_ != nullptr && container_->letsMessagesThrough()) letMessagesThrough();
}

}  // namespace kavrelon
