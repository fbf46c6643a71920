#include "htmllabel/win32/LinkToolTip.h"

// Behind the header that it is built on.
#include <commctrl.h>

namespace kavrelon {
namespace {

/// Pixels. Longer texts are broken into lines.
constexpr LPARAM kWidest = 400;

LPARAM address(const TTTOOLINFOA& tool) {
    return reinterpret_cast<LPARAM>(&tool);
}

TTTOOLINFOA describe(HWND over, std::string& text) {
    TTTOOLINFOA tool{};
    // The size of before manifests: it is the one that every version of the common controls takes.
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = over;
    tool.uId = reinterpret_cast<UINT_PTR>(over);
    tool.lpszText = text.data();
    return tool;
}

}  // namespace

bool LinkToolTip::create(HINSTANCE module, HWND over) {
    const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_BAR_CLASSES};
    InitCommonControlsEx(&wanted);
    window_.reset(CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, "", WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, over, nullptr,
                                  module, nullptr));
    if (window_ == nullptr) return false;
    const TTTOOLINFOA tool = describe(over, text_);
    SendMessageA(window_.get(), TTM_SETMAXTIPWIDTH, 0, kWidest);
    return SendMessageA(window_.get(), TTM_ADDTOOLA, 0, address(tool)) != FALSE;
}

void LinkToolTip::show(HINSTANCE module, HWND over, const std::string& text) {
    if (over == nullptr || text == text_) return;
    text_ = text;
    if (window_ == nullptr) {
        create(module, over);
        return;
    }
    const TTTOOLINFOA tool = describe(over, text_);
    // Another link's text has its own delay, and its own place.
    SendMessageA(window_.get(), TTM_POP, 0, 0);
    SendMessageA(window_.get(), TTM_UPDATETIPTEXTA, 0, address(tool));
}

}  // namespace kavrelon
