#pragma once

#include <windows.h>

#include <ocidl.h>

#include "kavrelon.h"
#include "plugin/clsTerminal.h"
#include "plugin/com/EscTreeDispatch.h"
#include "plugin/com/MainDispatch.h"
#include "plugin/com/ReceiveDispatch.h"
#include "plugin/com/WindowAutomation.h"
#include "support/com/ComCall.h"
#include "support/com/ComText.h"
#include "support/com/DualInterface.h"
#include "support/com/Implements.h"
#include "terminal/win32/Win32Platform.h"

namespace kavrelon {

/// The COM object `kavrelon.clsTerminal`: each member converts what comes in, calls the member of clsTerminal
/// of its name, and turns an exception into a result.
///
/// A host may release the object while one of its members runs: when that calls the parent object, or lets
/// messages through. So every member holds a reference while it runs, except `ReceiveData`, which calls
/// nobody.
class TerminalObject final
    : public Implements<MainDispatch, ReceiveDispatch, EscTreeDispatch, DualInterface<::ITerminalCallBack>,
                        WindowAutomation, IProvideClassInfo> {
  public:
    static constexpr const char* kClassName = "kavrelon.clsTerminal";

    TerminalObject();

    // IClientMain
    STDMETHODIMP SetClientParent(IDispatch* oParent) override;
    STDMETHODIMP InitializeClass() override;
    STDMETHODIMP OnConnection() override;
    STDMETHODIMP OnLogin() override;
    STDMETHODIMP OnLogOut() override;
    STDMETHODIMP OnClose() override;
    STDMETHODIMP DestroyClass() override;
    STDMETHODIMP get_ClientReceive(IDispatch** Value) override;
    STDMETHODIMP get_ClientEscTree(IDispatch** Value) override;
    STDMETHODIMP get_PlugInID(BSTR* Value) override;
    STDMETHODIMP get_PlugInDesc(BSTR* Value) override;
    STDMETHODIMP get_PlugInVersion(BSTR* Value) override;
    STDMETHODIMP get_Enabled(VARIANT_BOOL* Value) override;
    STDMETHODIMP put_Enabled(VARIANT_BOOL Value) override;
    STDMETHODIMP get_CanEnableDisable(VARIANT_BOOL* Value) override;
    STDMETHODIMP CheckTimer() override;
    STDMETHODIMP OnCommandAccepted() override;
    STDMETHODIMP OnCommandHold() override;

    // IClientReceive
    STDMETHODIMP ReceiveStart() override;
    STDMETHODIMP ReceiveData(unsigned char Ch) override;
    STDMETHODIMP ReceiveEnd() override;

    // IClientEscTree
    STDMETHODIMP get_EscTreeCount(short* Value) override;
    STDMETHODIMP get_EscTreeString(short Index, BSTR* Value) override;
    STDMETHODIMP get_EscTreeDesc(short Index, BSTR* Value) override;
    STDMETHODIMP get_EscTreeCreateFlag(short Index, long* Value) override;
    STDMETHODIMP EscTreeProcess(short Index, SAFEARRAY** Args, long* Result) override;

    // ITerminalCallBack
    STDMETHODIMP WindowHasClosed() override;
    STDMETHODIMP FuncKey(short KeyNo, BSTR* Value) override;
    STDMETHODIMP SendBreak() override;
    STDMETHODIMP SendTermData(BSTR Value) override;
    STDMETHODIMP SendCommand(BSTR Value) override;

    // IProvideClassInfo
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;

  private:
    ~TerminalObject() override = default;

    IDispatch& windowMembers() override { return static_cast<::ITerminalWindow&>(*this); }
    clsTerminal& terminal() override { return terminal_; }

    /// Runs the work of a member of `Interface`, with this object held.
    template <class Interface, class Work>
    HRESULT call(const char* member, Work&& work) {
        const ComPtr<IUnknown> self(static_cast<IClientMain*>(this));
        return comCall({kClassName, member, __uuidof(Interface)}, std::forward<Work>(work));
    }

    /// The same for members that give a text.
    template <class Interface, class Work>
    HRESULT callForText(const char* member, BSTR* value, Work&& work) {
        return call<Interface>(member, [&] {
            out(value) = nullptr;
            *value = toBstr(work()).detach();
        });
    }

    std::shared_ptr<Win32Platform> platform_;
    clsTerminal terminal_;
    TypeInfo classInfo_;
};

}  // namespace kavrelon
