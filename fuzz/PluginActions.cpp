#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/PluginDriver.h"
#include "support/Bytes.h"
#include "support/Keys.h"
#include "terminal/MenuItems.h"

namespace kavrelon::fuzz {
namespace {

constexpr int kPixelsPerStep = 8;

Point point(FuzzInput& input) {
    const int x = input.number();
    return {x * kPixelsPerStep, input.number() * kPixelsPerStep};
}

/// One of the elements; null when there is none.
template <class Element>
Element* oneOf(FuzzInput& input, const std::vector<Element*>& elements) {
    return elements.empty() ? nullptr : elements[static_cast<std::size_t>(input.below(elements.size()))];
}

/// Makes the call that the input has chosen; the last one also stands for every number past it.
template <class... Calls>
void callOne(int chosen, Calls... calls) {
    int left = std::min(chosen, static_cast<int>(sizeof...(calls)) - 1);
    static_cast<void>(((left-- == 0 && (static_cast<void>(calls()), true)) || ...));
}

}  // namespace

// What the host does

void PluginDriver::receive() {
    const std::string stream = input_.text();
    asHost([&] {
        receiving_ = true;
        // A host does not go on with its stream inside of it.
        if (members_ == 1) {
            feed(bytesOf(stream));
        } else {
            type(stream);
        }
    });
}

void PluginDriver::sendSequence() {
    const int row = input_.below(46);
    const int lowerBound = input_.flag() ? 1 : input_.number();
    Texts fields(static_cast<std::size_t>(input_.below(8)));
    for (std::string& field : fields) field = input_.flag() ? input_.text() : std::to_string(input_.number());
    asHost([&] {
        receiving_ = true;
        sequence(row, fields, lowerBound);
    });
}

void PluginDriver::sendCommand() {
    constexpr std::string_view kWords[] = {"",         "image ", "imageclear ",
                                           "pasteok ", "CUTOK ", "IMAGE 1;1;9;9;"};
    const std::string command = std::string(kWords[input_.below(std::size(kWords))]) + input_.text();
    onWindow([&](frmTerm& window) {
        bool processed = false;
        window.ProcessCmd(command, processed);
    });
}

void PluginDriver::callMain() {
    const int member = input_.below(8);
    asHost([&] {
        callOne(
            member, [&] { terminal->IClientMain_OnLogin(); }, [&] { terminal->IClientMain_OnLogOut(); },
            [&] { terminal->IClientMain_OnClose(); }, [&] { terminal->IClientMain_OnConnection(); },
            [&] { terminal->IClientReceive_ReceiveEnd(); });
    });
}

void PluginDriver::callBack() {
    const int member = input_.below(5);
    const std::int16_t number = input_.number();
    asHost([&] {
        callOne(
            member, [&] { return terminal->FuncKey(number); }, [&] { terminal->SendBreak(); },
            [&] { terminal->SendTermData("text"); }, [&] { terminal->WindowHasClosed(); },
            [&] {
                static_cast<void>(terminal->IClientEscTree_EscTreeString(number));
                static_cast<void>(terminal->IClientEscTree_EscTreeDesc(number));
            });
    });
}

void PluginDriver::changeSession() {
    const int change = input_.below(6);
    // The host's last reference goes when none of its calls is running.
    if (change == 0 && members_ == 0) renew();
    asHost([&] {
        if (change == 1) return terminal->IClientMain_DestroyClass();
        terminal->IClientMain_SetClientParent(change == 2 ? nullptr : parent);
        if (change == 3) return connect();
        terminal->IClientMain_InitializeClass();
    });
}

void PluginDriver::useWindow() {
    const int member = input_.below(14);
    const bool on = input_.flag();
    onWindow([&](frmTerm& window) {
        callOne(
            member, [&] { window.ShowTitleBar(on); }, [&] { window.MakeActive(); },
            [&] { window.setFocus(); },
            [&] { window.setWindowState(static_cast<WindowState>(input_.below(3))); },
            [&] { window.ReadINIFile(); }, [&] { window.InputOn(on); }, [&] { window.CRtoCRLF(on); },
            [&] { window.PasteOk(on); }, [&] { window.CutOk(on); }, [&] { window.TurnOnOffCursor(on); },
            [&] { window.DisplayTerminalWindows(); },
            [&] { return on ? window.TerminalOpen() : window.TerminalClose(); },
            [&] { return on ? window.DataReceiveStart() : window.DataReceiveEnd(); },
            [&] { window.Unload(); });
    });
}

void PluginDriver::useScreen() {
    const int member = input_.below(7);
    const std::int16_t x = input_.number();
    std::int16_t y = input_.number();
    onWindow([&](frmTerm& window) {
        Screen& screen = window.screen();
        callOne(
            member, [&] { screen.ScreenSize(x, y); }, [&] { screen.SetCursor(x, y); },
            [&] { screen.term_setattr(input_.text()); },
            [&] {
                wrapsAlways_ = false;
                return screen.AutoWrap(x > 0);
            },
            [&] {
                return screen.GetScreenText(screen.nearestCell({x, y}), screen.nearestCell({y, x}));
            },
            [&] {
                return window.DisplayPicture(x, y, input_.number(), input_.number(), input_.number(),
                                             input_.flag() ? "a" : "b");
            },
            [&] { window.ClearPicture(x); });
    });
}

void PluginDriver::usePainting() {
    const int member = input_.below(6);
    const std::int16_t number = input_.number();
    const bool on = input_.flag();
    onWindow([&](frmTerm& window) {
        Screen& screen = window.screen();
        callOne(
            member, [&] { screen.PaintOn(on); }, [&] { screen.UseMemoryDC(on); },
            [&] { screen.AutoSize(on); }, [&] { screen.ScreenFontSize(number); },
            [&] {
                screen.RepaintScreen(on, number, input_.number(), input_.number(), input_.number(),
                                     input_.flag());
            },
            [&] { window.Redrawscreen(on); });
    });
}

void PluginDriver::showBox() {
    constexpr std::string_view kTexts[] = {
        "", "<html><a href=http://a>link</a>", "<html><a href='VB:f(1)'>call</a>",
        "<html><a href=#end>down</a>^^^^^^^^<a name=end>end</a><img src=a>"};
    const auto slot = static_cast<std::int16_t>(input_.byte() % 53 - 1);
    const std::string text = std::string(kTexts[input_.below(std::size(kTexts))]) + input_.text();
    const std::int16_t cells[] = {input_.number(), input_.number(), input_.number(), input_.number()};
    onWindow([&](frmTerm& window) {
        if (cells[0] == 0) return window.HideHelpBox(slot);
        window.ShowHelpBox(slot, cells[0], cells[1], cells[2], cells[3], text);
    });
}

// What the user and the desktop do

std::shared_ptr<TermWindowEvents> PluginDriver::anyWindow(HeadlessWindow*& window) {
    window = oneOf(input_, platform.desktop.terminalWindows);
    return window == nullptr ? nullptr : window->events();
}

void PluginDriver::pressKey() {
    HeadlessWindow* window = nullptr;
    const auto events = anyWindow(window);
    if (events == nullptr) return;
    const int code = input_.byte();
    const auto held = static_cast<std::int16_t>(input_.below(16));
    KeyStroke key = strokeOf(static_cast<std::int16_t>(code), held, (held & 8) != 0);
    events->Form_KeyDown(key);
    if (key.keyCode != 0) events->Form_KeyPress(static_cast<std::int16_t>(input_.byte()));
    if (input_.flag()) events->Form_KeyUp(static_cast<std::int16_t>(code));
}

void PluginDriver::moveMouse() {
    HeadlessWindow* window = nullptr;
    const auto events = anyWindow(window);
    if (events == nullptr) return;
    const int what = input_.below(5);
    const Point at = point(input_);
    callOne(
        what, [&] { events->Form_MouseDown(MouseButton::Left, at); },
        [&] { events->Form_MouseUp(MouseButton::Left, at); },
        [&] { events->Form_MouseUp(MouseButton::Right, at); },
        [&] { events->Form_MouseMove(what == 3, at); });
}

void PluginDriver::chooseFromMenu() {
    HeadlessWindow* window = nullptr;
    const auto events = anyWindow(window);
    if (events == nullptr) return;
    constexpr std::size_t kBarMenus = kBarCaptions.size();
    const int menu = input_.below(kBarMenus + 2);
    std::vector<MenuItem> items = mnuRightClick(true, true);
    if (menu < static_cast<int>(kBarMenus)) {
        items = lastingItems(static_cast<BarMenu>(menu));
        const auto more = passingItems(static_cast<BarMenu>(menu), *events);
        items.insert(items.end(), more.begin(), more.end());
    }
    // Also what the menu no longer holds, as it was changed while it was open.
    const auto past = static_cast<std::size_t>(input_.below(16) == 0 ? input_.byte() : 0);
    if (!items.empty())
        choose(items[static_cast<std::size_t>(input_.below(items.size()))].command + past, *events);
}

void PluginDriver::changeWindow() {
    HeadlessWindow* window = nullptr;
    const auto events = anyWindow(window);
    if (events == nullptr) return;
    callOne(
        input_.below(9),
        [&] {
            window->resize({input_.byte() * kPixelsPerStep, input_.byte() * kPixelsPerStep});
        },
        [&] { window->setState(static_cast<WindowState>(input_.below(3))); },
        [&] { window->moveTo(point(input_)); }, [&] { window->makeActive(); },
        [&] { events->Form_LostFocus(); }, [&] { events->Form_Deactivate(); },
        [&] { events->Form_Activate(); }, [&] { events->Form_Close(); },
        [&] {
            events->Form_GotFocus();
            static_cast<void>(events->leastInnerSize());
        });
}

void PluginDriver::tickOrPaint() {
    HeadlessWindow* window = nullptr;
    const auto events = anyWindow(window);
    if (events == nullptr) return;
    const int what = input_.below(3);
    if (what == 0) return events->Form_Paint();
    window->tick(what == 1 ? TermTimer::cursor_timer : TermTimer::tmrBeep);
}

void PluginDriver::useClipboard() {
    HeadlessDesktop& desktop = platform.desktop;
    desktop.answer = input_.flag();
    desktop.clipboardHeld = input_.below(8) == 0;
    desktop.clipboard = input_.text();
    if (desktop.answer) platform.headlessPrinters.installed.clear();
    platform.headlessPrinters.takesPages = !desktop.clipboardHeld;
    platform.headlessLauncher.shellResult = desktop.clipboardHeld ? 31 : 42;
}

HeadlessHelpWindow* PluginDriver::anyBox() {
    return oneOf(input_, platform.desktop.helpWindows);
}

void PluginDriver::useBox() {
    HeadlessHelpWindow* const box = anyBox();
    const auto events = box == nullptr ? nullptr : box->events();
    if (events == nullptr) return;
    callOne(
        input_.below(4), [&] { events->mnuRightClickClose_Click(); }, [&] { events->Form_Unload(); },
        [&] { events->dragEnded(); }, [&] { events->Form_Resize(); });
}

void PluginDriver::useLabel() {
    HeadlessHelpWindow* const box = anyBox();
    const auto label = box == nullptr ? nullptr : box->label();
    if (label == nullptr) return;
    const int what = input_.below(10);
    const auto button = static_cast<std::int16_t>(1 << input_.below(3));
    const Point at = point(input_);
    HeadlessDesktop& desktop = platform.desktop;
    desktop.cursor = at;
    callOne(
        what,
        [&] {
            desktop.heldButtons = button;
            return label->picViewPort_MouseDown(button, 0, at);
        },
        [&] { label->picViewPort_MouseMove(desktop.heldButtons, 0, at); },
        [&] {
            desktop.heldButtons = 0;
            return label->picViewPort_MouseUp(button, 0, at);
        },
        [&] { label->vscScroll_Change(at.y); }, [&] { label->hscScroll_Change(at.x); },
        [&] { label->picViewPort_MouseWheel(at.x / 16.0); },
        [&] { label->picViewPort_KeyDown(static_cast<std::int16_t>(input_.byte()), button); },
        [&] {
            label->picViewPort_KeyDown(keys::kTab, 0);
            label->picViewPort_KeyDown(keys::kEnter, 0);
        },
        [&] { return input_.flag() ? label->picViewPort_GotFocus() : label->picViewPort_LostFocus(); },
        [&] { label->tmrHyperlinkClick_Timer(); });
}

void PluginDriver::clickLink() {
    HeadlessHelpWindow* const box = anyBox();
    const auto label = box == nullptr ? nullptr : box->label();
    if (label == nullptr || label->document().mintLinks().empty()) return;
    const auto links = label->document().mintLinks();
    const auto index = static_cast<std::size_t>(links[static_cast<std::size_t>(input_.below(links.size()))]);
    const HTMLElement& link = label->document().mudtElements()[index];
    const Point at{link.lngLeft + 1 - label->hscScroll().Value, link.lngTop + 1 - label->vscScroll().Value};
    const std::int16_t button = input_.flag() ? buttons::kRight : buttons::kLeft;
    HeadlessDesktop& desktop = platform.desktop;
    desktop.heldButtons = button;
    label->picViewPort_MouseDown(button, 0, at);
    desktop.heldButtons = 0;
    label->picViewPort_MouseMove(0, 0, at);
    label->picViewPort_MouseUp(button, 0, at);
    label->tmrHyperlinkClick_Timer();
}

}  // namespace kavrelon::fuzz
