#include "plugin/clsTerminal.h"

#include <algorithm>
#include <utility>

#include "support/RuntimeError.h"
#include "terminal/IniFile.h"
#include "terminal/Settings.h"

namespace kavrelon {

clsTerminal::clsTerminal(TermPlatform& platform, std::string version)
    : platform_(platform), version_(std::move(version)) {}

clsTerminal::~clsTerminal() {
    parent_.reset();
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
    const unsigned session = ++session_;
    dropWindows();
    // Somebody who initialised the class in the messages of the closing windows has the last word.
    if (session != session_) return;
    toldClosed_ = false;
    topIndex_ = -1;
    NewTerminalWindow();
}

void clsTerminal::IClientMain_OnConnection() {
    functionKeys_.LoadFunctionKeys(platform_.profileFile(), IniFile_);
    const std::shared_ptr<frmTerm> window = currentWindow();
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
    currentWindow()->TerminalClose();
}

void clsTerminal::IClientMain_DestroyClass() noexcept {
    const unsigned session = ++session_;
    parent_.reset();
    makeCurrent(nullptr);
    for (std::size_t index = 0; index < windows_.size() && session == session_; ++index) unloadSlot(index);
    if (session == session_) topIndex_ = 0;
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
    if (current_ != nullptr) current_->placeCaret();
    platform_.processMessages();
}

void clsTerminal::WindowHasClosed() noexcept {
    // Closing the first window ends the session, as far as the host knows. When it was closed below others,
    // that is due once the last one closes or a sequence takes it away.
    const bool lastOfSeveral = topIndex_ > 0 && !toldClosed_ && !anyWindowLeft();
    if (topIndex_ != 0 && !lastOfSeveral) return;
    toldClosed_ = true;
    carryOn([this] { parent()->ParentWindowClosed(); });
}

bool clsTerminal::anyWindowLeft() const noexcept {
    return std::ranges::any_of(windows_, [](const auto& window) { return window && !window->isClosing(); });
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

std::size_t clsTerminal::nextSlot() const {
    if (topIndex_ >= kUpperWindow) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    const int next = topIndex_ + 1;
    return static_cast<std::size_t>(next);
}

std::shared_ptr<frmTerm> clsTerminal::NewTerminalWindow() {
    static_cast<void>(nextSlot());
    const unsigned session = session_;
    std::shared_ptr<frmTerm> window = frmTerm::load(platform_);
    window->ConnectionProfile(ConnectionProfile_);
    window->IniFile(IniFile_);
    // What failed so far has left no trace. Creating the window has sent messages.
    if (session != session_) return nullptr;
    const std::size_t slot = nextSlot();
    window->SetCallback(this);
    windows_[slot] = window;
    ++topIndex_;
    makeCurrent(window);
    return window;
}

void clsTerminal::SetLogon(bool bLogin) noexcept {
    carryOn([&] { currentWindow()->Logon(bLogin); });
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
    const std::shared_ptr<frmTerm> window = std::exchange(windows_[index], nullptr);
    if (window == nullptr) return;
    window->Unload();
    // One that was closing already has not let go of this object yet.
    window->SetCallback(nullptr);
}

std::shared_ptr<frmTerm> clsTerminal::popWindow() {
    const unsigned session = session_;
    const int top = topIndex_;
    makeCurrent(nullptr);
    unloadSlot(static_cast<std::size_t>(top));
    if (session != session_ || topIndex_ != top) return nullptr;
    topIndex_ = top - 1;
    makeCurrent(windows_[static_cast<std::size_t>(topIndex_)]);
    return currentOwner_;
}

}  // namespace kavrelon
