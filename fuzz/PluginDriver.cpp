#include "fuzz/PluginDriver.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "support/RuntimeError.h"

namespace kavrelon::fuzz {
namespace {

/// Deep enough for a call in a call in a call; deeper only costs time.
constexpr int kDeepest = 4;
constexpr int kMostSteps = 400;

constexpr const char* kFolder = "/nowhere/Pictures/";

}  // namespace

const PluginDriver::Action PluginDriver::kActions[] = {
    &PluginDriver::receive,      &PluginDriver::receive,        &PluginDriver::receive,
    &PluginDriver::sendSequence, &PluginDriver::sendSequence,   &PluginDriver::sendCommand,
    &PluginDriver::callMain,     &PluginDriver::callBack,       &PluginDriver::changeSession,
    &PluginDriver::useWindow,    &PluginDriver::useScreen,      &PluginDriver::usePainting,
    &PluginDriver::showBox,      &PluginDriver::pressKey,       &PluginDriver::moveMouse,
    &PluginDriver::moveMouse,    &PluginDriver::chooseFromMenu, &PluginDriver::changeWindow,
    &PluginDriver::tickOrPaint,  &PluginDriver::useClipboard,   &PluginDriver::useBox,
    &PluginDriver::useLabel,     &PluginDriver::clickLink,      &PluginDriver::planEntry,
    &PluginDriver::planFailure,  &PluginDriver::planMessage,
};

PluginDriver::PluginDriver(FuzzInput input) : input_(input) {
    platform.pictureFiles = {{kFolder + std::string("a"), {'a', true}},
                             {kFolder + std::string("b"), {'b', false}}};
    platform.headlessPrinters.installed = {"one", "two"};
    platform.headlessPrinters.defaultPrinter = "two";
    listen();
}

void PluginDriver::listen() {
    parent->onCall = [this](const char* member, const std::string* value) { tellParent(member, value); };
    parent->onAsk = [this] {
        letIn(kFromParent);
        failIfDue();
    };
    platform.onCreate = [this] { failIfDue(); };
    HeadlessDesktop& desktop = platform.desktop;
    desktop.onMessages = [this] { letIn(kFromDesktop); };
    desktop.onMessage = [this](const std::string&) { letIn(kFromUser); };
    desktop.onQuestion = [this](const std::string&) { letIn(kFromUser); };
    desktop.onClipboard = [this](const std::string& text) {
        checkCopy(text);
        letIn(kFromDesktop);
    };
    platform.headlessPrinters.whilePrinting = [this] { letIn(kFromStarts); };
    platform.headlessLauncher.onShellExecute = [this](const auto&, long) { letIn(kFromStarts); };
    platform.headlessLauncher.onStart = [this](const auto&, long) { letIn(kFromStarts); };
}

void PluginDriver::run() {
    asHost([this] {
        terminal->IClientMain_SetClientParent(parent);
        terminal->IClientMain_InitializeClass();
        // A small screen costs little; inputs that need a large one ask for it.
        std::int16_t lines = 6;
        screen().ScreenSize(24, lines);
        terminal->IClientMain_OnConnection();
    });
    for (int steps = 0; steps < kMostSteps && !input_.empty(); ++steps) {
        step();
        check();
    }
    entryIn_ = 0;
    failureIn_ = 0;
    if (platform.desktop.answer) asHost([this] { terminal->IClientMain_DestroyClass(); });
    renew();
    require(platform.openWindows() == 0, "no window outlives the plug-in");
    require(platform.desktop.helpWindows.empty(), "no help box outlives the plug-in");
}

/// One step. What fails is the caller's to know, and is dropped here.
void PluginDriver::step() {
    if (input_.empty() || depth_ == kDeepest) return;
    const bool receiving = std::exchange(receiving_, false);
    ++depth_;
    try {
        (this->*kActions[input_.below(std::size(kActions))])();
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch)
    }
    --depth_;
    receiving_ = receiving;
}

void PluginDriver::letIn(Entry entry) {
    if ((kEntries & entry) == 0 || entryIn_ == 0 || --entryIn_ > 0) return;
    step();
}

void PluginDriver::failIfDue() {
    if (failureIn_ == 0 || --failureIn_ > 0) return;
    switch (failure_ % 3) {
        case 0:
            raise(RuntimeErrorNumber::InvalidProcedureCall);
        case 1:
            throw std::bad_alloc();
        default:
            throw std::runtime_error("the host's own");
    }
}

void PluginDriver::tellParent(const std::string& member, const std::string* value) {
    if (receiving_) {
        require((member == "ParentSendCommand" && *value == "INIT") || member == "ParentWindowClosed",
                "what is received makes nobody send");
    }
    letIn(kFromParent);
    failIfDue();
}

void PluginDriver::planEntry() {
    entryIn_ = input_.below(16) + 1;
}

void PluginDriver::planFailure() {
    failureIn_ = input_.below(4) + 1;
    failure_ = input_.byte();
}

void PluginDriver::planMessage() {
    constexpr std::size_t kMost = 4;
    if (platform.pendingMessages.size() == kMost) return;
    platform.pendingMessages.emplace_back([this] {
        if ((kEntries & kFromMessages) != 0) step();
    });
}

void PluginDriver::check() const {
    std::size_t boxes = 0;
    for (const HeadlessWindow* const window : platform.desktop.terminalWindows) {
        const auto form = std::dynamic_pointer_cast<frmTerm>(window->events());
        require(form != nullptr && form->isLoaded(), "a window belongs to a form");
        checkWindow(*form);
        boxes += form->HelpBoxes().openSlots().size();
    }
    require(platform.desktop.helpWindows.size() == boxes, "a help box is in one slot");
    require(static_cast<int>(platform.openWindows()) <= terminal->topIndex() + 1,
            "every window is on the stack");
}

void PluginDriver::checkCopy(const std::string& text) const {
    std::size_t most = 0;
    for (const HeadlessWindow* const window : platform.desktop.terminalWindows) {
        const auto form = std::dynamic_pointer_cast<frmTerm>(window->events());
        if (form == nullptr) continue;
        constexpr int kLineBreak = 2;
        const Screen& screen = form->screen();
        const int bytes = (screen.CharsPerLine() + kLineBreak) * screen.LinesPerPage();
        most = std::max(most, static_cast<std::size_t>(bytes));
    }
    require(!text.empty() && text.size() <= most, "what is copied is on the screen");
}

void PluginDriver::checkWindow(const frmTerm& window) const {
    const Screen& screen = window.screen();
    const int columns = screen.CharsPerLine();
    const int lines = screen.LinesPerPage();
    require(columns >= 1 && columns <= kMaxScreen && lines >= 1 && lines <= kMaxScreen,
            "a screen has a size");
    // Without wrapping it goes on past the margin.
    const int margin = wrapsAlways_ ? columns : kMaxScreen;
    require(screen.CursorX() >= 0 && screen.CursorX() <= margin && screen.CursorY() >= 0 &&
                screen.CursorY() < lines,
            "the cursor stays on the screen");
    require(screen.pictures().all().size() <= Pictures::kMost, "there are not too many pictures");
    for (const int slot : window.HelpBoxes().openSlots()) {
        const frmHelp* const box = window.HelpBoxes().at(slot);
        require(box->isLoaded() && windowOf(platform.desktop, *box) != nullptr, "a box in a slot is open");
    }
}

}  // namespace kavrelon::fuzz
