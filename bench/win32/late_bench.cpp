// Late-bound calls of the two members that a host calls for received bytes: as the object serves them, and as
// the system's DispInvoke serves them by the type library. Both end in the same member with the same
// arguments. The two take turns, and of each the fastest round counts: other programs can only make a round
// slower.

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <stdexcept>
#include <string>

#include "kavrelon.h"
#include "samplehost/com/ParentObject.h"
#include "support/com/ComCall.h"
#include "support/com/ComText.h"
#include "support/win32/Module.h"

namespace {

using namespace kavrelon;

constexpr int kCallsPerRound = 2000;
constexpr int kRounds = 301;
/// The part of a call by the type library that a call may take.
constexpr double kMost = 0.25;

class Requests final : public ParentRequests {
  public:
    void ParentSendData(const std::string&) override {}
    void ParentSendBreak() override {}
    void ParentSendCommand(const std::string&) override {}
    void ParentWindowClosed() override {}
    std::string ParentConnectionProfile() override { return "bench"; }
    std::string ParentIniFile() override { return "Z:\\nowhere\\kavrelon.ini"; }
};

/// The built library, which is in the program's folder, and a plug-in on a window that is not shown and draws
/// nothing.
class PlugIn {
  public:
    PlugIn() {
        const std::wstring program = modulePath();
        const HMODULE module =
            LoadLibraryW((program.substr(0, program.rfind(L'\\') + 1) + L"kavrelon.dll").c_str());
        const FARPROC found = GetProcAddress(module, "DllGetClassObject");
        if (found == nullptr) throw std::runtime_error("there is no library");
        const auto classObject = reinterpret_cast<LPFNGETCLASSOBJECT>(reinterpret_cast<void*>(found));
        ComPtr<IClassFactory> factory;
        throwIfFailed(classObject(CLSID_clsTerminal, IID_IClassFactory, factory.putVoid()));
        throwIfFailed(factory->CreateInstance(nullptr, __uuidof(IClientMain), main_.putVoid()));
        throwIfFailed(main_->SetClientParent(parent_.get()));
        throwIfFailed(main_->InitializeClass());
        throwIfFailed(main_.query<ITerminalWindow>()->put_PaintOn(VARIANT_FALSE));
    }
    ~PlugIn() { main_->DestroyClass(); }
    PlugIn(const PlugIn&) = delete;
    PlugIn& operator=(const PlugIn&) = delete;

    template <class Interface>
    ComPtr<Interface> query() const {
        return main_.query<Interface>();
    }

  private:
    Requests requests_;
    ComPtr<ParentObject> parent_ = ParentObject::create(requests_);
    ComPtr<IClientMain> main_;
};

template <class Call>
double nanosecondsACall(Call call) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    for (int i = 0; i < kCallsPerRound; ++i) throwIfFailed(call());
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count() / kCallsPerRound;
}

/// Prints one member's row; whether it reaches its goal.
template <class Interface>
bool measure(const char* name, Interface& object, DISPID member, DISPPARAMS arguments) {
    ComPtr<ITypeInfo> info;
    throwIfFailed(object.GetTypeInfo(0, LOCALE_NEUTRAL, info.put()));
    double served = std::numeric_limits<double>::infinity();
    double described = served;
    for (int i = 0; i < kRounds; ++i) {
        served = std::min(served, nanosecondsACall([&] {
                              return object.Invoke(member, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD,
                                                   &arguments, nullptr, nullptr, nullptr);
                          }));
        described = std::min(described, nanosecondsACall([&] {
                                 return DispInvoke(&object, info.get(), member, DISPATCH_METHOD, &arguments,
                                                   nullptr, nullptr, nullptr);
                             }));
    }
    const double ratio = served / described;
    std::printf("%-15s late bound %4.0f ns, by the type library %4.0f ns, ratio %.2f\n", name, served,
                described, ratio);
    return ratio <= kMost;
}

bool measureAll() {
    const PlugIn plugIn;
    VARIANT byte{};
    byte.vt = VT_I2;
    byte.iVal = 'x';
    bool reached = measure("ReceiveData", *plugIn.query<IClientReceive>().get(), 2, {&byte, nullptr, 1, 0});

    // A cursor position, the commonest sequence of all: its number and an array of two texts.
    const Bstr texts[] = {Bstr(L"12"), Bstr(L"34")};
    SAFEARRAYBOUND bound{2, 1};
    SAFEARRAY* fields = SafeArrayCreate(VT_BSTR, 1, &bound);
    for (LONG i = 1; i <= 2; ++i) throwIfFailed(SafeArrayPutElement(fields, &i, texts[i - 1].get()));
    VARIANT lastFirst[2]{};
    lastFirst[0].vt = VT_ARRAY | VT_BSTR | VT_BYREF;
    lastFirst[0].pparray = &fields;
    lastFirst[1].vt = VT_I2;
    lastFirst[1].iVal = 2;
    reached =
        measure("EscTreeProcess", *plugIn.query<IClientEscTree>().get(), 5, {lastFirst, nullptr, 2, 0}) &&
        reached;
    SafeArrayDestroy(fields);
    return reached;
}

}  // namespace

int main() try {
    throwIfFailed(CoInitialize(nullptr));
    const bool reached = measureAll();
    CoUninitialize();
    if (!reached) std::fprintf(stderr, "late_bench: above %.2f of a call by the type library\n", kMost);
    return reached ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "late_bench: %s\n", error.what());
    return 2;
}
