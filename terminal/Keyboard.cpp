#include "terminal/Keyboard.h"

#include <algorithm>
#include <array>

namespace kavrelon {
namespace {

constexpr std::int16_t kPauseKey = 19;
constexpr std::int16_t kCtrlKey = 17;
constexpr std::int16_t kFirstFunctionKey = 112;
constexpr std::int16_t kLastFunctionKey = 123;
constexpr std::int16_t kKeysPerBank = 12;
/// Codes from here on make a control character with Ctrl: the code less this.
constexpr std::int16_t kControlOffset = 64;

struct ControlKey {
    std::int16_t keyCode;
    char sent;
};

/// Cursor and editing keys send single control characters, which the remote systems of this family expect.
constexpr std::array<ControlKey, 10> kControlKeys{{
    {35, 5},   // End
    {36, 1},   // Home
    {37, 21},  // Left
    {38, 26},  // Up
    {39, 6},   // Right
    {40, 10},  // Down
    {46, 4},   // Delete
    {45, 9},   // Insert
    {33, 15},  // Page Up
    {34, 16},  // Page Down
}};

std::int16_t functionKeyBase(std::int16_t shift) {
    std::int16_t bank = 0;
    if ((shift & Keyboard::kAlt) != 0) bank = static_cast<std::int16_t>(bank + 1);
    if ((shift & Keyboard::kShift) != 0) bank = static_cast<std::int16_t>(bank + 2);
    return static_cast<std::int16_t>(bank * kKeysPerBank);
}

}  // namespace

void Keyboard::keyDown(std::int16_t& keyCode, std::int16_t shift) {
    const std::string text = textOf(keyCode, shift);
    if (!text.empty() && InputOn_) target_.sendText(text);
}

std::string Keyboard::textOf(std::int16_t& keyCode, std::int16_t shift) {
    if (keyCode == kCtrlKey) {
        CtrlDown_ = true;
        return {};
    }
    const auto* control = std::find_if(kControlKeys.begin(), kControlKeys.end(),
                                       [&](const ControlKey& key) { return key.keyCode == keyCode; });
    if (control != kControlKeys.end()) return {control->sent};
    if (keyCode >= kFirstFunctionKey && keyCode <= kLastFunctionKey) {
        const int number = functionKeyBase(shift) + keyCode - kFirstFunctionKey + 1;
        keyCode = 0;
        return target_.functionKeyText(static_cast<std::int16_t>(number));
    }
    if (!CtrlDown_) return {};
    if (keyCode == kPauseKey) target_.sendBreak();
    return keyCode >= kControlOffset ? textWithCtrl(keyCode) : std::string();
}

std::string Keyboard::textWithCtrl(std::int16_t& keyCode) {
    const std::int16_t key = keyCode;
    keyCode = 0;
    if (key == 'C' && target_.copySelection()) return {};
    if (key == 'V') return target_.textToPaste();
    // Ctrl+Q would start a remote system's output that nobody had stopped.
    if (key == 'Q') return {};
    return {static_cast<char>(key - kControlOffset)};
}

void Keyboard::keyPress(std::int16_t character) {
    if (!InputOn_) return;
    if (CtrlDown_) {
        const bool swallowed = character == 'Q' || character == 'q' || character < kControlOffset;
        character = static_cast<std::int16_t>(swallowed ? 0 : character - kControlOffset);
    }
    if (character == 0) return;
    std::string text{static_cast<char>(character)};
    if (text == "\r" && CRtoCRLF_) text += '\n';
    target_.sendText(text);
}

void Keyboard::keyUp(std::int16_t keyCode) {
    if (keyCode == kCtrlKey) CtrlDown_ = false;
}

}  // namespace kavrelon
