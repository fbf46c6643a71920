#include <algorithm>
#include <string_view>
#include <utility>

#include "support/Conversions.h"
#include "support/RuntimeError.h"
#include "support/WebAddress.h"
#include "terminal/CommandText.h"
#include "terminal/IniFile.h"
#include "terminal/PrinterType.h"
#include "terminal/Settings.h"
#include "terminal/frmTerm.h"
#include "terminal/modShellandWait.h"

namespace kavrelon {
namespace {

constexpr std::int16_t kWideColumns = 132;

/// The platform's number for a normal, active window.
constexpr int kShowNormal = 1;

/// Comes before the command, so that no command can have more to say after it.
constexpr const char* kMayStart =
    "The remote system has put this into the menu. May it be started on your computer?\n\n";

}  // namespace

void frmTerm::Form_Paint() noexcept {
    carryOn([this] { screen_.paintWindow(); });
}

void frmTerm::Form_Resize() noexcept {
    carryOn([this] {
        if (!isLoaded()) return;
        const WindowState state = window_->state();
        screen_.PaintOn(state != WindowState::Minimised);
        if (state == WindowState::Minimised) return;
        PrevWindowState_ = state;
        screen_.windowResized();
    });
}

Size frmTerm::leastInnerSize() noexcept {
    Size least;
    carryOn([&] { least = screen_.leastInnerSize(); });
    return least;
}

void frmTerm::Form_Move() noexcept {
    screen_.visibilityChanged();
    HelpBoxes_.parentChanged();
}

void frmTerm::Form_Activate() noexcept {
    TermActive_ = true;
}

void frmTerm::Form_Deactivate() noexcept {
    TermActive_ = false;
}

void frmTerm::Form_Close() noexcept {
    Unload();
}

void frmTerm::cursor_timer_Timer() noexcept {
    if (!TermActive_) return;
    carryOn([this] { screen_.blinkCursor(); });
    placeCaret();
    // A platform may bring the window to the front without telling it, which leaves its boxes below it.
    HelpBoxes_.parentChanged();
}

void frmTerm::tmrBeep_Timer() noexcept {
    carryOn([this] {
        if (!isLoaded()) return;
        window_->enableTimer(TermTimer::tmrBeep, false);
        window_->beep(Tone::Bell);
    });
}

void frmTerm::mnuFileRest_Click() noexcept {
    carryOn([this] { screen_.Redrawscreen(false); });
}

void frmTerm::mnuFileScreenWidth_Click() noexcept {
    carryOn([this] {
        if (!isLoaded()) return;
        const bool widen = screenWidthCaption_.find("132") != std::string::npos;
        screen_.CharsPerLine(widen ? kWideColumns : Screen::kDefaultColumns);
        screenWidthCaption_ = widen ? kNarrowCaption : kWideCaption;
        window_->setScreenWidthCaption(screenWidthCaption_);
        screen_.layOutAndRepaint();
    });
}

void frmTerm::mnuFileCRtoCRLF_Click() noexcept {
    carryOn([this] {
        if (!isLoaded()) return;
        CRtoCRLF(!CRtoCRLF());
        // When the settings file cannot be written, the choice still holds for this window.
        IniFile::WriteIni(platform_.profileFile(), IniFile_, settings::kMisc, settings::kCRtoCRLF,
                          CRtoCRLF() ? settings::kOn : settings::kOff);
    });
}

void frmTerm::mnuFileClearClipboard_Click() noexcept {
    mnuRightClickClear_Click();
}

void frmTerm::mnuFileExit_Click() noexcept {
    Unload();
}

void frmTerm::mnuFontStyle_Click(std::int16_t index) noexcept {
    carryOn([&] {
        if (isLoaded()) selectFont(index);
    });
}

void frmTerm::mnuPrinterType_Click(std::int16_t index) noexcept {
    carryOn([&] {
        if (!isLoaded() || index < 0 || static_cast<std::size_t>(index) >= kSpoolTypes.size()) return;
        window_->checkPrinterTypeEntry(index);
        IniFile::WriteIni(platform_.profileFile(), IniFile_, settings::kPrinter, settings::kSpoolType,
                          std::string(kSpoolTypes[static_cast<std::size_t>(index)]));
    });
}

void frmTerm::Form_KeyDown(KeyStroke& key) noexcept {
    if (!TermActive_) return;
    carryOn([&] { keyboard_.keyDown(key); });
}

void frmTerm::Form_KeyPress(std::int16_t KeyAscii) noexcept {
    carryOn([&] { keyboard_.keyPress(KeyAscii); });
}

void frmTerm::Form_KeyUp(std::int16_t keyCode) noexcept {
    if (TermActive_) keyboard_.keyUp(keyCode);
}

void frmTerm::Form_LostFocus() noexcept {
    keyboard_.loseFocus();
}

TermOwner& frmTerm::callback() const {
    if (callback_ == nullptr) raise(RuntimeErrorNumber::ObjectNotSet);
    return *callback_;
}

std::string frmTerm::functionKeyText(std::int16_t keyNumber) {
    return callback().FuncKey(keyNumber);
}

void frmTerm::sendBreak() {
    callback().SendBreak();
}

void frmTerm::sendText(const std::string& text) {
    callback().SendTermData(text);
}

void frmTerm::Form_MouseDown(MouseButton button, Point mouse) noexcept {
    if (button != MouseButton::Left) return;
    carryOn([&] { selection_.begin(mouse); });
}

void frmTerm::Form_MouseMove(bool leftHeld, Point mouse) noexcept {
    if (!leftHeld) return;
    carryOn([&] { selection_.extend(mouse); });
}

void frmTerm::Form_MouseUp(MouseButton button, Point) noexcept {
    if (button != MouseButton::Right) return;
    carryOn([this] {
        if (isLoaded()) window_->showContextMenu(CutOk_ && screen_.SelectionShown(), PasteOk_);
    });
}

std::string frmTerm::SelectionText() const {
    return screen_.SelectionShown() ? selection_.shownText() : std::string();
}

bool frmTerm::copySelection() {
    if (!isLoaded() || !CutOk_ || !screen_.SelectionShown()) return false;
    if (window_->setClipboardText(selection_.text())) {
        selection_.drop();
    } else {
        complain();
    }
    return true;
}

std::string frmTerm::textToPaste() {
    if (!isLoaded() || !PasteOk_) return {};
    return window_->clipboardText(PasteBytes_).value_or(std::string());
}

void frmTerm::complain() noexcept {
    carryOn([this] {
        if (isLoaded()) window_->beep(Tone::Complaint);
    });
}

void frmTerm::mnuRightClickCopy_Click() noexcept {
    carryOn([this] { copySelection(); });
}

void frmTerm::mnuRightClickPaste_Click() noexcept {
    carryOn([this] {
        if (!isLoaded() || !PasteOk_) return;
        const std::string text = textToPaste();
        if (text.empty()) {
            complain();
        } else {
            sendText(text);
        }
    });
}

void frmTerm::mnuRightClickClear_Click() noexcept {
    carryOn([this] {
        if (isLoaded() && !window_->clearClipboard()) complain();
    });
}

void frmTerm::mnKnowledgeBaseLink_Click(std::int16_t index) noexcept {
    carryOn([&] {
        if (!hasEntry(menus_.knowledgeBase(), index)) return;
        // A copy: while the user is asked, and while the program starts, the host may change the list.
        std::string command(menus_.knowledgeBase().target(static_cast<std::size_t>(index)));
        if (index == 0) command = setting(settings::kKnowledgeBase, command);
        startEntry(command, webAddressOf(command) == WebAddress::None);
    });
}

void frmTerm::mnuRemoteConnection_Click(std::int16_t index) noexcept {
    carryOn([&] {
        // The menu shows no item for the placeholder that the list begins with.
        const int entry = index < 0 ? index : index + 1;
        if (!hasEntry(menus_.remote(), entry)) return;
        const std::string command(menus_.remote().target(static_cast<std::size_t>(entry)));
        startEntry(command, setting(settings::kConfirmPrograms, "0") == "1");
    });
}

bool frmTerm::hasEntry(const EntryList& entries, int index) {
    if (index >= 0 && static_cast<std::size_t>(index) < entries.size()) return true;
    if (isLoaded()) window_->reportFailure("This entry no longer exists.");
    return false;
}

std::string frmTerm::setting(const char* key, const std::string& fallback) {
    std::string value;
    carryOn(
        [&] { IniFile::ReadIni(platform_.profileFile(), IniFile_, settings::kMisc, key, value, fallback); });
    return value.empty() ? fallback : value;
}

void frmTerm::startEntry(const std::string& command, bool ask) {
    if (!isLoaded()) return;
    if (ask && !modShellandWait::isRefused(command)) {
        if (!canBeShownWhole(command))
            return reportFailedStart(command, "It is too long to be shown as a whole.");
        // The answer may come after the window was closed.
        if (!window_->confirm(kMayStart + shownCommand(command)) || !isLoaded()) return;
    }
    reportStart(command, modShellandWait::start(platform_.launcher(), command, kShowNormal));
}

void frmTerm::reportStart(const std::string& command, long result) {
    if (modShellandWait::succeeded(result)) return;
    reportFailedStart(command, result == modShellandWait::kRefused
                                   ? "It is too long, or has a null character in it."
                                   : platform_.launcher().failureText(result));
}

void frmTerm::reportFailedStart(const std::string& command, const std::string& why) {
    if (isLoaded())
        window_->reportFailure("Unable to start Program: " + shownCommand(command) + "\nError: " + why);
}

void frmTerm::HelpBoxLink(const std::string& Href) noexcept {
    carryOn([&] {
        if (!isLoaded() || webAddressOf(Href) != WebAddress::Page) return;
        reportStart(Href, modShellandWait::openAddress(platform_.launcher(), Href, kShowNormal));
    });
}

std::shared_ptr<const Picture> frmTerm::HelpBoxPicture(const std::string& Source) noexcept {
    std::shared_ptr<const Picture> picture;
    carryOn([&] { picture = loadPicture(Source); });
    return picture;
}

PrinterMenu frmTerm::printerMenu() {
    std::string chosen;
    carryOn([&] {
        IniFile::ReadIni(platform_.profileFile(), IniFile_, settings::kPrinter, settings::kPrinterName,
                         chosen, {});
    });
    return {platform_.printers(), chosen};
}

void frmTerm::mnuPrinter_Click(std::int16_t index) noexcept {
    carryOn([&] {
        const PrinterMenu menu = printerMenu();
        if (index < 0 || static_cast<std::size_t>(index) >= menu.entries().size()) return;
        IniFile::WriteIni(platform_.profileFile(), IniFile_, settings::kPrinter, settings::kPrinterName,
                          menu.entries()[static_cast<std::size_t>(index)].printer);
    });
}

void frmTerm::mnuFilePrint_Click() noexcept {
    carryOn([this] {
        if (!isLoaded()) return;
        const std::string printer = printerMenu().printerInUse();
        if (printer.empty()) return window_->reportFailure("There is no printer to print on.");
        // Some printers ask the user something, and the window may be closed before the answer.
        const bool printed = platform_.printers().print(printer, screen_.lines(), screen_.CharsPerLine());
        if (!printed && isLoaded())
            window_->reportFailure("The screen could not be printed on " + printer + ".");
    });
}

}  // namespace kavrelon
