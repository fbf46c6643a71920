#pragma once

#include <cstdint>
#include <string>

#include "terminal/KeyStroke.h"

namespace kavrelon {

/// What keys act on: the ways out of the terminal, and its clipboard.
class KeyTarget {
  public:
    virtual ~KeyTarget() = default;

    /// The string of a function key, 1 to 48.
    virtual std::string functionKeyText(std::int16_t keyNumber) = 0;
    virtual void sendBreak() = 0;
    virtual void sendText(const std::string& text) = 0;
    /// Copies the selection; false when there is none, or copying is not allowed.
    virtual bool copySelection() = 0;
    /// The clipboard's text; empty when there is none, or pasting is not allowed.
    virtual std::string textToPaste() = 0;
};

/// Turns keys into what is sent.
///
/// A key arrives as `keyDown`, then, when that left its code alone, as the character that it types.
class Keyboard {
  public:
    explicit Keyboard(KeyTarget& target) : target_(target) {}

    /// Acts on keys that type no character. Sets the key's code to 0 where nothing is to follow.
    void keyDown(KeyStroke& key);
    /// Sends a typed character, single-byte.
    void keyPress(std::int16_t KeyAscii);
    void keyUp(std::int16_t keyCode);
    /// The window has lost the focus: the Ctrl key's release will not arrive.
    void loseFocus() { CtrlDown_ = false; }

    bool CtrlDown() const { return CtrlDown_; }
    bool InputOn() const { return InputOn_; }
    void InputOn(bool value) { InputOn_ = value; }
    bool CRtoCRLF() const { return CRtoCRLF_; }
    /// A typed carriage return is sent as CR LF.
    void CRtoCRLF(bool value) { CRtoCRLF_ = value; }

  private:
    void followCtrl(const KeyStroke& key);
    std::string textOf(KeyStroke& key);
    std::string textWithCtrl(KeyStroke& key);

    KeyTarget& target_;
    bool CtrlDown_ = false;
    bool InputOn_ = true;
    bool CRtoCRLF_ = false;
};

}  // namespace kavrelon
