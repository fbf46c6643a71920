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
        switch (member) {
            case 0:
                return terminal->IClientMain_OnLogin();
            case 1:
                return terminal->IClientMain_OnLogOut();
            case 2:
                return terminal->IClientMain_OnClose();
            case 3:
                return terminal->IClientMain_OnConnection();
            default:
                return terminal->IClientReceive_ReceiveEnd();
        }
    });
}

void PluginDriver::callBack() {
    const int member = input_.below(5);
    const std::int16_t number = input_.number();
    asHost([&] {
        switch (member) {
            case 0:
                static_cast<void>(terminal->FuncKey(number));
                return;
            case 1:
                return terminal->SendBreak();
            case 2:
                return terminal->SendTermData("text");
            case 3:
                return terminal->WindowHasClosed();
            default:
                static_cast<void>(terminal->IClientEscTree_EscTreeString(number));
                static_cast<void>(terminal->IClientEscTree_EscTreeDesc(number));
        }
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
        switch (member) {
            case 0:
                return window.ShowTitleBar(on);
            case 1:
                return window.MakeActive();
            case 2:
                return window.setFocus();
            case 3:
                return window.setWindowState(static_cast<WindowState>(input_.below(3)));
            case 4:
                return window.ReadINIFile();
            case 5:
                return window.InputOn(on);
            case 6:
                return window.CRtoCRLF(on);
            case 7:
                return window.PasteOk(on);
            case 8:
                return window.CutOk(on);
            case 9:
                return window.TurnOnOffCursor(on);
            case 10:
                return window.DisplayTerminalWindows();
            case 11:
                return on ? window.TerminalOpen() : window.TerminalClose();
            case 12:
                return on ? window.DataReceiveStart() : window.DataReceiveEnd();
            default:
                return window.Unload();
        }
    });
}

void PluginDriver::useScreen() {
    const int member = input_.below(7);
    const std::int16_t x = input_.number();
    std::int16_t y = input_.number();
    onWindow([&](frmTerm& window) {
        Screen& screen = window.screen();
        switch (member) {
            case 0:
                return screen.ScreenSize(x, y);
            case 1:
                return screen.SetCursor(x, y);
            case 2:
                return screen.term_setattr(input_.text());
            case 3:
                wrapsAlways_ = false;
                return screen.AutoWrap(x > 0);
            case 4:
                static_cast<void>(
                    screen.GetScreenText(screen.nearestCell({x, y}), screen.nearestCell({y, x})));
                return;
            case 5:
                return window.DisplayPicture(x, y, input_.number(), input_.number(), input_.number(),
                                             input_.flag() ? "a" : "b");
            default:
                return window.ClearPicture(x);
        }
    });
}

void PluginDriver::usePainting() {
    const int member = input_.below(6);
    const std::int16_t number = input_.number();
    const bool on = input_.flag();
    onWindow([&](frmTerm& window) {
        Screen& screen = window.screen();
        switch (member) {
            case 0:
                return screen.PaintOn(on);
            case 1:
                return screen.UseMemoryDC(on);
            case 2:
                return screen.AutoSize(on);
            case 3:
                return screen.ScreenFontSize(number);
            case 4:
                return screen.RepaintScreen(on, number, input_.number(), input_.number(), input_.number(),
                                            input_.flag());
            default:
                return window.Redrawscreen(on);
        }
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
    switch (what) {
        case 0:
            return events->Form_MouseDown(MouseButton::Left, at);
        case 1:
            return events->Form_MouseUp(MouseButton::Left, at);
        case 2:
            return events->Form_MouseUp(MouseButton::Right, at);
        default:
            return events->Form_MouseMove(what == 3, at);
    }
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
    switch (input_.below(8)) {
        case 0:
            return window->resize({input_.byte() * kPixelsPerStep, input_.byte() * kPixelsPerStep});
        case 1:
            return window->setState(static_cast<WindowState>(input_.below(3)));
        case 2:
            return window->moveTo(point(input_));
        case 3:
            return window->makeActive();
        case 4:
            return events->Form_LostFocus();
        case 5:
            return events->Form_Deactivate();
        case 6:
            return events->Form_Activate();
        default:
            return events->Form_Close();
    }
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
    switch (input_.below(4)) {
        case 0:
            return events->mnuRightClickClose_Click();
        case 1:
            return events->Form_Unload();
        case 2:
            return events->dragEnded();
        default:
            return events->Form_Resize();
    }
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
    switch (what) {
        case 0:
            desktop.heldButtons = button;
            return label->picViewPort_MouseDown(button, 0, at);
        case 1:
            return label->picViewPort_MouseMove(desktop.heldButtons, 0, at);
        case 2:
            desktop.heldButtons = 0;
            return label->picViewPort_MouseUp(button, 0, at);
        case 3:
            return label->vscScroll_Change(at.y);
        case 4:
            return label->hscScroll_Change(at.x);
        case 5:
            label->picViewPort_MouseWheel(at.x / 16.0);
            return;
        case 6:
            label->picViewPort_KeyDown(static_cast<std::int16_t>(input_.byte()), button);
            return;
        case 7:
            label->picViewPort_KeyDown(keys::kTab, 0);
            label->picViewPort_KeyDown(keys::kEnter, 0);
            return;
        case 8:
            return input_.flag() ? label->picViewPort_GotFocus() : label->picViewPort_LostFocus();
        default:
            return label->tmrHyperlinkClick_Timer();
    }
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
