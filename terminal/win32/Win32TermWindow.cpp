#include "terminal/win32/Win32TermWindow.h"

#include <algorithm>
#include <utility>

#include "support/win32/PlatformGeometry.h"
#include "support/win32/WideText.h"
#include "terminal/win32/Bell.h"
#include "terminal/win32/Clipboard.h"
#include "terminal/win32/GdiFaces.h"
#include "terminal/win32/MouseMessages.h"
#include "terminal/win32/WindowExtent.h"

namespace kavrelon {
namespace {

constexpr const wchar_t* kCaption = L"Terminal";

/// Timers are numbered from 1: number 0 means any to some of the calls.
constexpr UINT_PTR timerNumber(std::size_t timer) {
    return timer + 1;
}

int showCommand(WindowState state) {
    switch (state) {
        case WindowState::Minimised:
            return SW_SHOWMINIMIZED;
        case WindowState::Maximised:
            return SW_SHOWMAXIMIZED;
        case WindowState::Normal:
            break;
    }
    return SW_SHOWNORMAL;
}

bool isKeyMessage(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) || message == WM_IME_CHAR ||
           message == WM_KILLFOCUS;
}

}  // namespace

WindowHandle Win32TermWindow::create(const WindowClass& windowClass, HMENU menu) {
    return takeOver(CreateWindowExW(0, toWide(WindowClass::kName).c_str(), kCaption, WS_OVERLAPPEDWINDOW,
                                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, menu,
                                    windowClass.module(), nullptr));
}

Win32TermWindow::Win32TermWindow(const WindowClass& windowClass, std::weak_ptr<TermWindowEvents> events)
    : events_(std::move(events)), window_(create(windowClass, menus_.bar())), surface_(window_.get()) {
    menus_.handOver();
    listenTo(window_.get());
}

Win32TermWindow::~Win32TermWindow() {
    close();
}

void Win32TermWindow::close() noexcept {
    if (window_ == nullptr) return;
    caret_.lostFocus();
    stopListeningTo(window_.get());
    surface_.detach();
    window_.reset();
}

void Win32TermWindow::windowDestroyed() {
    const std::shared_ptr<TermWindowEvents> events = events_.lock();
    caret_.lostFocus();
    surface_.detach();
    menus_.forget();
    static_cast<void>(window_.release());
    if (events != nullptr) events->Form_Close();
}

WindowAnswer Win32TermWindow::handle(const WindowMessage& message) {
    // Held for the length of the message, and this object with them: a handler may release the last
    // reference.
    const std::shared_ptr<TermWindowEvents> events = events_.lock();
    if (events == nullptr) return std::nullopt;
    surface_.messageCame();
    if (const WindowAnswer answer = onDrawing(*events, message)) return answer;
    if (const WindowAnswer answer = onCommand(*events, message)) return answer;
    if (const WindowAnswer answer =
            handleMouse(*events, message.window, message.id, message.wParam, message.lParam)) {
        return answer;
    }
    onFocus(*events, message);
    if (isKeyMessage(message.id)) return keys_.handle(*events, message);
    return onSession(*events, message);
}

WindowAnswer Win32TermWindow::onDrawing(TermWindowEvents& events, const WindowMessage& message) {
    switch (message.id) {
        case WM_ERASEBKGND:
            // Painting covers every pixel; erasing before it would only flicker.
            return 1;
        case WM_PAINT: {
            // Painting comes after the end: the surface's own context would be clipped to what is wanted
            // before it, and a highlight that the paint ends has to go wherever it is.
            PAINTSTRUCT paint{};
            BeginPaint(message.window, &paint);
            EndPaint(message.window, &paint);
            surface_.paintBegins(fromPlatform(paint.rcPaint));
            if (!IsIconic(message.window)) events.Form_Paint();
            return 0;
        }
        case WM_SIZING:
            boundSizing(message.window, static_cast<int>(message.wParam), events.leastInnerSize(),
                        *reinterpret_cast<RECT*>(message.lParam));
            return TRUE;
        case WM_WINDOWPOSCHANGED:
            events.Form_Move();
            return std::nullopt;
        case WM_SIZE:
            // Showing a window tells its size twice, and would paint it twice.
            if (std::exchange(sizeTold_, std::pair(message.wParam, message.lParam)) ==
                std::pair(message.wParam, message.lParam)) {
                return 0;
            }
            if (message.wParam == SIZE_MINIMIZED) {
                events.Form_Resize();
            } else {
                redrawAtOnce(message.window, [&] { events.Form_Resize(); });
            }
            return 0;
        default:
            return std::nullopt;
    }
}

template <class Change>
void Win32TermWindow::redrawAtOnce(HWND window, Change change) {
    surface_.holdDrawing();
    change();
    if (listenerOf(window) != this) return;
    surface_.resumeDrawing();
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

WindowAnswer Win32TermWindow::onCommand(TermWindowEvents& events, const WindowMessage& message) {
    switch (message.id) {
        case WM_COMMAND: {
            const auto command = static_cast<MenuCommand>(LOWORD(message.wParam));
            if (redrawsScreen(command)) {
                redrawAtOnce(message.window, [&] { choose(command, events); });
            } else {
                choose(command, events);
            }
            return 0;
        }
        case WM_INITMENUPOPUP:
            if (HIWORD(message.lParam) == 0) {
                GdiFaces faces(GetDC(message.window));
                menus_.fill(reinterpret_cast<HMENU>(message.wParam), events, faces);
            }
            return 0;
        case WM_TIMER: {
            // A tick may have been under way when its timer was stopped.
            if (message.wParam == timerNumber(0) && timers_[0]) {
                events.cursor_timer_Timer();
            } else if (message.wParam == timerNumber(1) && timers_[1]) {
                events.tmrBeep_Timer();
            }
            return 0;
        }
        default:
            return std::nullopt;
    }
}

void Win32TermWindow::onFocus(TermWindowEvents& events, const WindowMessage& message) {
    if (message.id == WM_SETFOCUS) {
        caret_.gotFocus(message.window);
        events.Form_GotFocus();
    } else if (message.id == WM_KILLFOCUS) {
        caret_.lostFocus();
    }
}

WindowAnswer Win32TermWindow::onSession(TermWindowEvents& events, const WindowMessage& message) {
    switch (message.id) {
        case WM_ACTIVATE:
            if (LOWORD(message.wParam) == WA_INACTIVE) {
                events.Form_Deactivate();
            } else {
                events.Form_Activate();
            }
            return DefWindowProcW(message.window, message.id, message.wParam, message.lParam);
        case WM_CLOSE:
            events.Form_Close();
            return 0;
        case WM_ENDSESSION:
            if (message.wParam != FALSE) events.Form_Close();
            return 0;
        default:
            return std::nullopt;
    }
}

Point Win32TermWindow::innerCorner() const {
    RECT whole{};
    GetWindowRect(window_.get(), &whole);
    POINT inner{};
    ClientToScreen(window_.get(), &inner);
    return {static_cast<int>(inner.x - whole.left), static_cast<int>(inner.y - whole.top)};
}

void Win32TermWindow::show() {
    ShowWindow(window_.get(), showCommand(stateWhenShown_));
}

WindowState Win32TermWindow::state() const {
    if (!IsWindowVisible(window_.get())) return stateWhenShown_;
    if (IsIconic(window_.get())) return WindowState::Minimised;
    return IsZoomed(window_.get()) ? WindowState::Maximised : WindowState::Normal;
}

void Win32TermWindow::setState(WindowState state) {
    stateWhenShown_ = state;
    if (IsWindowVisible(window_.get())) ShowWindow(window_.get(), showCommand(state));
}

void Win32TermWindow::requestInnerSize(Size size) {
    if (state() != WindowState::Normal) return;
    const Size outer = outerSize(window_.get(), size);
    const RECT area = workArea(window_.get());
    const LONG width = std::min<LONG>(outer.width, area.right - area.left);
    const LONG height = std::min<LONG>(outer.height, area.bottom - area.top);
    RECT now{};
    GetWindowRect(window_.get(), &now);
    SetWindowPos(window_.get(), nullptr, static_cast<int>(std::min(now.left, area.right - width)),
                 static_cast<int>(std::min(now.top, area.bottom - height)), static_cast<int>(width),
                 static_cast<int>(height), SWP_NOZORDER | SWP_NOOWNERZORDER | SWP_NOACTIVATE);
}

void Win32TermWindow::makeActive() {
    SetWindowPos(window_.get(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    if (window_ != nullptr) SetActiveWindow(window_.get());
}

void Win32TermWindow::setFocus() {
    // Without a window it would take the keyboard from others.
    if (window_ != nullptr) SetFocus(window_.get());
}

std::string Win32TermWindow::caption() const {
    const int length = GetWindowTextLengthW(window_.get());
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window_.get(), text.data(), length + 1)));
    return toAnsi(text);
}

void Win32TermWindow::setCaption(const std::string& text) {
    SetWindowTextW(window_.get(), toWide(text).c_str());
}

TitleBarSettings Win32TermWindow::titleBarSettings() const {
    return {.hasCaption = GetWindowTextLengthA(window_.get()) > 0};
}

std::uint32_t Win32TermWindow::styleBits() const {
    return static_cast<std::uint32_t>(GetWindowLongA(window_.get(), GWL_STYLE));
}

void Win32TermWindow::setStyleBits(std::uint32_t bits) {
    RECT place{};
    GetWindowRect(window_.get(), &place);
    SetWindowLongA(window_.get(), GWL_STYLE, static_cast<LONG>(bits));
    SetWindowPos(window_.get(), nullptr, static_cast<int>(place.left), static_cast<int>(place.top),
                 static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top),
                 SWP_NOZORDER | SWP_FRAMECHANGED | SWP_NOOWNERZORDER);
}

void Win32TermWindow::enableTimer(TermTimer timer, bool on) {
    const auto index = static_cast<std::size_t>(timer);
    if (window_ == nullptr || std::exchange(timers_[index], on) == on) return;
    if (on) {
        SetTimer(window_.get(), timerNumber(index), static_cast<UINT>(kTimerMilliseconds[index]), nullptr);
    } else {
        KillTimer(window_.get(), timerNumber(index));
    }
}

void Win32TermWindow::beep(Tone tone) {
    soundBell(tone);
}

std::optional<std::string> Win32TermWindow::clipboardText(bool bytes) {
    return Clipboard(window_.get()).text(bytes);
}

bool Win32TermWindow::setClipboardText(const std::string& text) {
    // Without a window the clipboard would belong to the whole thread.
    return window_ != nullptr && Clipboard(window_.get()).setText(text);
}

bool Win32TermWindow::clearClipboard() {
    return window_ != nullptr && Clipboard(window_.get()).clear();
}

void Win32TermWindow::showContextMenu(bool copyEnabled, bool pasteEnabled) {
    if (window_ != nullptr) TermMenus::popUp(window_.get(), copyEnabled, pasteEnabled);
}

void Win32TermWindow::enableRemoteMenu(bool enabled) {
    if (menus_.enableRemote(enabled) && window_ != nullptr) DrawMenuBar(window_.get());
}

void Win32TermWindow::reportFailure(const std::string& text) {
    if (window_ != nullptr)
        MessageBoxW(window_.get(), toShownWide(text).c_str(), kCaption, MB_OK | MB_ICONEXCLAMATION);
}

bool Win32TermWindow::confirm(const std::string& text) {
    // Topmost: a help box that the remote side shows meanwhile must not cover what the user is to read.
    constexpr UINT kStyle = MB_YESNO | MB_DEFBUTTON2 | MB_ICONWARNING | MB_TOPMOST;
    return window_ != nullptr &&
           MessageBoxW(window_.get(), toShownWide(text).c_str(), kCaption, kStyle) == IDYES;
}

}  // namespace kavrelon
