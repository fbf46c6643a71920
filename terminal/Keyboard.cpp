#include "terminal/Keyboard.h"

#include <algorithm>
#include <array>
#include <utility>

#include "support/Keys.h"

namespace kavrelon {
namespace {

constexpr std::int16_t kKeysPerBank = 12;
/// Codes from here on make a control character with Ctrl: the code less this.
constexpr std::int16_t kControlOffset = 64;

struct ControlKey {
    std::int16_t keyCode;
    char sent;
};

/// Cursor and editing keys send single control characters, which the remote systems of this family expect.
constexpr std::array<ControlKey, 10> kControlKeys{{
    {keys::kEnd, 5},
    {keys::kHome, 1},
    {keys::kLeft, 21},
    {keys::kUp, 26},
    {keys::kRight, 6},
    {keys::kDown, 10},
    {keys::kDelete, 4},
    {keys::kInsert, 9},
    {keys::kPageUp, 15},
    {keys::kPageDown, 16},
}};

std::int16_t functionKeyBase(std::int16_t shift) {
    std::int16_t bank = 0;
    if ((shift & shifts::kAlt) != 0) bank = static_cast<std::int16_t>(bank + 1);
    if ((shift & shifts::kShift) != 0) bank = static_cast<std::int16_t>(bank + 2);
    return static_cast<std::int16_t>(bank * kKeysPerBank);
}

}  // namespace

void Keyboard::keyDown(KeyStroke& key) {
    followCtrl(key);
    const std::string text = textOf(key);
    if (!text.empty() && InputOn_) target_.sendText(text);
}

void Keyboard::followCtrl(const KeyStroke& key) {
    // AltGr arrives as Ctrl and the right Alt key. What it types are characters, not Ctrl combinations.
    const bool altGr = key.keyCode == keys::kAlt && key.rightAlt && (key.Shift & shifts::kCtrl) != 0;
    if (altGr || key.ctrlReleased) CtrlDown_ = false;
    if (key.keyCode == keys::kCtrl && !key.rightAlt) CtrlDown_ = true;
}

std::string Keyboard::textOf(KeyStroke& key) {
    const auto* control = std::find_if(kControlKeys.begin(), kControlKeys.end(),
                                       [&](const ControlKey& each) { return each.keyCode == key.keyCode; });
    if (control != kControlKeys.end()) return {control->sent};
    if (key.keyCode >= keys::kF1 && key.keyCode <= keys::kF12) {
        const int number = functionKeyBase(key.Shift) + std::exchange(key.keyCode, 0) - keys::kF1 + 1;
        return target_.functionKeyText(static_cast<std::int16_t>(number));
    }
    if (!CtrlDown_) return {};
    if (key.keyCode == keys::kPause) target_.sendBreak();
    return key.keyCode >= kControlOffset ? textWithCtrl(key) : std::string();
}

std::string Keyboard::textWithCtrl(KeyStroke& key) {
    const std::int16_t code = std::exchange(key.keyCode, 0);
    if (code == 'C' && target_.copySelection()) return {};
    if (code == 'V') return target_.textToPaste();
    // Ctrl+Q would resume a remote system's output that nobody had stopped.
    if (code == 'Q') return {};
    return {static_cast<char>(code - kControlOffset)};
}

void Keyboard::keyPress(std::int16_t KeyAscii) {
    if (!InputOn_) return;
    if (CtrlDown_) {
        const bool swallowed = KeyAscii == 'Q' || KeyAscii == 'q' || KeyAscii < kControlOffset;
        KeyAscii = static_cast<std::int16_t>(swallowed ? 0 : KeyAscii - kControlOffset);
    }
    if (KeyAscii == 0) return;
    std::string text{static_cast<char>(KeyAscii)};
    if (text == "\r" && CRtoCRLF_) text += '\n';
    target_.sendText(text);
}

void Keyboard::keyUp(std::int16_t keyCode) {
    if (keyCode == keys::kCtrl) CtrlDown_ = false;
}

}  // namespace kavrelon
