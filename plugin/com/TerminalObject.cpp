#include "plugin/com/TerminalObject.h"

#include "plugin/com/ArgumentArray.h"
#include "plugin/com/ClientParent.h"
#include "support/win32/Module.h"

namespace kavrelon {

TerminalObject::TerminalObject()
    : platform_(std::make_shared<Win32Platform>(moduleInstance())), terminal_(*platform_, KAVRELON_VERSION) {}

STDMETHODIMP TerminalObject::SetClientParent(IDispatch* oParent) {
    return call<IClientMain>("IClientMain_SetClientParent",
                             [&] { terminal_.IClientMain_SetClientParent(makeClientParent(oParent)); });
}

STDMETHODIMP TerminalObject::InitializeClass() {
    return call<IClientMain>("IClientMain_InitializeClass", [&] { terminal_.IClientMain_InitializeClass(); });
}

STDMETHODIMP TerminalObject::OnConnection() {
    return call<IClientMain>("IClientMain_OnConnection", [&] { terminal_.IClientMain_OnConnection(); });
}

STDMETHODIMP TerminalObject::OnLogin() {
    return call<IClientMain>("IClientMain_OnLogin", [&] { terminal_.IClientMain_OnLogin(); });
}

STDMETHODIMP TerminalObject::OnLogOut() {
    return call<IClientMain>("IClientMain_OnLogOut", [&] { terminal_.IClientMain_OnLogOut(); });
}

STDMETHODIMP TerminalObject::OnClose() {
    return call<IClientMain>("IClientMain_OnClose", [&] { terminal_.IClientMain_OnClose(); });
}

STDMETHODIMP TerminalObject::DestroyClass() {
    return call<IClientMain>("IClientMain_DestroyClass", [&] { terminal_.IClientMain_DestroyClass(); });
}

STDMETHODIMP TerminalObject::get_ClientReceive(IDispatch** Value) {
    return call<IClientMain>("IClientMain_ClientReceive", [&] {
        out(Value) = static_cast<IClientReceive*>(this);
        AddRef();
    });
}

STDMETHODIMP TerminalObject::get_ClientEscTree(IDispatch** Value) {
    return call<IClientMain>("IClientMain_ClientEscTree", [&] {
        out(Value) = static_cast<IClientEscTree*>(this);
        AddRef();
    });
}

STDMETHODIMP TerminalObject::get_PlugInID(BSTR* Value) {
    return callForText<IClientMain>("IClientMain_PlugInID", Value,
                                    [&] { return terminal_.IClientMain_PlugInID(); });
}

STDMETHODIMP TerminalObject::get_PlugInDesc(BSTR* Value) {
    return callForText<IClientMain>("IClientMain_PlugInDesc", Value,
                                    [&] { return terminal_.IClientMain_PlugInDesc(); });
}

STDMETHODIMP TerminalObject::get_PlugInVersion(BSTR* Value) {
    return callForText<IClientMain>("IClientMain_PlugInVersion", Value,
                                    [&] { return terminal_.IClientMain_PlugInVersion(); });
}

STDMETHODIMP TerminalObject::get_Enabled(VARIANT_BOOL* Value) {
    return call<IClientMain>("IClientMain_Enabled", [&] { out(Value) = VARIANT_TRUE; });
}

// Accepted and ignored: the plug-in is always enabled.
STDMETHODIMP TerminalObject::put_Enabled(VARIANT_BOOL) {
    return S_OK;
}

STDMETHODIMP TerminalObject::get_CanEnableDisable(VARIANT_BOOL* Value) {
    return call<IClientMain>("IClientMain_CanEnableDisable", [&] { out(Value) = VARIANT_FALSE; });
}

// Told to every plug-in; a terminal does nothing with them.
STDMETHODIMP TerminalObject::CheckTimer() {
    return S_OK;
}
STDMETHODIMP TerminalObject::OnCommandAccepted() {
    return S_OK;
}
STDMETHODIMP TerminalObject::OnCommandHold() {
    return S_OK;
}
STDMETHODIMP TerminalObject::ReceiveStart() {
    return S_OK;
}

STDMETHODIMP TerminalObject::ReceiveData(unsigned char Ch) {
    try {
        terminal_.IClientReceive_ReceiveData(Ch);
        return S_OK;
    } catch (...) {
        return reportException({kClassName, "IClientReceive_ReceiveData", __uuidof(IClientReceive)});
    }
}

STDMETHODIMP TerminalObject::ReceiveEnd() {
    return call<IClientReceive>("IClientReceive_ReceiveEnd", [&] { terminal_.IClientReceive_ReceiveEnd(); });
}

STDMETHODIMP TerminalObject::get_EscTreeCount(short* Value) {
    return call<IClientEscTree>("IClientEscTree_EscTreeCount",
                                [&] { out(Value) = terminal_.IClientEscTree_EscTreeCount(); });
}

STDMETHODIMP TerminalObject::get_EscTreeString(short Index, BSTR* Value) {
    return callForText<IClientEscTree>("IClientEscTree_EscTreeString", Value,
                                       [&] { return terminal_.IClientEscTree_EscTreeString(Index); });
}

STDMETHODIMP TerminalObject::get_EscTreeDesc(short Index, BSTR* Value) {
    return callForText<IClientEscTree>("IClientEscTree_EscTreeDesc", Value,
                                       [&] { return terminal_.IClientEscTree_EscTreeDesc(Index); });
}

// 0 for every index, used or not.
STDMETHODIMP TerminalObject::get_EscTreeCreateFlag(short, long* Value) {
    return call<IClientEscTree>("IClientEscTree_EscTreeCreateFlag", [&] { out(Value) = 0; });
}

STDMETHODIMP TerminalObject::EscTreeProcess(short Index, SAFEARRAY** Args, long* Result) {
    return call<IClientEscTree>("IClientEscTree_EscTreeProcess", [&] {
        out(Result) = 0;
        // A row that does not exist is the caller's first mistake, whatever its array is like.
        static_cast<void>(escapeTable().row(Index));
        const ArgumentArray fields(Args != nullptr ? *Args : nullptr);
        terminal_.IClientEscTree_EscTreeProcess(Index, fields.arguments());
    });
}

STDMETHODIMP TerminalObject::WindowHasClosed() {
    return call<::ITerminalCallBack>("WindowHasClosed", [&] { terminal_.WindowHasClosed(); });
}

STDMETHODIMP TerminalObject::FuncKey(short KeyNo, BSTR* Value) {
    return callForText<::ITerminalCallBack>("FuncKey", Value, [&] { return terminal_.FuncKey(KeyNo); });
}

STDMETHODIMP TerminalObject::SendBreak() {
    return call<::ITerminalCallBack>("SendBreak", [&] { terminal_.SendBreak(); });
}

STDMETHODIMP TerminalObject::SendTermData(BSTR Value) {
    return call<::ITerminalCallBack>("SendTermData",
                                     [&] { terminal_.SendTermData(toAnsi(bstrView(Value))); });
}

STDMETHODIMP TerminalObject::SendCommand(BSTR Value) {
    return call<::ITerminalCallBack>("SendCommand", [&] { terminal_.SendCommand(toAnsi(bstrView(Value))); });
}

// The object is called by its class's name, in programs and debuggers.
STDMETHODIMP TerminalObject::GetClassInfo(ITypeInfo** info) {
    return classInfo_.give(CLSID_clsTerminal, info);
}

}  // namespace kavrelon
