#pragma once

#include <windows.h>

#include <ocidl.h>

#include "samplehost/com/ControlSite.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// A control on a form, with everything that a container has to do for it: an example of hosting one without
/// a framework.
class HostedControl {
  public:
    /// Sets up the control, with the properties in `saved`, or as a new one when that is null. `form` is the
    /// window and `parent` the form's automation object, which may be null. The control is not active yet.
    /// Throws ComFailure.
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
    /// The control's window; null when it has none.
    HWND window() const;

    /// Activates the control in a rectangle, in pixels of the form. Throws ComFailure.
    void show(const RECT& place);
    /// Moves and sizes it.
    void move(const RECT& place);
    /// Gives it the keyboard. Throws ComFailure.
    void takeFocus();
    /// Offers a key message to the control, as every message loop must do first. True when it has been used.
    bool translate(MSG& message);
    /// Lets `sink` receive the control's events. Throws ComFailure.
    void connect(IDispatch& sink);
    /// Removes the control from the form and releases it. May be called from its events.
    void close();

  private:
    ComPtr<IUnknown> control_;
    ComPtr<ControlSite> site_;
    ComPtr<IConnectionPoint> events_;
    DWORD cookie_ = 0;
};

}  // namespace kavrelon
