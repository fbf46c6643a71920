#pragma once

#include <windows.h>

#include <memory>
#include <optional>

namespace kavrelon {

class TermWindowEvents;

/// Turns keyboard messages into key events. A key that an event has used up has no character, no menu and no
/// default action any more.
class KeyMessages {
  public:
    /// The window procedure's answer; nothing where the platform's own procedure is to go on. An event may
    /// have destroyed this object: nothing may touch it after the call.
    std::optional<LRESULT> handle(TermWindowEvents& events, UINT message, WPARAM wParam);

  private:
    std::optional<LRESULT> keyDown(TermWindowEvents& events, WPARAM key);
    std::optional<LRESULT> keyUp(TermWindowEvents& events, WPARAM key);

    struct State {
        // The character that goes with a key is in the queue before the key's own message arrives.
        bool swallowCharacter = false;
        // Releasing Alt opens the menu bar, unless it was held for a key that the terminal took.
        bool swallowAltUp = false;
    };

    // Shared with the handlers under way, which may outlive this object.
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace kavrelon
