#include "helpbox/win32/Win32HelpWindow.h"

#include <algorithm>
#include <utility>

#include "gdi/GdiHandles.h"
#include "htmllabel/HTMLLabel.h"
#include "htmllabel/win32/Win32LabelWindow.h"
#include "support/Conversions.h"
#include "support/Keys.h"
#include "support/win32/KeyState.h"
#include "support/win32/PlatformGeometry.h"

namespace kavrelon {
namespace {

/// The window's name for screen readers.
constexpr const char* kTitle = "Help";
constexpr WORD mnuRightClickClose = 1;
constexpr int kTwipsPerInch = 1440;
/// The platform keeps some positions and sizes in 16 bits.
constexpr double kFarthest = 32767;

int classHolders = 0;

WindowHandle create(const SharedWindowClass& windowClass) {
    return takeOver(CreateWindowExA(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, windowClass.name(), kTitle,
                                    WS_POPUP | WS_BORDER | WS_CLIPCHILDREN, 0, 0, 0, 0, nullptr, nullptr,
                                    windowClass.module(), nullptr));
}

/// Twips per pixel of the desktop, horizontally or vertically.
int twipsPerPixel(int resolution) {
    const HDC desktop = GetDC(nullptr);
    const int dotsPerInch = std::max(GetDeviceCaps(desktop, resolution), 1);
    ReleaseDC(nullptr, desktop);
    return roundHalfToEven(static_cast<double>(kTwipsPerInch) / dotsPerInch);
}

int pixels(double twips, int twipsPerPixel) {
    return roundHalfToEven(std::clamp(twips / twipsPerPixel, -kFarthest, kFarthest));
}

HWND toHandle(WindowId window) {
    return reinterpret_cast<HWND>(window);  // NOLINT(performance-no-int-to-ptr): a handle is a number
}

Rect rectangleOfWindow(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return fromPlatform(place);
}

/// Whether a window is above its owner. Not every platform moves it to the front with the owner.
bool standsAboveOwner(HWND window) {
    const HWND owner = GetWindow(window, GW_OWNER);
    HWND below = window;
    while (below != nullptr && below != owner) below = GetWindow(below, GW_HWNDNEXT);
    return below == owner;
}

/// Puts a window on top of its like that have the same owner. Windows above them stay above: those of other
/// programs, and message boxes of the owner, which the remote side must not be able to cover.
void putAboveOwner(HWND window, UINT flags) {
    const HWND owner = GetWindow(window, GW_OWNER);
    HWND above = GetWindow(owner, GW_HWNDPREV);
    const auto isItsLike = [&](HWND other) {
        return GetWindow(other, GW_OWNER) == owner &&
               GetClassWord(other, GCW_ATOM) == GetClassWord(window, GCW_ATOM);
    };
    while (above != nullptr && (above == window || isItsLike(above))) above = GetWindow(above, GW_HWNDPREV);
    // Directly below a topmost window it would become topmost itself.
    if (above != nullptr && (GetWindowLongA(above, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0) above = HWND_TOP;
    SetWindowPos(window, above, 0, 0, 0, 0,
                 flags | SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

}  // namespace

Win32HelpWindow::Win32HelpWindow(HINSTANCE module, std::weak_ptr<HelpWindowEvents> events)
    : events_(std::move(events)),
      class_(windowClass(module, kClassName, 0), classHolders),
      window_(create(class_)),
      twipsPerPixelX_(twipsPerPixel(LOGPIXELSX)),
      twipsPerPixelY_(twipsPerPixel(LOGPIXELSY)) {
    listenTo(window_.get());
}

Win32HelpWindow::~Win32HelpWindow() {
    close();
}

void Win32HelpWindow::close() noexcept {
    if (label_ != nullptr) label_->close();
    if (window_ == nullptr) return;
    stopListeningTo(window_.get());
    window_.reset();
}

void Win32HelpWindow::windowDestroyed() {
    static_cast<void>(window_.release());
    if (const auto events = events_.lock()) events->Form_Unload();
}

WindowAnswer Win32HelpWindow::handle(const WindowMessage& message) {
    const std::shared_ptr<HelpWindowEvents> events = events_.lock();
    switch (message.id) {
        case WM_SIZE:
            if (events != nullptr) events->Form_Resize();
            return 0;
        case WM_COMMAND:
            if (LOWORD(message.wParam) == mnuRightClickClose && events != nullptr)
                events->mnuRightClickClose_Click();
            return 0;
        case WM_CLOSE:
            if (events != nullptr) events->mnuRightClickClose_Click();
            return 0;
        case WM_MOUSEACTIVATE:
            SetActiveWindow(GetWindow(message.window, GW_OWNER));
            putAboveOwner(message.window, 0);
            return MA_NOACTIVATE;
        case WM_ERASEBKGND:
            // The label covers every pixel.
            return 1;
        case WM_CONTEXTMENU:
        case WM_MOUSEWHEEL:
            // Otherwise those that the label does not handle would go on to the owner.
            return 0;
        default:
            return std::nullopt;
    }
}

LabelWindow* Win32HelpWindow::addLabel(const std::shared_ptr<HTMLLabel>& label) {
    label_ = Win32LabelWindow::create(class_.module(), window_.get(), {}, label, *this);
    label_->show(true);
    return label_.get();
}

void Win32HelpWindow::sizeLabel(Size twips) {
    if (label_ == nullptr) return;
    label_->move({0, 0, pixels(twips.width, twipsPerPixelX_), pixels(twips.height, twipsPerPixelY_)});
}

Size Win32HelpWindow::innerSize() const {
    RECT inner{};
    GetClientRect(window_.get(), &inner);
    return {static_cast<int>(inner.right) * twipsPerPixelX_,
            static_cast<int>(inner.bottom) * twipsPerPixelY_};
}

void Win32HelpWindow::setOwner(WindowId owner) {
    placed_ = true;
    SetWindowLongPtrA(window_.get(), GWLP_HWNDPARENT, static_cast<LONG_PTR>(owner));
}

void Win32HelpWindow::setVisible(bool visible) {
    if (window_ == nullptr) return;
    if (!visible) {
        ShowWindow(window_.get(), SW_HIDE);
    } else if (!IsWindowVisible(window_.get()) || !standsAboveOwner(window_.get())) {
        putAboveOwner(window_.get(), SWP_SHOWWINDOW);
    }
}

void Win32HelpWindow::Move(double left, double top, double width, double height) {
    SetWindowPos(window_.get(), nullptr, pixels(left, twipsPerPixelX_), pixels(top, twipsPerPixelY_),
                 std::max(pixels(width, twipsPerPixelX_), 0), std::max(pixels(height, twipsPerPixelY_), 0),
                 SWP_NOZORDER | SWP_NOOWNERZORDER | SWP_NOACTIVATE);
}

Rect Win32HelpWindow::rectangle() const {
    return rectangleOfWindow(window_.get());
}

Rect Win32HelpWindow::rectangleOf(WindowId window) const {
    return rectangleOfWindow(toHandle(window));
}

bool Win32HelpWindow::isShown(WindowId window) const {
    return IsWindowVisible(toHandle(window)) && !IsIconic(toHandle(window));
}

Point Win32HelpWindow::cursor() const {
    return pointIn(static_cast<LPARAM>(GetMessagePos()));
}

bool Win32HelpWindow::isHeld(std::int16_t wanted) const {
    const auto held = [wanted](int button, int key) { return (wanted & button) != 0 && isDown(key); };
    return held(buttons::kLeft, VK_LBUTTON) || held(buttons::kRight, VK_RBUTTON) ||
           held(buttons::kMiddle, VK_MBUTTON);
}

void Win32HelpWindow::drawFocusRectangle(const Rect& block) {
    const RECT outline = toPlatform(block);
    const HWND desktop = GetDesktopWindow();
    const HDC context = GetDC(desktop);
    DrawFocusRect(context, &outline);
    ReleaseDC(desktop, context);
}

void Win32HelpWindow::popUpRightClickMenu() {
    if (window_ == nullptr) return;
    const Menu mnuRightClick(CreatePopupMenu());
    AppendMenuA(mnuRightClick.get(), MF_STRING, mnuRightClickClose, "&Close");
    const Point mouse = cursor();
    TrackPopupMenu(mnuRightClick.get(), TPM_RIGHTBUTTON, mouse.x, mouse.y, 0, window_.get(), nullptr);
}

void Win32HelpWindow::mouseReleased() noexcept {
    if (const auto events = events_.lock()) events->dragEnded();
}

}  // namespace kavrelon
