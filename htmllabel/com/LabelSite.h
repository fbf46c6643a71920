#pragma once

#include <windows.h>

#include <oleidl.h>

#include <optional>
#include <string>
#include <vector>

#include "support/com/ComPtr.h"

namespace kavrelon {

/// The container: its ambient properties, and the form that the control is on.
class LabelSite {
  public:
    /// Takes a reference; null releases the container.
    void set(IOleClientSite* client);
    IOleClientSite* client() const noexcept { return client_.get(); }
    template <class Interface>
    ComPtr<Interface> query() const noexcept {
        return client_.query<Interface>();
    }

    /// Asks the container again for what it may have changed.
    void refreshAmbients() noexcept;
    /// Whether the container runs the control, rather than designing with it or having stopped it. The
    /// default is yes.
    bool runs() const noexcept { return runs_; }
    /// The control's name on its form, empty where it has none.
    std::wstring displayName() const;

    /// The form's "WindowState"; nothing when there is a form that has none, and 0 without a form.
    std::optional<int> formWindowState() const noexcept;
    /// Calls a public procedure of the form. Failures are dropped.
    void callForm(const std::string& procedure, const std::vector<std::string>& arguments) const noexcept;

  private:
    bool ambientFlag(DISPID id, bool otherwise) const noexcept;
    ComPtr<IDispatch> form() const noexcept;

    ComPtr<IOleClientSite> client_;
    bool runs_ = true;
};

}  // namespace kavrelon
