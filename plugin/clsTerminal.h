#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "plugin/EscapeArguments.h"
#include "plugin/EscapeTable.h"
#include "plugin/FunctionKeys.h"
#include "plugin/HostParent.h"
#include "terminal/TermOwner.h"
#include "terminal/frmTerm.h"

namespace kavrelon {

/// The plug-in: the one object that a host creates. It keeps the stack of terminal windows, gives the host
/// the escape table, and does what the host received.
///
/// Order of calls: `IClientMain_SetClientParent`, `IClientMain_InitializeClass`, `IClientMain_OnConnection`,
/// then data and sequences, `IClientMain_OnClose`, `IClientMain_DestroyClass`. Members that need a window
/// raise ObjectNotSet before initialisation and after destruction. All text is single-byte. Everything runs
/// on the thread that created the object. Received bytes and sequences never make the plug-in send anything
/// but the "INIT" command after a logon.
class clsTerminal final : public TermOwner {
  public:
    /// The highest index on the stack of windows.
    static constexpr int kUpperWindow = 100;

    /// `version` is what `IClientMain_PlugInVersion` reports. The platform must outlive this object.
    clsTerminal(TermPlatform& platform, std::string version);
    /// Unloads the pushed windows, and drops the base window without telling the host that it closed.
    ~clsTerminal() override;
    clsTerminal(const clsTerminal&) = delete;
    clsTerminal& operator=(const clsTerminal&) = delete;

    /// Takes the host's parent object; null for none.
    void IClientMain_SetClientParent(std::shared_ptr<HostParent> oParent);
    /// Reads profile name and settings path from the parent and creates window 0, hidden.
    void IClientMain_InitializeClass();
    /// Loads the function keys, and shows and opens the current window, maximised.
    void IClientMain_OnConnection();
    /// The user has logged on: the current window shows it, the windows pushed later do, and the host gets
    /// the command "INIT". Errors are dropped, also at the log-off.
    void IClientMain_OnLogin() noexcept;
    void IClientMain_OnLogOut() noexcept;
    /// Ends the session of the current window, which stays.
    void IClientMain_OnClose();
    /// Unloads all windows and lets go of the parent object. Errors are dropped.
    void IClientMain_DestroyClass() noexcept;
    std::string IClientMain_PlugInID() const;
    std::string IClientMain_PlugInDesc() const;
    std::string IClientMain_PlugInVersion() const;

    /// Writes one received byte to the current window. Nothing that a byte does sends messages, so nobody can
    /// close the window meanwhile.
    void IClientReceive_ReceiveData(std::uint8_t Ch) {
        if (current_ == nullptr) raise(RuntimeErrorNumber::ObjectNotSet);
        current_->WriteTerm(Ch);
    }
    /// Lets the user interface process its pending messages.
    void IClientReceive_ReceiveEnd();

    std::int16_t IClientEscTree_EscTreeCount() const;
    /// Pattern and description of a row; raise SubscriptOutOfRange outside 0 to 100.
    std::string IClientEscTree_EscTreeString(std::int16_t Index) const;
    std::string IClientEscTree_EscTreeDesc(std::int16_t Index) const;
    /// Does what a row stands for, with the fields of its sequence; ignored actions do nothing, and rows that
    /// are not in use carry action code 0. Raises SubscriptOutOfRange outside 0 to 100 and for a field that
    /// is missing, TypeMismatch and Overflow for one that is no number of 16 bits, InvalidProcedureCall for a
    /// rendition outside 0 to 255. A sequence that fails keeps what it did before.
    void IClientEscTree_EscTreeProcess(std::int16_t Index, const EscapeArguments& args);

    void WindowHasClosed() noexcept override;
    std::string FuncKey(std::int16_t KeyNo) override;
    void SendBreak() override;
    void SendTermData(const std::string& Value) override;
    void SendCommand(const std::string& Value) override;

    /// The window on top of the stack; raises ObjectNotSet when there is none. Hold on to it for as long as
    /// it is used: most of what a window does sends messages, in which the host may end everything.
    std::shared_ptr<frmTerm> currentWindow() const {
        if (current_ == nullptr) raise(RuntimeErrorNumber::ObjectNotSet);
        return currentOwner_;
    }
    /// Index of the current window on the stack, -1 before the first.
    int topIndex() const { return topIndex_; }

  private:
    /// Null when the session has ended while the window was made.
    std::shared_ptr<frmTerm> NewTerminalWindow();
    void SetLogon(bool bLogin) noexcept;
    void SetFunctionKey(std::string_view sKey, std::string_view sValue, bool bSave);

    void process(ScreenAction action, const EscapeArguments& args);
    void process(EraseAction action, const EscapeArguments& args);
    void process(WindowAction action, const EscapeArguments& args);
    void process(PluginAction action, const EscapeArguments& args);
    void process(IgnoredAction, const EscapeArguments&) {}
    void sizeScreen(const EscapeArguments& args);
    void newScreen();
    void open(frmTerm& window, WindowState state);
    void closeScreen();

    /// The host parent, kept alive for the call; raises ObjectNotSet when there is none.
    std::shared_ptr<HostParent> parent() const;
    void makeCurrent(std::shared_ptr<frmTerm> window);
    /// The index of the next window on the stack; raises SubscriptOutOfRange when that is full.
    std::size_t nextSlot() const;
    void unloadSlot(std::size_t index) noexcept;
    /// Unloads the window on top and makes the one below it current. Null when the host has ended the session
    /// or changed the stack meanwhile.
    std::shared_ptr<frmTerm> popWindow();
    bool anyWindowLeft() const noexcept;
    /// Unloads every window without telling anybody: a host that lets go of them is not waiting to hear it.
    void dropWindows() noexcept;

    TermPlatform& platform_;
    std::string version_;
    std::shared_ptr<HostParent> parent_;
    std::string ConnectionProfile_;
    std::string IniFile_;
    FunctionKeys functionKeys_;
    std::array<std::shared_ptr<frmTerm>, kUpperWindow + 1> windows_;
    std::shared_ptr<frmTerm> currentOwner_;
    frmTerm* current_ = nullptr;
    int topIndex_ = -1;
    /// Counts the sessions: an initialisation begins one, and the end of the class ends it. Who is in the
    /// middle of something sees by it that the host has done so meanwhile.
    unsigned session_ = 0;
    /// The host knows that no window is left.
    bool toldClosed_ = false;
    std::int16_t rememberedWidth_ = 0;
    std::int16_t rememberedHeight_ = 0;
    bool loggedOn_ = false;
};

}  // namespace kavrelon
