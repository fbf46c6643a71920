#include "terminal/frmTerm.h"

#include <utility>

#include "support/Conversions.h"
#include "support/RuntimeError.h"
#include "terminal/FontMenu.h"
#include "terminal/HostCommand.h"
#include "terminal/IniFile.h"
#include "terminal/PrinterType.h"
#include "terminal/ProfileFile.h"
#include "terminal/Settings.h"
#include "terminal/TitleBar.h"

namespace kavrelon {

frmTerm::frmTerm(TermPlatform& platform)
    : platform_(platform), platformKept_(platform.weak_from_this().lock()), pictureFolder_(platform) {}

frmTerm::~frmTerm() = default;

std::shared_ptr<frmTerm> frmTerm::load(TermPlatform& platform) {
    std::shared_ptr<frmTerm> form(new frmTerm(platform));
    form->window_ = platform.createWindow(form);
    form->loaded_ = true;
    form->Form_Load();
    return form;
}

void frmTerm::Form_Load() {
    screen_.attach(*window_);
    screen_.InitScreen();
    cursorBlinks_ = TermActive_;
    window_->enableTimer(TermTimer::cursor_timer, cursorBlinks_);
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
    HelpBoxes_.closeAll();
    carryOn([this] { screen_.clearPictures(); });
    CloseDate_ = std::chrono::system_clock::now();
}

void frmTerm::Logon(bool bLogin) {
    if (bLogin) return;
    HelpBoxes_.closeAll();
    screen_.clearPictures();
    ClearRemote();
}

void frmTerm::AddRemote(std::string_view CommandLine, std::string_view Desc) {
    menus_.AddRemote(CommandLine, Desc);
    if (isLoaded()) window_->enableRemoteMenu(menus_.mnuRemoteEnabled());
}

void frmTerm::ClearRemote() {
    menus_.ClearRemote();
    if (isLoaded()) window_->enableRemoteMenu(menus_.mnuRemoteEnabled());
}

void frmTerm::ProcessCmd(std::string_view sCmd, bool& bProcessed) noexcept {
    if (!isLoaded()) return;
    carryOn([&] {
        const HostCommand command(sCmd);
        if (command.word == "IMAGE") {
            bProcessed = true;
            const ImageCommand image(command.argument);
            DisplayPicture(image.number, image.topX, image.topY, image.bottomX, image.bottomY, image.name);
        } else if (command.word == "IMAGECLEAR") {
            bProcessed = true;
            ClearPicture(toInt16(command.argument));
        } else if (command.word == "PASTEOK") {
            PasteOk_ = command.argument == "1";
        } else if (command.word == "CUTOK") {
            CutOk_ = command.argument == "1";
        }
    });
}

void frmTerm::DisplayPicture(std::int16_t PicNum, std::int16_t TopX, std::int16_t TopY, std::int16_t BotX,
                             std::int16_t BotY, std::string_view PicName) {
    if (!isLoaded()) return;
    // Before its file is read: a picture that nothing shows any more is read again, and may have changed.
    screen_.ClearPicture(PicNum);
    screen_.DisplayPicture(PicNum, CellRect::between(TopX, TopY, BotX, BotY), loadPicture(PicName));
}

void frmTerm::ShowTitleBar(bool bState) {
    if (!isLoaded()) return;
    window_->setStyleBits(titleBarStyle(window_->styleBits(), bState, window_->titleBarSettings()));
}

void frmTerm::CRtoCRLF(bool value) {
    keyboard_.CRtoCRLF(value);
    if (isLoaded()) window_->checkCRtoCRLF(value);
}

void frmTerm::Caption(const std::string& value) {
    if (isLoaded()) window_->setCaption(value);
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
    cursorBlinks_ = OnOff;
    window_->enableTimer(TermTimer::cursor_timer, OnOff);
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
    // From here on nobody finds a window: closing it and its boxes sends messages.
    loaded_ = false;
    HelpBoxes_.closeAll();
    screen_.detach();
    window_->close();
}

void frmTerm::ReadINIFile() noexcept {
    if (!isLoaded()) return;
    ProfileFile& profiles = platform_.profileFile();
    std::string value;
    carryOn([&] { IniFile::ReadIni(profiles, IniFile_, settings::kMisc, settings::kFontStyle, value, "1"); });
    // A value that was deleted is there, but empty; others may have written anything.
    std::int16_t font = kFirstFontEntry;
    carryOn([&] { font = toInt16(value); });
    carryOn([&] { selectFont(font); });
    carryOn(
        [&] { IniFile::ReadIni(profiles, IniFile_, settings::kPrinter, settings::kSpoolType, value, "0"); });
    carryOn([&] { window_->checkPrinterTypeEntry(printerTypeEntry(value)); });
    carryOn([&] {
        CRtoCRLF(setting(settings::kCRtoCRLF, CRtoCRLF() ? settings::kOn : settings::kOff) == settings::kOn);
    });
    Form_Resize();
}

void frmTerm::selectFont(std::int16_t index) {
    const int entry = fontEntryFor(index);
    screen_.setFont(fontMenuEntry(entry).font);
    // When the settings file cannot be written, the choice still holds for this window.
    carryOn([&] {
        IniFile::WriteIni(platform_.profileFile(), IniFile_, settings::kMisc, settings::kFontStyle,
                          std::to_string(index));
    });
    window_->checkFontEntry(entry);
    screen_.layOutAndRepaint();
}

void frmTerm::ShowHelpBox(std::int16_t Index, std::int16_t Top, std::int16_t Left, std::int16_t Width,
                          std::int16_t Height, std::string_view Text) {
    HelpBoxes::check(Index);
    if (!isLoaded()) return;
    const std::shared_ptr<HelpBoxOwner> owner(shared_from_this(), this);
    const std::shared_ptr<frmHelp> box = frmHelp::load(platform_, owner);
    const HelpGrid grid = helpGrid();
    box->SetBase(grid.XOffset, grid.YOffset, grid.CharWidth, grid.CharHeight);
    box->SetBoxCord(Top, Left, Width, Height);
    box->FontInfo(grid.fontName, grid.fontSize);
    box->HelpInfo(Text);
    // A box that could not be made has left the one that it was to replace. This one goes by itself when the
    // window has been closed meanwhile.
    if (!isLoaded()) return;
    HelpBoxes_.put(Index, box);
    box->ShowBox(window_->id(), window_->id());
}

HelpGrid frmTerm::helpGrid() const {
    if (!isLoaded()) return {};
    const Point inner = window_->innerCorner();
    const GridLayout& grid = screen_.grid();
    return {narrowToInt16(inner.x + grid.left()),
            narrowToInt16(inner.y + grid.top()),
            grid.cellWidth(),
            grid.cellHeight(),
            window_->fontName(),
            screen_.ScreenFontSize()};
}

void frmTerm::HideHelpBox(std::int16_t Index) {
    HelpBoxes_.close(Index);
}

}  // namespace kavrelon
