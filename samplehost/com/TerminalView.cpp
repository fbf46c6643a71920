#include "samplehost/com/TerminalView.h"

#include <windows.h>

#include <cstdint>
#include <utility>

#include "support/com/AutomationValue.h"
#include "support/com/ComText.h"

namespace kavrelon {

namespace {

HWND windowOf(long handle) {
    return reinterpret_cast<HWND>(static_cast<std::intptr_t>(handle));
}

}  // namespace

TerminalView::TerminalView(ComPtr<ITerminalWindow> window, bool pasteBytes)
    : window_(std::move(window)), pasteBytes_(pasteBytes) {
    if (!window_) return;
    Bstr caption;
    if (SUCCEEDED(window_->get_Caption(caption.put()))) ownTitle_ = toAnsi(caption.view());
    follow();
}

void TerminalView::follow() {
    long handle = 0;
    if (!window_ || FAILED(window_->get_hWnd(&handle)) || handle == 0 || handle == handle_) return;
    handle_ = handle;
    window_->put_PasteBytes(toAutomation(pasteBytes_));
    showTitle();
}

void TerminalView::title(const std::string& text) {
    title_ = text;
    showTitle();
}

void TerminalView::showTitle() {
    if (window_ && !title_.empty()) window_->put_Caption(toBstr(title_ + " - " + ownTitle_).get());
}

bool TerminalView::minimised() const {
    return IsIconic(windowOf(handle_)) != FALSE;
}

void TerminalView::paint(bool on) {
    if (!window_ || minimised()) return;
    VARIANT_BOOL now = VARIANT_FALSE;
    // A window that was resized paints again of itself.
    if (SUCCEEDED(window_->get_PaintOn(&now)) && (now != VARIANT_FALSE) != on)
        window_->put_PaintOn(toAutomation(on));
}

void TerminalView::show() {
    if (!window_ || minimised()) return;
    paint(true);
    window_->Redrawscreen(VARIANT_TRUE);
}

void TerminalView::paintLater() {
    paint(true);
    if (handle_ != 0) InvalidateRect(windowOf(handle_), nullptr, FALSE);
}

std::optional<TerminalView::Size> TerminalView::size() const {
    short columns = 0;
    short rows = 0;
    if (!window_ || FAILED(window_->get_CharsPerLine(&columns)) || FAILED(window_->get_LinesPerPage(&rows)) ||
        columns == 0)
        return std::nullopt;
    return Size{columns, rows};
}

std::optional<std::wstring> TerminalView::text() const {
    VARIANT leftOut{};
    leftOut.vt = VT_ERROR;
    leftOut.scode = DISP_E_PARAMNOTFOUND;
    Bstr rows;
    if (!window_ || FAILED(window_->ScreenText(leftOut, leftOut, rows.put()))) return std::nullopt;
    return std::wstring(rows.view()) + L"\r\n";
}

bool TerminalView::crLf() const {
    VARIANT_BOOL on = VARIANT_FALSE;
    if (window_) window_->get_CRtoCRLF(&on);
    return on != VARIANT_FALSE;
}

}  // namespace kavrelon
