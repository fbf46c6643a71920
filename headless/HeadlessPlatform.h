#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "headless/HeadlessDesktop.h"
#include "headless/HeadlessLauncher.h"
#include "headless/HeadlessPicture.h"
#include "headless/HeadlessPrinters.h"
#include "terminal/TermWindow.h"

namespace kavrelon {

class HeadlessWindow;

/// The platform in memory: headless windows on one desktop, a launcher and printers that only record.
/// Settings come from the given profile files.
class HeadlessPlatform final : public TermPlatform {
  public:
    explicit HeadlessPlatform(ProfileFile& profiles);

    HeadlessDesktop desktop;
    /// The picture files there are beside those on the disk, by path, and all paths that were looked for.
    std::map<std::string, HeadlessPicture> pictureFiles;
    std::vector<std::string> picturesLookedFor;
    HeadlessLauncher headlessLauncher;
    HeadlessPrinters headlessPrinters;
    /// Called before a window is made: throws where there is none to give.
    std::function<void()> onCreate = [] {};
    /// What the next `processMessages` lets through: window events, in order.
    std::deque<std::function<void()>> pendingMessages;

    /// The window whose events go to `events`, null when it is gone.
    HeadlessWindow* windowOf(const TermWindowEvents& events) const;
    std::size_t openWindows() const { return desktop.terminalWindows.size(); }

    std::unique_ptr<TermWindow> createWindow(std::weak_ptr<TermWindowEvents> events) override;
    std::unique_ptr<HelpWindow> createHelpWindow(std::weak_ptr<HelpWindowEvents> events) override;
    ProfileFile& profileFile() override { return profiles_; }
    Launcher& launcher() override { return headlessLauncher; }
    Printers& printers() override { return headlessPrinters; }
    std::shared_ptr<const Picture> loadPicture(const std::string& path) override;
    void processMessages() override;

  private:
    const HeadlessWindow* windowOf(WindowId id) const;

    ProfileFile& profiles_;
};

}  // namespace kavrelon
