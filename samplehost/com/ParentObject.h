#pragma once

#include <string>

#include "quillabor.h"
#include "support/com/ComPtr.h"
#include "support/com/DualInterface.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// What the plug-in asks of the program. All calls come in on the user-interface thread, from within calls of
/// the plug-in or from its windows' events. Text is single-byte.
class ParentRequests {
  public:
    virtual ~ParentRequests() = default;

    virtual void sendData(const std::string& text) = 0;
    virtual void sendBreak() = 0;
    virtual void sendCommand(const std::string& command) = 0;
    /// The user has closed the terminal window. The plug-in is still in the middle of closing it: it must not
    /// be released before this call has returned.
    virtual void windowClosed() = 0;
    virtual std::string connectionProfile() = 0;
    virtual std::string iniFile() = 0;
};

/// The object that the plug-in calls back: IClientParent, dual, so that plug-ins may also bind late.
class ParentObject final : public Implements<DualInterface<IClientParent>> {
  public:
    /// `requests` must outlive this object or be taken away with `detach`.
    static ComPtr<ParentObject> create(ParentRequests& requests);
    /// From here on every call fails: a plug-in may keep its reference for longer than the program keeps what
    /// answers it.
    void detach() { requests_ = nullptr; }

    STDMETHODIMP ParentSendData(BSTR Value) override;
    STDMETHODIMP ParentReserved2() override { return E_NOTIMPL; }
    STDMETHODIMP ParentWindowClosed() override;
    STDMETHODIMP ParentSendBreak() override;
    STDMETHODIMP ParentReserved5() override { return E_NOTIMPL; }
    STDMETHODIMP get_ParentConnectionProfile(BSTR* Value) override;
    STDMETHODIMP get_ParentIniFile(BSTR* Value) override;
    STDMETHODIMP ParentSendCommand(BSTR Value) override;

  private:
    explicit ParentObject(ParentRequests& requests) : requests_(&requests) {}

    ParentRequests& requests() const;

    ParentRequests* requests_;
};

}  // namespace kavrelon
