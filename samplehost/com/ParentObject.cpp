#include "samplehost/com/ParentObject.h"

#include "support/com/ComCall.h"
#include "support/com/ComText.h"

namespace kavrelon {

namespace {

ComMember member(const char* name) {
    return {"samplehost", name, IID_IClientParent};
}

}  // namespace

ComPtr<ParentObject> ParentObject::create(ParentRequests& requests) {
    ComPtr<ParentObject> parent;
    *parent.put() = new ParentObject(requests);
    return parent;
}

ParentRequests& ParentObject::requests() const {
    if (requests_ == nullptr) throw ComError(CO_E_OBJNOTCONNECTED);
    return *requests_;
}

STDMETHODIMP ParentObject::ParentSendData(BSTR Value) {
    return comCall(member("ParentSendData"), [&] { requests().sendData(toAnsi(bstrView(Value))); });
}

STDMETHODIMP ParentObject::ParentWindowClosed() {
    return comCall(member("ParentWindowClosed"), [&] { requests().windowClosed(); });
}

STDMETHODIMP ParentObject::ParentSendBreak() {
    return comCall(member("ParentSendBreak"), [&] { requests().sendBreak(); });
}

STDMETHODIMP ParentObject::get_ParentConnectionProfile(BSTR* Value) {
    return comCall(member("ParentConnectionProfile"),
                   [&] { out(Value) = toBstr(requests().connectionProfile()).detach(); });
}

STDMETHODIMP ParentObject::get_ParentIniFile(BSTR* Value) {
    return comCall(member("ParentIniFile"), [&] { out(Value) = toBstr(requests().iniFile()).detach(); });
}

STDMETHODIMP ParentObject::ParentSendCommand(BSTR Value) {
    return comCall(member("ParentSendCommand"), [&] { requests().sendCommand(toAnsi(bstrView(Value))); });
}

}  // namespace kavrelon
