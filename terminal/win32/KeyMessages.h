#pragma once

#include <windows.h>

#include <memory>

#include "support/win32/WindowProcedure.h"

namespace kavrelon {

class TermWindowEvents;

/// Turns keyboard messages into key events. A key that an event has used up has no character, no menu and no
/// default action any more.
class KeyMessages {
  public:
    /// An event may have destroyed this object: nothing may touch it after the call.
    WindowAnswer handle(TermWindowEvents& events, const WindowMessage& message);

  private:
    struct State {
        // The character that goes with a key is in the queue before the key's own message arrives.
        bool swallowCharacter = false;
        // Releasing Alt opens the menu bar, unless it was held for a key that the terminal took.
        bool swallowAltUp = false;
        // The first half of a character that takes two messages; 0 when none is waiting for its other half.
        wchar_t highSurrogate = 0;

        WindowAnswer keyDown(TermWindowEvents& events, WPARAM key);
        void type(TermWindowEvents& events, wchar_t unit);
        void typeCodePoint(TermWindowEvents& events, WPARAM codePoint);
        void takeCharacters(TermWindowEvents& events, HWND window);
    };

    // Shared with the handlers under way, which may outlive this object.
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace kavrelon
