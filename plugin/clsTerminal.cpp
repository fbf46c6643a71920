#include "plugin/clsTerminal.h"

#include <utility>

#include "support/RuntimeError.h"
#include "terminal/IniFile.h"
#include "terminal/Settings.h"

namespace kavrelon {

clsTerminal::clsTerminal(TermPlatform& platform, std::string version)
    : platform_(platform), version_(std::move(version)) {}

clsTerminal::~clsTerminal() {
    makeCurrent(nullptr);
    for (std::size_t index = 1; index < windows_.size(); ++index) unloadSlot(index);
    dropWindows();
}

void clsTerminal::dropWindows() noexcept {
    makeCurrent(nullptr);
    for (std::size_t index = 0; index < windows_.size(); ++index) {
        if (windows_[index]) windows_[index]->SetCallback(nullptr);
        unloadSlot(index);
    }
}

void clsTerminal::IClientMain_SetClientParent(std::shared_ptr<HostParent> oParent) {
    parent_ = std::move(oParent);
}

void clsTerminal::IClientMain_InitializeClass() {
    loggedOn_ = false;
    ConnectionProfile_ = parent()->ParentConnectionProfile();
    IniFile_ = parent()->ParentIniFile();
    dropWindows();
    topIndex_ = -1;
    NewTerminalWindow();
}

void clsTerminal::IClientMain_OnConnection() {
    functionKeys_.LoadFunctionKeys(platform_.profileFile(), IniFile_);
    // Showing a window sends messages, and the host may call in from one: the window must outlive the call.
    const std::shared_ptr<frmTerm> window = currentWindow().shared_from_this();
    window->setWindowState(WindowState::Maximised);
    window->DisplayTerminalWindows();
    window->TerminalOpen();
    window->setFocus();
}

void clsTerminal::IClientMain_OnLogin() noexcept {
    SetLogon(true);
}

void clsTerminal::IClientMain_OnLogOut() noexcept {
    SetLogon(false);
}

void clsTerminal::IClientMain_OnClose() {
    currentWindow().TerminalClose();
}

void clsTerminal::IClientMain_DestroyClass() noexcept {
    parent_.reset();
    makeCurrent(nullptr);
    for (std::size_t index = 0; index < windows_.size(); ++index) unloadSlot(index);
    topIndex_ = 0;
}

std::string clsTerminal::IClientMain_PlugInID() const {
    return "TERM";
}

std::string clsTerminal::IClientMain_PlugInDesc() const {
    return "Terminal Window";
}

std::string clsTerminal::IClientMain_PlugInVersion() const {
    return version_;
}

void clsTerminal::IClientReceive_ReceiveEnd() {
    platform_.processMessages();
}

void clsTerminal::WindowHasClosed() noexcept {
    if (topIndex_ != 0) return;
    carryOn([this] { parent()->ParentWindowClosed(); });
}

std::string clsTerminal::FuncKey(std::int16_t KeyNo) {
    return functionKeys_.FuncKey(KeyNo);
}

void clsTerminal::SendBreak() {
    parent()->ParentSendBreak();
}

void clsTerminal::SendTermData(const std::string& Value) {
    parent()->ParentSendData(Value);
}

void clsTerminal::SendCommand(const std::string& Value) {
    parent()->ParentSendCommand(Value);
}

void clsTerminal::NewTerminalWindow() {
    if (topIndex_ >= kUpperWindow) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    std::shared_ptr<frmTerm> window = frmTerm::load(platform_);
    window->ConnectionProfile(ConnectionProfile_);
    window->IniFile(IniFile_);
    window->SetCallback(this);
    ++topIndex_;
    const auto slot = static_cast<std::size_t>(topIndex_);
    windows_[slot] = window;
    makeCurrent(std::move(window));
}

void clsTerminal::SetLogon(bool bLogin) noexcept {
    carryOn([&] { currentWindow().Logon(bLogin); });
    loggedOn_ = bLogin;
    if (bLogin) carryOn([this] { parent()->ParentSendCommand("INIT"); });
}

void clsTerminal::SetFunctionKey(std::string_view sKey, std::string_view sValue, bool bSave) {
    const int key = FunctionKeys::numberFromName(sKey);
    if (key < 1 || key > FunctionKeys::kKeys) return;
    functionKeys_.set(key, sValue);
    if (bSave) {
        IniFile::WriteIni(platform_.profileFile(), IniFile_, settings::kMisc,
                          settings::kFuncKey + std::to_string(key), std::string(sValue));
    }
}

std::shared_ptr<HostParent> clsTerminal::parent() const {
    if (!parent_) raise(RuntimeErrorNumber::ObjectNotSet);
    return parent_;
}

void clsTerminal::makeCurrent(std::shared_ptr<frmTerm> window) {
    current_ = window.get();
    currentOwner_ = std::move(window);
}

void clsTerminal::unloadSlot(std::size_t index) noexcept {
    // The slot is emptied before the window tells anybody that it closes: who calls in then finds it gone.
    if (const std::shared_ptr<frmTerm> window = std::exchange(windows_[index], nullptr)) window->Unload();
}

}  // namespace kavrelon
