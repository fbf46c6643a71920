#include "plugin/com/ClientParent.h"

#include "quillabor.h"
#include "support/com/ComCall.h"
#include "support/com/ComText.h"
#include "support/com/LateCall.h"
#include "support/com/Variant.h"
#include "support/win32/Module.h"

namespace kavrelon {
namespace {

/// A call out of the library. The host may do anything in it: drop this parent, end the plug-in, ask whether
/// the library can be unloaded. So what the call needs is held until it is back.
template <class Object>
class CallOut : private ModuleLock {
  public:
    explicit CallOut(const ComPtr<Object>& object) : object_(object) {}

    Object& operator*() const { return *object_; }
    Object* operator->() const { return object_.get(); }
    void check(HRESULT result) const { throwIfFailed(result, object_.get(), __uuidof(Object)); }

  private:
    ComPtr<Object> object_;
};

class EarlyBoundParent final : public HostParent {
  public:
    explicit EarlyBoundParent(ComPtr<IClientParent> parent) : parent_(std::move(parent)) {}

    void ParentSendData(const std::string& Value) override {
        const CallOut call(parent_);
        call.check(call->ParentSendData(toBstr(Value).get()));
    }
    void ParentWindowClosed() override {
        const CallOut call(parent_);
        call.check(call->ParentWindowClosed());
    }
    void ParentSendBreak() override {
        const CallOut call(parent_);
        call.check(call->ParentSendBreak());
    }
    std::string ParentConnectionProfile() override {
        const CallOut call(parent_);
        Bstr value;
        call.check(call->get_ParentConnectionProfile(value.put()));
        return toAnsi(value.view());
    }
    std::string ParentIniFile() override {
        const CallOut call(parent_);
        Bstr value;
        call.check(call->get_ParentIniFile(value.put()));
        return toAnsi(value.view());
    }
    void ParentSendCommand(const std::string& Value) override {
        const CallOut call(parent_);
        call.check(call->ParentSendCommand(toBstr(Value).get()));
    }

  private:
    ComPtr<IClientParent> parent_;
};

class LateBoundParent final : public HostParent {
  public:
    explicit LateBoundParent(IDispatch* parent) : parent_(parent) {}

    void ParentSendData(const std::string& Value) override { send(L"ParentSendData", Value); }
    void ParentWindowClosed() override { notify(L"ParentWindowClosed"); }
    void ParentSendBreak() override { notify(L"ParentSendBreak"); }
    std::string ParentConnectionProfile() override { return read(L"ParentConnectionProfile"); }
    std::string ParentIniFile() override { return read(L"ParentIniFile"); }
    void ParentSendCommand(const std::string& Value) override { send(L"ParentSendCommand", Value); }

  private:
    void notify(const wchar_t* name) {
        const CallOut call(parent_);
        callByName(*call, name, DISPATCH_METHOD);
    }

    void send(const wchar_t* name, const std::string& text) {
        const CallOut call(parent_);
        callByName(*call, name, DISPATCH_METHOD, Arguments(text));
    }

    std::string read(const wchar_t* name) {
        const CallOut call(parent_);
        Variant value;
        // A script may have made it a function instead of a property.
        callByName(*call, name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {}, &value);
        throwIfFailed(changeType(value, value, VT_BSTR));
        return toAnsi(bstrView(value.bstrVal));
    }

    ComPtr<IDispatch> parent_;
};

}  // namespace

std::shared_ptr<HostParent> makeClientParent(IDispatch* object) {
    if (object == nullptr) return nullptr;
    if (auto parent = ComPtr<IDispatch>(object).query<IClientParent>()) {
        return std::make_shared<EarlyBoundParent>(std::move(parent));
    }
    return std::make_shared<LateBoundParent>(object);
}

}  // namespace kavrelon
