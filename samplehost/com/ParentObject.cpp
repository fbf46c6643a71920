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
    return comCall(member("ParentSendData"), [&] { requests().ParentSendData(toAnsi(bstrView(Value))); });
}

STDMETHODIMP ParentObject::ParentWindowClosed() {
    return comCall(member("ParentWindowClosed"), [&] { requests().ParentWindowClosed(); });
}

STDMETHODIMP ParentObject::ParentSendBreak() {
    return comCall(member("ParentSendBreak"), [&] { requests().ParentSendBreak(); });
}

STDMETHODIMP ParentObject::get_ParentConnectionProfile(BSTR* Value) {
    return comCall(member("ParentConnectionProfile"),
                   [&] { out(Value) = toBstr(requests().ParentConnectionProfile()).detach(); });
}

STDMETHODIMP ParentObject::get_ParentIniFile(BSTR* Value) {
    return comCall(member("ParentIniFile"),
                   [&] { out(Value) = toBstr(requests().ParentIniFile()).detach(); });
}

STDMETHODIMP ParentObject::ParentSendCommand(BSTR Value) {
    return comCall(member("ParentSendCommand"),
                   [&] { requests().ParentSendCommand(toAnsi(bstrView(Value))); });
}

}  // namespace kavrelon
