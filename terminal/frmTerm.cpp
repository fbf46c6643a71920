#include "terminal/frmTerm.h"

#include <utility>

#include "support/Conversions.h"
#include "support/RuntimeError.h"
#include "terminal/IniFile.h"
#include "terminal/PrinterType.h"
#include "terminal/ProfileFile.h"
#include "terminal/TitleBar.h"

namespace kavrelon {
namespace {

constexpr const char* kMiscSection = "Misc";
constexpr const char* kFontStyleKey = "FontStyle";
constexpr const char* kPrinterSection = "Printer";
constexpr const char* kSpoolTypeKey = "SpoolType";

constexpr std::int16_t kWideColumns = 132;
constexpr const char* kWideCaption = "132 Char per Line";
constexpr const char* kNarrowCaption = "80 Char per Line";

constexpr int kBellFrequency = 900;
constexpr int kBellMilliseconds = 250;

}  // namespace

frmTerm::frmTerm(TermPlatform& platform) : platform_(platform), screenWidthCaption_(kWideCaption) {}

frmTerm::~frmTerm() = default;

std::shared_ptr<frmTerm> frmTerm::load(TermPlatform& platform) {
    std::shared_ptr<frmTerm> form(new frmTerm(platform));
    form->window_ = platform.createWindow(form);
    form->screen_.attach(*form->window_);
    form->screen_.InitScreen();
    form->window_->enableTimer(TermTimer::Cursor, form->termActive_);
    return form;
}

void frmTerm::TerminalOpen() {
    if (!isLoaded()) return;
    screen_.InitScreen();
    sessionOpen_ = true;
    sessionClosed_ = false;
    TurnOnOffCursor(true);
}

void frmTerm::TerminalClose() noexcept {
    carryOn([this] { TurnOnOffCursor(false); });
    sessionClosed_ = true;
    sessionOpen_ = false;
    helpBoxes_.closeAll();
    closeDate_ = std::chrono::system_clock::now();
}

void frmTerm::Logon(bool bLogin) {
    if (bLogin) return;
    helpBoxes_.closeAll();
    menus_.ClearRemote();
}

void frmTerm::ShowTitleBar(bool bState) {
    if (!isLoaded()) return;
    window_->setStyleBits(titleBarStyle(window_->styleBits(), bState, window_->titleBarSettings()));
}

void frmTerm::MakeActive() {
    if (isLoaded()) window_->makeActive();
}

void frmTerm::DisplayTerminalWindows() {
    if (!isLoaded()) return;
    ReadINIFile();
    EraseScreen();
    window_->show();
}

void frmTerm::setFocus() {
    if (isLoaded()) window_->setFocus();
}

void frmTerm::setWindowState(WindowState state) {
    if (isLoaded()) window_->setState(state);
}

void frmTerm::TurnOnOffCursor(bool OnOff) {
    if (!isLoaded()) return;
    window_->enableTimer(TermTimer::Cursor, OnOff);
    if (OnOff) screen_.restoreCursor();
}

void frmTerm::Unload() noexcept {
    if (!isLoaded() || closing_) return;
    closing_ = true;
    carryOn([this] { TurnOnOffCursor(false); });
    carryOn([this] {
        if (callback_ != nullptr) callback_->WindowHasClosed();
    });
    callback_ = nullptr;
    helpBoxes_.closeAll();
    screen_.detach();
    window_.reset();
}

void frmTerm::ReadINIFile() noexcept {
    if (!isLoaded()) return;
    ProfileFile& profiles = platform_.profileFile();
    std::string value;
    carryOn([&] { IniFile::ReadIni(profiles, iniFile_, kMiscSection, kFontStyleKey, value, "1"); });
    carryOn([&] { selectFont(toInt16(value)); });
    carryOn([&] { IniFile::ReadIni(profiles, iniFile_, kPrinterSection, kSpoolTypeKey, value, "0"); });
    carryOn([&] { window_->checkPrinterTypeEntry(printerTypeEntry(value)); });
    Form_Resize();
}

void frmTerm::selectFont(std::int16_t index) {
    const int entry = fontEntryFor(index);
    screen_.setFont(fontMenuEntry(entry).font);
    // A settings file that cannot be written costs the user the memory of the choice, not the choice.
    carryOn([&] {
        IniFile::WriteIni(platform_.profileFile(), iniFile_, kMiscSection, kFontStyleKey,
                          std::to_string(index));
    });
    window_->checkFontEntry(entry);
    screen_.drawAnew();
}

void frmTerm::ShowHelpBox(std::int16_t Index, std::int16_t Top, std::int16_t Left, std::int16_t Width,
                          std::int16_t Height, std::string_view Text) {
    helpBoxes_.put(Index, {Top, Left, Width, Height, std::string(Text)});
}

void frmTerm::HideHelpBox(std::int16_t Index) {
    helpBoxes_.close(Index);
}

void frmTerm::Form_Paint() noexcept {
    carryOn([this] { screen_.paintAll(); });
}

void frmTerm::Form_Resize() noexcept {
    carryOn([this] {
        if (!isLoaded()) return;
        const WindowState state = window_->state();
        screen_.PaintOn(state != WindowState::Minimised);
        if (state == WindowState::Minimised) return;
        prevWindowState_ = state;
        screen_.windowResized();
    });
}

void frmTerm::Form_Activate() noexcept {
    termActive_ = true;
}

void frmTerm::Form_Deactivate() noexcept {
    termActive_ = false;
}

void frmTerm::Form_Close() noexcept {
    Unload();
}

void frmTerm::cursor_timer_Timer() noexcept {
    if (!termActive_) return;
    carryOn([this] { screen_.blinkCursor(); });
}

void frmTerm::tmrBeep_Timer() noexcept {
    carryOn([this] {
        if (!isLoaded()) return;
        window_->enableTimer(TermTimer::Beep, false);
        window_->beep(kBellFrequency, kBellMilliseconds);
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
        screen_.drawAnew();
    });
}

void frmTerm::mnuFileClearClipboard_Click() noexcept {
    carryOn([this] {
        if (isLoaded()) window_->clearClipboard();
    });
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
        IniFile::WriteIni(platform_.profileFile(), iniFile_, kPrinterSection, kSpoolTypeKey,
                          std::string(kSpoolTypes[static_cast<std::size_t>(index)]));
    });
}

}  // namespace kavrelon
