// The smallest host: a terminal that echoes what its user types, until the window is closed.
// minimal_host [--once]: once, it prints the screen's first row and ends. Wants the library registered.

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kavrelon.h"
#include "quillabor.h"
#include "recognizer/EscapeRecognizer.h"

void check(HRESULT result, const char* what) {
    if (SUCCEEDED(result)) return;
    std::fprintf(stderr, "minimal_host: %s (%08lX)\n", what, static_cast<unsigned long>(result));
    std::exit(1);
}

template <class Interface>
Interface* as(IUnknown& object) {
    void* found = nullptr;
    check(object.QueryInterface(__uuidof(Interface), &found), "the library is an older one");
    return static_cast<Interface*>(found);
}

/// A text of the contract as bytes of the ANSI code page, which it stands for.
std::string toBytes(BSTR text) {
    const int units = static_cast<int>(SysStringLen(text));
    std::string bytes(2U * SysStringLen(text), '\0');
    bytes.resize(WideCharToMultiByte(CP_ACP, 0, text, units, bytes.data(), 2 * units, nullptr, nullptr));
    return bytes;
}

BSTR toText(std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    std::wstring wide(bytes.size(), L'\0');
    return SysAllocStringLen(wide.data(),
                             MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, wide.data(), length));
}

/// What the plug-in calls back. It lives as long as the program, so nobody counts its
/// references; nor does anybody call it by name, as the plug-in finds its interface.
struct Parent final : IClientParent {
    std::string typed;
    bool closed = false;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IDispatch || iid == IID_IClientParent ? this : nullptr;
        return *object != nullptr ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    STDMETHODIMP ParentSendData(BSTR text) override { return typed += toBytes(text), S_OK; }
    STDMETHODIMP ParentReserved2() override { return E_NOTIMPL; }
    STDMETHODIMP ParentWindowClosed() override { return closed = true, S_OK; }
    STDMETHODIMP ParentSendBreak() override { return S_OK; }
    STDMETHODIMP ParentReserved5() override { return E_NOTIMPL; }
    STDMETHODIMP get_ParentConnectionProfile(BSTR* name) override { return *name = toText("Minimal"), S_OK; }
    STDMETHODIMP get_ParentIniFile(BSTR* path) override {
        char file[MAX_PATH] = "";
        ExpandEnvironmentStringsA("%APPDATA%\\minimal_host.ini", file, MAX_PATH);
        return *path = toText(file), S_OK;
    }
    STDMETHODIMP ParentSendCommand(BSTR) override { return S_OK; }
};

/// Hands what the recogniser finds in the received data to the plug-in.
struct Screen final : kavrelon::EscapeSink {
    IClientReceive& receive;
    IClientEscTree& table;
    Screen(IClientReceive& receiver, IClientEscTree& rows) : receive(receiver), table(rows) {}
    void plain(std::span<const std::uint8_t> bytes) override {
        for (const std::uint8_t byte : bytes) receive.ReceiveData(byte);
    }
    void sequence(std::int16_t row, std::span<const std::string_view> fields) override {
        SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 1, static_cast<ULONG>(fields.size()));
        LONG index = 0, result = 0;
        for (const std::string_view field : fields) {
            BSTR text = toText(field);
            SafeArrayPutElement(array, &++index, text);
            SysFreeString(text);
        }
        const HRESULT done = table.EscTreeProcess(row, &array, &result);
        if (FAILED(done)) std::fprintf(stderr, "row %d: %08lX\n", row, static_cast<unsigned long>(done));
        SafeArrayDestroy(array);
    }
    void unmatched(std::span<const std::uint8_t>) override {}
};

int main(int argc, char** argv) {
    const bool once = argc > 1 && std::string_view(argv[1]) == "--once";
    static Parent parent;
    check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "COM does not start");
    void* object = nullptr;
    check(CoCreateInstance(CLSID_clsTerminal, nullptr, CLSCTX_INPROC_SERVER, IID_IClientMain, &object),
          "the library is not registered");
    auto& plugIn = *static_cast<IClientMain*>(object);
    auto& receive = *as<IClientReceive>(plugIn);
    auto& table = *as<IClientEscTree>(plugIn);
    check(plugIn.SetClientParent(&parent), "the parent was refused");
    check(plugIn.InitializeClass(), "the plug-in was not initialised");
    short rows = 0;
    table.get_EscTreeCount(&rows);
    std::vector<std::string> patterns;
    for (short row = 1; row <= rows; ++row) {
        BSTR pattern = nullptr;
        table.get_EscTreeString(row, &pattern);
        patterns.push_back(toBytes(pattern));
        SysFreeString(pattern);
    }
    Screen screen{receive, table};
    kavrelon::EscapeRecognizer recognizer(kavrelon::EscapeTree(patterns), screen);
    const auto feed = [&](std::string_view text) {
        receive.ReceiveStart();
        recognizer.feed({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        receive.ReceiveEnd();
    };
    check(plugIn.OnConnection(), "there is no window");
    feed("Type \x1b[33;40;1mwhat you like\x1b[37;40;0m.\r\n");
    MSG message{};
    while (!once && !parent.closed && GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
        for (const char each : std::exchange(parent.typed, {}))
            feed(each == '\r' ? "\r\n" : std::string{each});
    }
    if (once) {
        BSTR text = nullptr;
        VARIANT row{};
        V_VT(&row) = VT_I4, V_I4(&row) = 1;
        check(as<ITerminalWindow>(plugIn)->ScreenText(row, row, &text), "the screen cannot be read");
        std::puts(toBytes(text).c_str());
    }
    plugIn.OnClose();
    plugIn.DestroyClass();  // the object and its interfaces go with the process
}
