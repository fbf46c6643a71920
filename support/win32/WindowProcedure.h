#pragma once

#include <windows.h>

#include <optional>

namespace kavrelon {

/// A message as a window procedure gets it.
struct WindowMessage {
    HWND window;
    UINT id;
    WPARAM wParam;
    LPARAM lParam;
};

/// What a window procedure answers; nothing leaves the answer to the platform's own procedure.
using WindowAnswer = std::optional<LRESULT>;

/// The one procedure of the library's windows: a base of the class that handles their messages.
///
/// While a message is handled the library stays loaded, since the host may let go of everything in an event,
/// and no exception gets out: what an event could not do is undone work, no reason to take the host down.
class WindowProcedure {
  public:
    /// The description of a class of such windows, with the arrow as pointer and nothing else set.
    static WNDCLASSEXA windowClass(HINSTANCE module, const char* name, UINT style);

  protected:
    ~WindowProcedure() = default;

    /// From here on the window's messages come to this object; those of its creation go to the platform's own
    /// procedure.
    void listenTo(HWND window);
    /// Ends that. A window that the platform destroys ends it by itself.
    static void stopListeningTo(HWND window);
    /// Who listens to the window; null for nobody.
    static WindowProcedure* listenerOf(HWND window);

    /// An event may destroy the object: nothing touches it after that.
    virtual WindowAnswer handle(const WindowMessage& message) = 0;
    /// The platform has destroyed the window, and nobody listens to it any more. May destroy the object.
    virtual void windowDestroyed() = 0;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;
};

}  // namespace kavrelon
