#pragma once

#include <windows.h>

#include <ocidl.h>

#include "samplehost/com/ControlSite.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// A control on a form, and all that a container does for it: an example of hosting one without a framework.
class HostedControl {
  public:
    /// Takes the control in, with the properties that were saved for it, or as a new one without any. `form`
    /// is the window and `parent` the form's object for programs, which may be null. The control is not
    /// active yet. Throws ComFailure.
    HostedControl(ComPtr<IUnknown> control, HWND form, IDispatch* parent = nullptr,
                  IPropertyBag* saved = nullptr);
    /// Closes it.
    ~HostedControl();
    HostedControl(const HostedControl&) = delete;
    HostedControl& operator=(const HostedControl&) = delete;

    template <class Interface>
    ComPtr<Interface> query() const {
        return control_.query<Interface>();
    }
    ControlSite& site() { return *site_; }
    /// The control's window, null when it has none.
    HWND window() const;

    /// Activates the control at a place, in pixels of the form. Throws ComFailure.
    void show(const RECT& place);
    /// Moves and sizes it.
    void move(const RECT& place);
    /// Gives it the keyboard. Throws ComFailure.
    void takeFocus();
    /// Offers a key message to the control first, as every message loop must. True when it was used up.
    bool translate(MSG& message);
    /// Has an object of the form receive the control's events.
    void connect(IDispatch& sink);
    /// Takes the control off the form, and lets it go. May be called from its events.
    void close();

  private:
    ComPtr<IUnknown> control_;
    ComPtr<ControlSite> site_;
    ComPtr<IConnectionPoint> events_;
    DWORD cookie_ = 0;
};

}  // namespace kavrelon
