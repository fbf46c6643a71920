#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "headless/HeadlessHelpWindow.h"
#include "support/Keys.h"
#include "terminal/KeyStroke.h"
#include "tests/unit/FailingNew.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace rows;
using Texts = std::vector<std::string>;

/// A session on small screens, which cost little to draw again and again.
class LifeSession : public Session {
  public:
    using Step = void (*)(LifeSession&);

    void connect() {
        terminal->IClientMain_SetClientParent(parent);
        terminal->IClientMain_InitializeClass();
        size("8", "4");
        terminal->IClientMain_OnConnection();
    }
    void size(const char* columns, const char* lines) const { sequence(kSizeScreen, {columns, lines}); }
    /// The forms that have a window, in the order in which those were made.
    std::vector<std::shared_ptr<frmTerm>> forms() const {
        std::vector<std::shared_ptr<frmTerm>> all;
        for (const HeadlessWindow* each : platform.desktop.terminalWindows)
            all.push_back(std::dynamic_pointer_cast<frmTerm>(each->events()));
        return all;
    }
    void push() {
        sequence(kNewScreen);
        stack.resize(static_cast<std::size_t>(terminal->topIndex()));
        stack.push_back(window().events());
    }
    void showBox(int slot) const { sequence(kShowHelpBox, {std::to_string(slot), "0", "1", "9", "2", "a"}); }
    void closeCurrent() const { window().events()->Form_Close(); }
    std::shared_ptr<frmHelp> firstBox() const {
        return std::dynamic_pointer_cast<frmHelp>(platform.desktop.helpWindows.front()->events());
    }
    void key(std::int16_t code, std::int16_t shift) const {
        const std::shared_ptr<TermWindowEvents> events = window().events();
        for (const std::int16_t each : {keys::kCtrl, code}) {
            KeyStroke stroke{.keyCode = each, .Shift = shift};
            events->Form_KeyDown(stroke);
        }
    }

    std::vector<std::shared_ptr<TermWindowEvents>> stack;
};

// A window for which something is missing.

TEST(NewScreen, IsMadeWholeOrNotAtAll) {
    LifeSession session;
    session.connect();
    session.size("20", "30");
    const frmTerm& base = session.form();
    // The messages of windows are the platform's, which may have none to give.
    std::size_t n = 0;
    session.platform.desktop.onMessages = [&n] {
        if (n == 0) throw std::bad_alloc();
    };
    for (bool reached = true; reached; ++n) {
        const Outcome outcome = withFailure(n, [&] { session.sequence(kNewScreen); });
        const bool made = !outcome.raised;
        reached = n == 0 || outcome.failed;
        SCOPED_TRACE(n);
        ASSERT_TRUE(made || reached);
        ASSERT_EQ(session.platform.openWindows(), made ? 2U : 1U);
        const HeadlessWindow& window = session.window();
        ASSERT_TRUE(window.visible() && window.timerEnabled(TermTimer::cursor_timer));
        ASSERT_TRUE(session.form().sessionOpen() && session.form().TermActive());
        ASSERT_EQ(session.screen().CharsPerLine(), 20);
        ASSERT_EQ(&session.form() == &base, !made);
        if (made) session.sequence(kCloseScreen);
        session.type("\rstill here");
        ASSERT_EQ(session.shownRows()[0].substr(0, 11), "still here ");
    }
    EXPECT_GT(n, 50U);
    EXPECT_EQ(session.parent->calls, Texts{});
}

// The last window that closes.

TEST(LastWindow, TheHostHearsOnceThatNoneIsLeft) {
    // N and C push and pop a screen, a digit is the place of the window that the user closes, and I
    // initialises the class again. Each ! is a call of the host, due in the step before it.
    const char* const orders[] = {"0!",        "0!NC",   "0!N1C",     "N0C!",    "N01!",     "N10!C",
                                  "N01!C",     "N1C0!",  "NN0CC!",    "NN02C1!", "NN012!CC", "NN210!",
                                  "NN120!N3C", "N1N20!", "N0",        "N1C",     "NN12",     "0!I0!",
                                  "N0C!I0!",   "N0I1",   "N01!IN0C!N"};
    const std::pair<const char*, LifeSession::Step> hosts[] = {
        {"only listens", [](LifeSession&) {}},
        {"throws", [](LifeSession&) { throw std::runtime_error("no"); }},
        {"calls in", [](LifeSession& s) { errorOf([&] { s.sequence(kClearScreen); }); }},
        {"ends the class", [](LifeSession& s) { s.terminal->IClientMain_DestroyClass(); }},
    };
    for (const std::string order : orders) {
        for (const auto& [what, react] : hosts) {
            LifeSession session;
            const auto initialise = [&] {
                session.connect();
                session.stack = {session.window().events()};
            };
            initialise();
            session.parent->onCall = [&, reaction = react](const char*, const std::string*) {
                reaction(session);
            };
            std::size_t due = 0;
            for (std::size_t i = 0; i < order.size(); ++i) {
                if (order[i] == '!') continue;
                errorOf([&, step = order[i]] {
                    if (step == 'N') session.push();
                    if (step == 'C') session.sequence(kCloseScreen);
                    if (step == 'I') initialise();
                    const auto place = static_cast<std::size_t>(step - '0');
                    if (place < session.stack.size()) session.stack[place]->Form_Close();
                });
                due += order.compare(i + 1, 1, "!") == 0 ? 1U : 0U;
                EXPECT_EQ(session.parent->calls, Texts(due, "closed"))
                    << order.substr(0, i + 1) << " to a host that " << what;
            }
        }
    }
}

TEST(LastWindow, TheHostMayReleaseThePlugInWhenItHears) {
    for (const int screens : {0, 2}) {
        LifeSession session;
        session.connect();
        for (int i = 0; i < screens; ++i) session.push();
        session.parent->onCall = [&](const char*, const std::string*) {
            const auto closing = session.forms();
            if (screens > 0) session.terminal->IClientMain_DestroyClass();
            session.terminal.reset();
            // The host asks something, and the user types on.
            for (const auto& form : closing) form->Form_KeyPress('x');
        };
        for (const auto& form : session.forms()) form->Form_Close();
        EXPECT_EQ(session.parent->calls, Texts{"closed"});
        EXPECT_EQ(session.platform.openWindows(), 0U);
    }
}

// What a host may do in the messages of windows, and in the calls that it gets.

TEST(InTheMiddle, TheHostMayDoAnything) {
    const std::pair<const char*, LifeSession::Step> works[] = {
        {"erase all", [](LifeSession& s) { s.sequence(kClearScreen); }},
        {"erase to the end", [](LifeSession& s) { s.sequence(kClearEndOfScreen); }},
        {"replace a box", [](LifeSession& s) { s.showBox(1); }},
        {"show a box", [](LifeSession& s) { s.showBox(3); }},
        {"hide a box", [](LifeSession& s) { s.sequence(kHideHelpBox, {"1"}); }},
        {"log off", [](LifeSession& s) { s.sequence(kLogOff); }},
        {"new screen", [](LifeSession& s) { s.sequence(kNewScreen); }},
        {"close screen", [](LifeSession& s) { s.sequence(kCloseScreen); }},
        {"size", [](LifeSession& s) { s.size("132", "30"); }},
        {"initialise", [](LifeSession& s) { s.terminal->IClientMain_InitializeClass(); }},
        {"connect", [](LifeSession& s) { s.terminal->IClientMain_OnConnection(); }},
        {"close", [](LifeSession& s) { s.terminal->IClientMain_OnClose(); }},
        {"end", [](LifeSession& s) { s.terminal->IClientMain_DestroyClass(); }},
        {"release", [](LifeSession& s) { std::exchange(s.terminal, nullptr).reset(); }},
        {"title bar", [](LifeSession& s) { s.terminal->currentWindow()->ShowTitleBar(false); }},
        {"font size",
         [](LifeSession& s) {
             const auto form = s.terminal->currentWindow();
             form->screen().AutoSize(false);
             form->screen().ScreenFontSize(12);
         }},
        {"user closes", [](LifeSession& s) { s.closeCurrent(); }},
        {"user closes a box", [](LifeSession& s) { s.firstBox()->mnuRightClickClose_Click(); }},
        {"box menu", [](LifeSession& s) { s.firstBox()->MouseUp(buttons::kRight, 0, 0, 0); }},
        {"minimised", [](LifeSession& s) { s.window().setState(WindowState::Minimised); }},
        {"moved", [](LifeSession& s) { s.window().moveTo(Point{.x = 70}); }},
        {"font", [](LifeSession& s) { s.window().events()->mnuFontStyle_Click(3); }},
        {"failed start", [](LifeSession& s) { s.window().events()->mnuRemoteConnection_Click(7); }},
        {"paste", [](LifeSession& s) { s.window().events()->mnuRightClickPaste_Click(); }},
        {"type", [](LifeSession& s) { s.window().events()->Form_KeyPress('x'); }},
        {"break", [](LifeSession& s) { s.key(keys::kPause, shifts::kCtrl); }},
        {"Ctrl+V", [](LifeSession& s) { s.key('V', shifts::kCtrl); }},
        {"function key", [](LifeSession& s) { s.key(keys::kF1, 0); }},
        {"log on", [](LifeSession& s) { s.terminal->IClientMain_OnLogin(); }},
    };
    const std::pair<const char*, LifeSession::Step> hosts[] = {
        {"ends the class", [](LifeSession& s) { s.terminal->IClientMain_DestroyClass(); }},
        {"begins a new session",
         [](LifeSession& s) {
             s.terminal->IClientMain_DestroyClass();
             s.connect();
         }},
        {"initialises", [](LifeSession& s) { s.terminal->IClientMain_InitializeClass(); }},
        {"pops", [](LifeSession& s) { s.sequence(kCloseScreen); }},
        {"pushes", [](LifeSession& s) { s.sequence(kNewScreen); }},
        {"closes the window", [](LifeSession& s) { s.closeCurrent(); }},
        {"logs off", [](LifeSession& s) { s.sequence(kLogOff); }},
        {"replaces a box", [](LifeSession& s) { s.showBox(1); }},
    };
    int entered = 0;
    for (const auto& [work, run] : works) {
        for (const auto& [what, react] : hosts) {
            int calls = 1;
            for (int which = 1; which <= calls; ++which) {
                SCOPED_TRACE(std::string("a host ") + what + " in call " + std::to_string(which) + " of " +
                             work);
                LifeSession session;
                session.connect();
                session.sequence(kNewScreen);
                for (const int slot : {0, 1, 2}) session.showBox(slot);
                session.platform.desktop.clipboard = "pasted";
                calls = 0;
                const auto call = [&, reaction = react] {
                    if (++calls != which || session.terminal == nullptr) return;
                    ++entered;
                    errorOf([&] { reaction(session); });
                };
                session.platform.desktop.onMessages = call;
                session.parent->onCall = [&](const char*, const std::string*) { call(); };
                errorOf([&, step = run] { step(session); });
                session.platform.desktop.onMessages = [] {};
                session.parent->onCall = [](const char*, const std::string*) {};

                // Every box that shows is one that its window knows of, and closes.
                std::size_t boxes = 0;
                for (const auto& form : session.forms()) boxes += form->HelpBoxes().openSlots().size();
                EXPECT_EQ(session.platform.desktop.helpWindows.size(), boxes);
                if (session.terminal != nullptr) session.terminal->IClientMain_DestroyClass();
                EXPECT_EQ(session.platform.openWindows() + session.platform.desktop.helpWindows.size(), 0U);
            }
        }
    }
    EXPECT_GT(entered, 500);
}

}  // namespace
}  // namespace kavrelon
