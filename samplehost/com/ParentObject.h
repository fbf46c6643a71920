#pragma once

#include <string>

#include "quillabor.h"
#include "support/com/ComPtr.h"
#include "support/com/DualInterface.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// What the plug-in asks of the program. All calls come on the user-interface thread, during calls of the
/// plug-in or from its windows' events. Text is single-byte.
class ParentRequests {
  public:
    virtual ~ParentRequests() = default;

    virtual void ParentSendData(const std::string& text) = 0;
    virtual void ParentSendBreak() = 0;
    virtual void ParentSendCommand(const std::string& command) = 0;
    /// The user has closed the terminal window. The plug-in is still closing it and must not be released
    /// before this call has returned.
    virtual void ParentWindowClosed() = 0;
    virtual std::string ParentConnectionProfile() = 0;
    virtual std::string ParentIniFile() = 0;
};

/// The object that the plug-in calls back: IClientParent, dual, so that plug-ins may also bind late.
class ParentObject final : public Implements<DualInterface<IClientParent>> {
  public:
    /// `requests` must outlive this object, or `detach` be called before it ends.
    static ComPtr<ParentObject> create(ParentRequests& requests);
    /// Makes every later call fail. For the program's end, which a plug-in's reference may outlive.
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
