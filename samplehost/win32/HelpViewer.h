#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "kavrelon.h"
#include "samplehost/HostOptions.h"
#include "samplehost/com/DispatchObject.h"
#include "samplehost/com/HostedControl.h"
#include "samplehost/com/PlugInClasses.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// A window that shows an HTML document in the library's label: a form with one control that fills it.
class HelpViewer {
  public:
    /// Reads the document and opens the window. Throws with a sentence for the user.
    explicit HelpViewer(const HostOptions& options);
    ~HelpViewer();
    HelpViewer(const HelpViewer&) = delete;
    HelpViewer& operator=(const HelpViewer&) = delete;

    /// Runs until the window is closed or the picture that the options ask for is taken. Throws with a
    /// sentence for the user.
    void run();

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

    void openWindow();
    void openLabel();
    void setDocument();
    void fitLabel();
    void takePicture();
    HRESULT onEvent(DISPID event, DISPPARAMS& arguments);
    void follow(const std::string& link);
    ComPtr<IDispatch> picture(const std::string& name) const;

    HostOptions options_;
    std::string document_;
    std::unique_ptr<PlugInClasses> classes_;
    HWND window_ = nullptr;
    ComPtr<DispatchObject> sink_;
    std::optional<HostedControl> control_;
    ComPtr<IHTMLLabel> label_;
    bool dragged_ = false;
    std::string failure_;
};

}  // namespace kavrelon
