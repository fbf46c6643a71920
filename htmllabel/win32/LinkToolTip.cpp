#include "htmllabel/win32/LinkToolTip.h"

// After windows.h, which it needs.
#include <commctrl.h>

namespace kavrelon {
namespace {

/// In pixels. Longer texts are broken into lines.
constexpr LPARAM kWidest = 400;

/// A message of the mouse move that led to the mouse's present position.
MSG mouseMove(HWND over) {
    MSG move{};
    move.hwnd = over;
    move.message = WM_MOUSEMOVE;
    move.time = static_cast<DWORD>(GetMessageTime());
    GetCursorPos(&move.pt);
    POINT place = move.pt;
    ScreenToClient(over, &place);
    move.lParam = MAKELPARAM(place.x, place.y);
    return move;
}

}  // namespace

bool LinkToolTip::create(HINSTANCE module, HWND over) {
    if (!controls_) controls_.emplace(L"comctl32.dll");
    auto* const initialise = controls_->find<decltype(InitCommonControlsEx)>("InitCommonControlsEx");
    const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_BAR_CLASSES};
    if (initialise == nullptr || !initialise(&wanted)) return false;
    window_.reset(CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, "", WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, over, nullptr,
                                  module, nullptr));
    if (window_ == nullptr) return false;
    SendMessageA(window_.get(), TTM_SETMAXTIPWIDTH, 0, kWidest);
    return true;
}

void LinkToolTip::send(UINT message, HWND over, const std::string& text) const {
    std::string copy = text;
    TTTOOLINFOA tool{};
    // The oldest size of the structure: every version of the common controls accepts it.
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = over;
    tool.uId = reinterpret_cast<UINT_PTR>(over);
    tool.lpszText = copy.data();
    SendMessageA(window_.get(), message, 0, reinterpret_cast<LPARAM>(&tool));
}

void LinkToolTip::hide() const {
    if (window_ != nullptr) SendMessageA(window_.get(), TTM_POP, 0, 0);
}

void LinkToolTip::show(HINSTANCE module, HWND over, const std::string& text) {
    if (over == nullptr || text == text_) return;
    if (window_ == nullptr && !create(module, over)) return;
    // A new tool for each text: it appears after its delay next to the mouse. With a new text for the old
    // tool, the mouse would have to leave and come back first.
    if (!text_.empty()) send(TTM_DELTOOLA, over, text_);
    text_ = text;
    if (text_.empty()) return;
    send(TTM_ADDTOOLA, over, text_);
    const MSG move = mouseMove(over);
    SendMessageA(window_.get(), TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&move));
}

}  // namespace kavrelon
