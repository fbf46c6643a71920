#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "fuzz/Input.h"
#include "headless/HeadlessHelpWindow.h"
#include "headless/HeadlessSession.h"

namespace kavrelon::fuzz {

/// A session that an input drives, step by step: each is a call of the host, something that the user or the
/// desktop does, or one of these in the middle of another. The laws of the plug-in are checked after each.
class PluginDriver : private HeadlessSession {
  public:
    /// What may happen in the middle of a call.
    enum Entry : unsigned {
        kFromParent = 1,    ///< in the host's parent object
        kFromUser = 2,      ///< while the user is asked or told something, or has a menu open
        kFromMessages = 4,  ///< while messages are let through
        kFromDesktop = 8,   ///< while windows are made, shown, activated or destroyed
        kFromStarts = 16,   ///< while a program is started or a page printed
    };
    /// Those that happen.
    static constexpr unsigned kEntries = kFromParent | kFromUser | kFromMessages | kFromDesktop | kFromStarts;

    explicit PluginDriver(FuzzInput input);
    void run();

  private:
    using Action = void (PluginDriver::*)();
    static const Action kActions[];

    void listen();
    void step();
    void letIn(Entry entry);
    void failIfDue();
    void tellParent(const std::string& member, const std::string* value);
    /// Makes calls of the host: as long as one runs, the host holds the plug-in.
    template <class Calls>
    void asHost(Calls calls) {
        struct Inside {
            explicit Inside(int& count) : members(count) { ++members; }
            ~Inside() { --members; }
            int& members;
        } const inside(members_);
        calls();
    }
    /// Calls public members of the current window.
    template <class Calls>
    void onWindow(Calls calls) {
        asHost([&] {
            const std::shared_ptr<frmTerm> window = form().shared_from_this();
            calls(*window);
        });
    }

    void check() const;
    void checkCopy(const std::string& text) const;
    void checkWindow(const frmTerm& window) const;

    // What the host does
    void receive();
    void sendSequence();
    void sendCommand();
    void callMain();
    void callBack();
    void changeSession();
    void useWindow();
    void useScreen();
    void usePainting();
    void showBox();

    // What the user and the desktop do; those of windows pick one of them.
    std::shared_ptr<TermWindowEvents> anyWindow(HeadlessWindow*& window);
    HeadlessHelpWindow* anyBox();
    void pressKey();
    void moveMouse();
    void chooseFromMenu();
    void changeWindow();
    void tickOrPaint();
    void useClipboard();
    void useBox();
    void useLabel();
    void clickLink();

    // What happens in the middle of what follows
    void planEntry();
    void planFailure();
    void planMessage();

    FuzzInput input_;
    int depth_ = 0;
    /// How many calls of the host are running.
    int members_ = 0;
    /// How many chances are let pass before something happens in the middle; 0 for never.
    int entryIn_ = 0;
    int failureIn_ = 0;
    int failure_ = 0;
    bool wrapsAlways_ = true;
    /// What the host has received is being carried out, and nothing else.
    bool receiving_ = false;
};

}  // namespace kavrelon::fuzz
