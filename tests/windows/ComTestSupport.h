#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "kavrelon.h"
#include "support/com/ComCall.h"
#include "support/com/ComPtr.h"
#include "support/com/ComText.h"
#include "support/com/DualInterface.h"
#include "support/com/Implements.h"

namespace kavrelon {

constexpr HRESULT runtimeError(int number) {
    return static_cast<HRESULT>(0x800A0000U | unsigned(number));
}

constexpr HRESULT kObjectNotSet = runtimeError(91);

/// The built library, which is in the test program's folder.
inline std::wstring libraryPath() {
    const std::wstring program = modulePath();
    return program.substr(0, program.rfind(L'\\') + 1) + L"kavrelon.dll";
}

/// A loaded library and its entry points.
class LoadedLibrary {
  public:
    explicit LoadedLibrary(const std::wstring& path = libraryPath()) : module_(LoadLibraryW(path.c_str())) {}
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary() { FreeLibrary(module_); }

    template <class... Arguments>
    HRESULT call(const char* entryPoint, Arguments... arguments) const {
        using Function = HRESULT STDAPICALLTYPE(Arguments...);
        const FARPROC found = GetProcAddress(module_, entryPoint);
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(found))(arguments...);
    }

    template <class Interface>
    ComPtr<Interface> create(REFCLSID clsid = CLSID_clsTerminal) const {
        ComPtr<Interface> object;
        const auto factory = classObject(clsid);
        if (factory) factory->CreateInstance(nullptr, __uuidof(Interface), object.putVoid());
        return object;
    }

    ComPtr<IClassFactory> classObject(REFCLSID clsid = CLSID_clsTerminal) const {
        ComPtr<IClassFactory> factory;
        call<REFCLSID, REFIID, void**>("DllGetClassObject", clsid, IID_IClassFactory, factory.putVoid());
        return factory;
    }

  private:
    HMODULE module_;
};

/// Works with a copy of the library that nothing else in this process has loaded: as long as anything of it
/// is in use, the copy says that it cannot be unloaded.
class ComCopy : public testing::Test {
  protected:
    ComCopy() {
        CoInitialize(nullptr);
        EXPECT_TRUE(CopyFileW(libraryPath().c_str(), copy.c_str(), FALSE));
        library.emplace(copy);
    }
    ~ComCopy() override {
        EXPECT_EQ(library->call("DllCanUnloadNow"), S_OK) << "something is left";
        library.reset();
        EXPECT_TRUE(DeleteFileW(copy.c_str())) << "the library stays loaded";
        CoUninitialize();
    }

    const std::wstring copy = libraryPath() + L".copy.dll";
    std::optional<LoadedLibrary> library;
};

template <class Object, class... Arguments>
ComPtr<Object> make(Arguments&&... arguments) {
    ComPtr<Object> object;
    *object.put() = new Object(std::forward<Arguments>(arguments)...);
    return object;
}

/// A host's parent object that records its calls, and fails all of them when it is told to.
class RecordingParent final : public Implements<DualInterface<IClientParent>> {
  public:
    std::vector<std::string> calls;
    std::function<void()> onCall = [] {};
    bool failing = false;
    static constexpr HRESULT kFailure = static_cast<HRESULT>(0x80041234U);

    ULONG references() {
        AddRef();
        return Release();
    }

    STDMETHODIMP ParentSendData(BSTR Value) override { return note("data " + toAnsi(bstrView(Value))); }
    STDMETHODIMP ParentReserved2() override { return note("reserved"); }
    STDMETHODIMP ParentWindowClosed() override { return note("closed"); }
    STDMETHODIMP ParentSendBreak() override { return note("break"); }
    STDMETHODIMP ParentReserved5() override { return note("reserved"); }
    STDMETHODIMP get_ParentConnectionProfile(BSTR* Value) override {
        *Value = toBstr("profile").detach();
        return note("profile?");
    }
    STDMETHODIMP get_ParentIniFile(BSTR* Value) override {
        *Value = toBstr("Z:\\nowhere\\kavrelon.ini").detach();
        return note("ini?");
    }
    STDMETHODIMP ParentSendCommand(BSTR Value) override { return note("command " + toAnsi(bstrView(Value))); }

  private:
    HRESULT note(std::string call) {
        calls.push_back(std::move(call));
        onCall();
        if (!failing) return S_OK;
        ComPtr<ICreateErrorInfo> info;
        CreateErrorInfo(info.put());
        info->SetDescription(toBstr("the line is down").get());
        SetErrorInfo(0, info.query<IErrorInfo>().get());
        return kFailure;
    }
};

/// Takes this thread's error object: its description and source, "none" without one.
inline std::string takeErrorInfo() {
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK) return "none";
    Bstr description;
    Bstr source;
    info->GetDescription(description.put());
    info->GetSource(source.put());
    return toAnsi(description.view()) + " <" + toAnsi(source.view()) + ">";
}

/// A one-dimensional array of strings; the caller destroys it.
inline SAFEARRAY* stringArray(LONG lowerBound, const std::vector<std::wstring>& texts) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_BSTR, lowerBound, static_cast<ULONG>(texts.size()));
    for (const std::wstring& text : texts) {
        SafeArrayPutElement(array, &lowerBound, Bstr(text).get());
        ++lowerBound;
    }
    return array;
}

/// Processes a row of the table with these fields, the first of them at index 1.
inline HRESULT process(IClientEscTree& table, short row, const std::vector<std::wstring>& fields) {
    SAFEARRAY* array = stringArray(1, fields);
    long result = 0;
    const HRESULT done = table.EscTreeProcess(row, &array, &result);
    SafeArrayDestroy(array);
    return done;
}

/// The plug-in as a host has it: created by its registration, with a parent that records.
class ComPlugIn : public testing::Test {
  protected:
    ComPlugIn() {
        CoInitialize(nullptr);
        CoCreateInstance(CLSID_clsTerminal, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IClientMain),
                         main.putVoid());
    }
    ~ComPlugIn() override {
        release();
        main = {};
        EXPECT_EQ(parent->references(), 1U) << "the plug-in holds the parent";
        CoUninitialize();
    }
    void SetUp() override {
        ASSERT_TRUE(main) << "the class is not registered";
        receiver = main.query<IClientReceive>();
        table = main.query<IClientEscTree>();
        callBack = main.query<::ITerminalCallBack>();
        window = main.query<::ITerminalWindow>();
        ASSERT_TRUE(receiver && table && callBack && window);
    }
    void start() {
        ASSERT_EQ(main->SetClientParent(parent.get()), S_OK);
        ASSERT_EQ(main->InitializeClass(), S_OK);
    }
    /// Gives up every interface but the first.
    void release() {
        receiver = {};
        table = {};
        callBack = {};
        window = {};
    }

    ComPtr<RecordingParent> parent = make<RecordingParent>();
    ComPtr<IClientMain> main;
    ComPtr<IClientReceive> receiver;
    ComPtr<IClientEscTree> table;
    ComPtr<::ITerminalCallBack> callBack;
    ComPtr<::ITerminalWindow> window;
};

}  // namespace kavrelon
