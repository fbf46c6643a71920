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

/// Headless windows, their activation, clipboard and bell. Settings come from the given profile files.
class HeadlessPlatform final : public TermPlatform {
  public:
    explicit HeadlessPlatform(ProfileFile& profiles);

    /// Called when the bell sounds, with hertz and milliseconds.
    std::function<void(int, int)> onBeep;
    /// Called with what is put on the clipboard.
    std::function<void(const std::string&)> onClipboard;
    std::string clipboard;
    /// Another program holds the clipboard and does not let go.
    bool clipboardHeld = false;
    /// The picture files there are, by path, and all paths that were looked for.
    std::map<std::string, HeadlessPicture> pictureFiles;
    std::vector<std::string> picturesLookedFor;
    HeadlessLauncher headlessLauncher;
    HeadlessPrinters headlessPrinters;
    /// What the next `processMessages` lets through: window events, in order.
    std::deque<std::function<void()>> pendingMessages;

    /// The help boxes' windows, and the mouse.
    HeadlessDesktop desktop;

    /// The window whose events go to `events`, null when it is gone.
    HeadlessWindow* windowOf(const TermWindowEvents& events) const;
    std::size_t openWindows() const { return windows_.size(); }

    std::unique_ptr<TermWindow> createWindow(std::weak_ptr<TermWindowEvents> events) override;
    std::unique_ptr<HelpWindow> createHelpWindow(std::weak_ptr<HelpWindowEvents> events) override;
    ProfileFile& profileFile() override { return profiles_; }
    Launcher& launcher() override { return headlessLauncher; }
    Printers& printers() override { return headlessPrinters; }
    std::shared_ptr<const Picture> loadPicture(const std::string& path) override;
    void processMessages() override;

  private:
    friend class HeadlessWindow;
    void activate(HeadlessWindow& window);
    void forget(const HeadlessWindow& window);
    const HeadlessWindow* windowOf(WindowId id) const;

    ProfileFile& profiles_;
    std::vector<HeadlessWindow*> windows_;
    HeadlessWindow* active_ = nullptr;
    WindowId lastId_ = 0;
};

}  // namespace kavrelon
