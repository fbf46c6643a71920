// What registering writes and unregistering removes, and use without any of it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <set>

#include "headless/EscapeRows.h"
#include "support/com/Registry.h"
#include "tests/windows/ComTestSupport.h"

namespace kavrelon {
namespace {

using testing::Contains;

constexpr const wchar_t* kInterfaceKey =
    L"Software\\Classes\\Interface\\{A892B79E-7230-482A-8813-75B551F3C935}";
constexpr const wchar_t* kReceiveKey =
    L"Software\\Classes\\Interface\\{22CE4743-1E71-4E19-97BC-78574479FB7A}";

using Entries = std::set<std::wstring>;

/// Every key below `path` and every text value in it.
Entries entriesBelow(HKEY hive, const std::wstring& path) {
    Entries entries;
    HKEY key = nullptr;
    if (RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return entries;
    std::array<wchar_t, 512> name;
    std::array<wchar_t, 512> data{};
    DWORD length = name.size();
    DWORD bytes = sizeof data;
    for (DWORD i = 0; RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr,
                                    reinterpret_cast<BYTE*>(data.data()), &bytes) == ERROR_SUCCESS;
         ++i) {
        entries.insert(path + L'!' + name.data() + L'=' + data.data());
        length = name.size();
        bytes = sizeof data;
        data.fill(L'\0');
    }
    for (DWORD i = 0; RegEnumKeyW(key, i, name.data(), name.size()) == ERROR_SUCCESS; ++i) {
        const std::wstring below = path + L'\\' + name.data();
        entries.insert(below);
        entries.merge(entriesBelow(hive, below));
    }
    RegCloseKey(key);
    return entries;
}

Entries classes(HKEY hive) {
    return entriesBelow(hive, L"Software\\Classes");
}

void setText(HKEY hive, const std::wstring& path, const wchar_t* text) {
    RegSetKeyValueW(hive, path.c_str(), nullptr, REG_SZ, text,
                    static_cast<DWORD>(wcslen(text) + 1) * sizeof(wchar_t));
}

std::wstring textAt(HKEY hive, const std::wstring& path) {
    std::array<wchar_t, 512> text{};
    DWORD bytes = sizeof text;
    RegGetValueW(hive, path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    return text.data();
}

/// Starts each test with nothing registered, and leaves the library registered as it was found.
class ComRegistration : public testing::Test {
  protected:
    ComRegistration() { EXPECT_EQ(unregister(), S_OK); }
    ~ComRegistration() override { EXPECT_EQ(library_.call("DllRegisterServer"), S_OK); }
    HRESULT unregister() { return library_.call("DllUnregisterServer"); }
    HRESULT install(BOOL on, const wchar_t* command) { return library_.call("DllInstall", on, command); }

    LoadedLibrary library_;
};

TEST_F(ComRegistration, LeavesNoKeyBehind) {
    for (HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        const wchar_t* const command = hive == HKEY_CURRENT_USER ? L"user" : nullptr;
        const Entries before = classes(hive);
        EXPECT_EQ(install(TRUE, command), S_OK);
        const Entries registered = classes(hive);
        EXPECT_GT(registered.size(), before.size() + 40);
        EXPECT_THAT(registered, Contains(L"Software\\Classes\\CLSID\\{A7BCDDB2-BEA6-4E0E-B87C-B075A17D255F}\\"
                                         L"InprocServer32!ThreadingModel=Apartment"));
        EXPECT_THAT(registered, Contains(L"Software\\Classes\\CLSID\\{AE36169C-DD18-4E16-A859-349946B6F5E6}\\"
                                         L"MiscStatus\\1!=131473"));
        EXPECT_THAT(registered, Contains(std::wstring(kInterfaceKey) + L"!=ITerminalCallBack"));
        EXPECT_EQ(install(TRUE, command), S_OK);
        EXPECT_EQ(classes(hive), registered) << "registering twice is registering once";
        EXPECT_EQ(unregister(), S_OK);
        EXPECT_EQ(classes(hive), before);
        EXPECT_EQ(unregister(), S_OK) << "there is nothing left to remove";
    }
    EXPECT_EQ(install(TRUE, L"everybody"), E_INVALIDARG);
}

// From another apartment every call goes through the marshaler, which finds the type library by its
// registration.
TEST_F(ComRegistration, LetsOtherApartmentsCall) {
    EXPECT_EQ(library_.call("DllRegisterServer"), S_OK);
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    ComPtr<IClientEscTree> table;
    EXPECT_EQ(CoCreateInstance(CLSID_clsTerminal, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IClientEscTree),
                               table.putVoid()),
              S_OK);
    ASSERT_TRUE(table);
    EXPECT_TRUE(table.query<IClientSecurity>()) << "this is no proxy";
    Bstr pattern;
    EXPECT_EQ(table->get_EscTreeString(1, pattern.put()), S_OK);
    EXPECT_EQ(pattern.view(), L"<ESC>[H");
    EXPECT_EQ(process(*table, rows::kCursorPosition, {L"1", L"2"}), runtimeError(91));
    table = {};
    CoUninitialize();
}

TEST_F(ComRegistration, KeepsWhatOthersHaveRegistered) {
    const wchar_t* const other = L"{01234567-0123-0123-0123-0123456789AB}";
    const std::wstring contract = std::wstring(kReceiveKey) + L"\\TypeLib";
    const std::wstring progId = L"Software\\Classes\\kavrelon.clsTerminal\\CLSID";
    setText(HKEY_LOCAL_MACHINE, contract, other);
    EXPECT_EQ(library_.call("DllRegisterServer"), S_OK);
    EXPECT_EQ(textAt(HKEY_LOCAL_MACHINE, contract), other) << "the host describes its own interfaces";
    setText(HKEY_LOCAL_MACHINE, progId, other);
    EXPECT_EQ(unregister(), S_OK);
    EXPECT_EQ(textAt(HKEY_LOCAL_MACHINE, contract), other);
    EXPECT_EQ(textAt(HKEY_LOCAL_MACHINE, progId), other) << "another class has taken the name";
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kReceiveKey);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\kavrelon.clsTerminal");
}

TEST_F(ComRegistration, TakesBackAHalfDoneRegistration) {
    // Nothing that lasts can be made below a volatile key.
    HKEY blocker = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kInterfaceKey, 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE, nullptr,
                    &blocker, nullptr);
    RegCloseKey(blocker);
    const Entries before = classes(HKEY_LOCAL_MACHINE);
    EXPECT_TRUE(FAILED(library_.call("DllRegisterServer")));
    EXPECT_EQ(classes(HKEY_LOCAL_MACHINE), before);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kInterfaceKey);
}

TEST_F(ComRegistration, IsNotNeededWithTheManifest) {
    CoInitialize(nullptr);
    CLSID clsid{};
    EXPECT_TRUE(FAILED(CLSIDFromProgID(L"kavrelon.clsTerminal", &clsid)));

    const std::wstring manifest = libraryPath().replace(libraryPath().rfind(L'.'), 4, L".manifest");
    ACTCTXW source{};
    source.cbSize = sizeof source;
    source.lpSource = manifest.c_str();
    const HANDLE context = CreateActCtxW(&source);
    ASSERT_NE(context, INVALID_HANDLE_VALUE) << GetLastError();
    ULONG_PTR cookie = 0;
    ActivateActCtx(context, &cookie);
    EXPECT_EQ(CLSIDFromProgID(L"kavrelon.clsTerminal", &clsid), S_OK);
    ComPtr<IClientMain> plugIn;
    EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IClientMain), plugIn.putVoid()),
              S_OK);
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(LIBID_kavrelon, 1, 0, LOCALE_NEUTRAL, library.put()), S_OK);
    EXPECT_EQ(LoadRegTypeLib(LIBID_quillabor, 1, 0, LOCALE_NEUTRAL, library.put()), S_OK);
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(context);
    plugIn = {};
    CoUninitialize();
}

}  // namespace
}  // namespace kavrelon
