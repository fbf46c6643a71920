#pragma once

#include <windows.h>

#include "terminal/TermWindow.h"
#include "terminal/win32/Win32Launcher.h"
#include "terminal/win32/Win32Printers.h"
#include "terminal/win32/Win32ProfileFile.h"
#include "terminal/win32/WindowClass.h"

namespace kavrelon {

/// Terminal windows and settings of the Windows desktop. Must outlive its windows; each window is used and
/// destroyed on the thread that created it.
class Win32Platform final : public TermPlatform {
  public:
    /// `module` is the one that this code is part of.
    explicit Win32Platform(HINSTANCE module);

    std::unique_ptr<TermWindow> createWindow(std::weak_ptr<TermWindowEvents> events) override;
    std::unique_ptr<HelpWindow> createHelpWindow(std::weak_ptr<HelpWindowEvents> events) override;
    ProfileFile& profileFile() override { return profileFile_; }
    Launcher& launcher() override { return launcher_; }
    Printers& printers() override { return printers_; }
    std::shared_ptr<const Picture> loadPicture(const std::string& path) override;
    /// Stops after a while even if messages keep coming, so that a flood of them cannot hold the host. A
    /// request to quit is left for the host's own message loop.
    void processMessages() override;

  private:
    WindowClass windowClass_;
    Win32ProfileFile profileFile_;
    Win32Launcher launcher_;
    Win32Printers printers_;
};

}  // namespace kavrelon
