#pragma once

#include <windows.h>

#include <optional>

#include "support/win32/SharedWindowClass.h"

namespace kavrelon {

/// A message as a window procedure receives it.
struct WindowMessage {
    HWND window;
    UINT id;
    WPARAM wParam;
    LPARAM lParam;
};

/// A window procedure's answer; nothing means that of the platform's default procedure.
using WindowAnswer = std::optional<LRESULT>;

/// The one procedure of the library's windows: a base of each class that handles their messages.
///
/// While a message is handled the library stays loaded, since the host may release everything in an event,
/// and no exception gets out: a failed event is no reason to take the host down.
class WindowProcedure {
  public:
    /// Describes a class of such windows, which are wide ones: what is typed arrives in UTF-16. With the
    /// arrow as mouse pointer and no icon or background.
    static WindowClassDescription windowClass(HINSTANCE module, const char* name, UINT style);

  protected:
    ~WindowProcedure() = default;

    /// From here on the window's messages come to this object; those of its creation go to the platform's
    /// default procedure.
    void listenTo(HWND window);
    /// Ends that. It also ends when the platform destroys the window.
    static void stopListeningTo(HWND window);
    /// The object that listens to the window; null for none.
    static WindowProcedure* listenerOf(HWND window);

    /// Handles a message. An event may destroy the object, which must not be touched after that.
    virtual WindowAnswer handle(const WindowMessage& message) = 0;
    /// The platform has destroyed the window, and this object does not listen to it any more. May destroy the
    /// object.
    virtual void windowDestroyed() = 0;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;
};

}  // namespace kavrelon
