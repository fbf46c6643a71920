// What registering writes and unregistering removes, and use without any of it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <set>

#include "headless/EscapeRows.h"
#include "support/com/Registry.h"
#include "support/com/Variant.h"
#include "tests/windows/ComTestSupport.h"

namespace kavrelon {
namespace {

using testing::Contains;
using testing::IsSupersetOf;

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

/// The hive of each kind of registration, and the command that asks for it.
const std::pair<HKEY, const wchar_t*> kKinds[] = {{HKEY_LOCAL_MACHINE, nullptr},
                                                  {HKEY_CURRENT_USER, L"user"}};

/// Starts each test with nothing registered, and leaves the library registered as it was found.
class ComRegistration : public testing::Test {
  protected:
    ComRegistration() { EXPECT_EQ(unregister(), S_OK); }
    ~ComRegistration() override { EXPECT_EQ(library_.call("DllRegisterServer"), S_OK); }
    HRESULT unregister() { return library_.call("DllUnregisterServer"); }
    HRESULT install(BOOL on, const wchar_t* command) { return library_.call("DllInstall", on, command); }

    LoadedLibrary library_;
};

/// The library once more, in a folder of its own, as a new version is installed before the old one goes.
class OtherCopy {
  public:
    OtherCopy() {
        CreateDirectoryW(folder_.c_str(), nullptr);
        EXPECT_TRUE(CopyFileW(libraryPath().c_str(), path.c_str(), FALSE));
        library.emplace(path);
    }
    OtherCopy(const OtherCopy&) = delete;
    OtherCopy& operator=(const OtherCopy&) = delete;
    ~OtherCopy() {
        library->call("DllUnregisterServer");
        library.reset();
        EXPECT_TRUE(DeleteFileW(path.c_str()) && RemoveDirectoryW(folder_.c_str()));
    }

  private:
    const std::wstring folder_ = libraryPath() + L" in use";

  public:
    const std::wstring path = folder_ + L"\\kavrelon.dll";
    std::optional<LoadedLibrary> library;
};

TEST_F(ComRegistration, LeavesNoKeyBehind) {
    for (const auto& [hive, command] : kKinds) {
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
    EXPECT_THAT(classes(HKEY_LOCAL_MACHINE), Contains(contract + L"!=" + other))
        << "the host describes its own interfaces";
    setText(HKEY_LOCAL_MACHINE, progId, other);
    EXPECT_EQ(unregister(), S_OK);
    EXPECT_THAT(classes(HKEY_LOCAL_MACHINE), IsSupersetOf({contract + L"!=" + other, progId + L"!=" + other}))
        << "another class has taken the name";
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kReceiveKey);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\kavrelon.clsTerminal");
}

TEST_F(ComRegistration, IsNotTakenAwayByAnotherCopy) {
    const OtherCopy other;
    for (const auto& [hive, command] : kKinds) {
        const Entries before = classes(hive);
        EXPECT_EQ(other.library->call("DllInstall", TRUE, command), S_OK);
        const Entries others = classes(hive);
        EXPECT_EQ(install(TRUE, command), S_OK);
        const Entries ours = classes(hive);
        EXPECT_EQ(other.library->call("DllUnregisterServer"), S_OK);
        EXPECT_EQ(classes(hive), ours) << "the older copy goes last";
        EXPECT_EQ(other.library->call("DllInstall", TRUE, command), S_OK);
        EXPECT_EQ(unregister(), S_OK);
        EXPECT_EQ(classes(hive), others);
        EXPECT_EQ(other.library->call("DllUnregisterServer"), S_OK);
        EXPECT_EQ(classes(hive), before);
    }
}

TEST_F(ComRegistration, KeepsWhatStandsBelowItsKeys) {
    EXPECT_EQ(library_.call("DllRegisterServer"), S_OK);
    const std::wstring root = L"Software\\Classes\\";
    const std::wstring foreign[] = {
        root + L"CLSID\\{A7BCDDB2-BEA6-4E0E-B87C-B075A17D255F}\\TreatAs",
        root + L"CLSID\\{AE36169C-DD18-4E16-A859-349946B6F5E6}\\InprocServer32\\2.0",
        root + L"kavrelon.HTMLLabel\\shell",
        root + L"TypeLib\\{61916EB2-422A-4845-9B65-28EA00C27719}\\1.0\\409\\win32",
        std::wstring(kInterfaceKey) + L"\\NumMethods"};
    for (const std::wstring& key : foreign) setText(HKEY_LOCAL_MACHINE, key, L"another's");
    EXPECT_EQ(unregister(), S_OK);
    for (const std::wstring& key : foreign) {
        EXPECT_EQ(entriesBelow(HKEY_LOCAL_MACHINE, key.substr(0, key.rfind(L'\\'))),
                  (Entries{key, key + L"!=another's"}))
            << toAnsi(key);
    }
    for (const wchar_t* const key :
         {L"CLSID\\{A7BCDDB2-BEA6-4E0E-B87C-B075A17D255F}", L"CLSID\\{AE36169C-DD18-4E16-A859-349946B6F5E6}",
          L"kavrelon.HTMLLabel", L"TypeLib\\{61916EB2-422A-4845-9B65-28EA00C27719}"}) {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, (root + key).c_str());
    }
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kInterfaceKey);
}

TEST_F(ComRegistration, TakesBackAHalfDoneRegistration) {
    const OtherCopy other;
    EXPECT_EQ(other.library->call("DllRegisterServer"), S_OK);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kInterfaceKey);
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

/// The plug-in's identity as a program gets it that knows the type library alone: by class, default interface
/// and member.
std::wstring identityBy(ITypeLib& library) {
    ComPtr<ITypeInfo> coclass;
    ComPtr<ITypeInfo> members;
    HREFTYPE reference = 0;
    DISPID id = DISPID_UNKNOWN;
    OLECHAR name[] = L"PlugInID";
    LPOLESTR names[] = {name};
    library.GetTypeInfoOfGuid(CLSID_clsTerminal, coclass.put());
    coclass->GetRefTypeOfImplType(0, &reference);
    if (FAILED(coclass->GetRefTypeInfo(reference, members.put())) ||
        FAILED(members->GetIDsOfNames(names, 1, &id))) {
        return L"not described";
    }
    ComPtr<IClientMain> object;
    DISPPARAMS none{};
    Variant value;
    coclass->CreateInstance(nullptr, __uuidof(IClientMain), object.putVoid());
    if (!object) return L"not created";
    members->Invoke(object.get(), id, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
    return value.vt == VT_BSTR ? value.bstrVal : L"no text";
}

TEST_F(ComRegistration, IsNotNeededWithTheManifest) {
    CoInitialize(nullptr);
    CLSID clsid{};
    ComPtr<ITypeLib> library;
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
    EXPECT_EQ(LoadRegTypeLib(LIBID_kavrelon, 1, 0, LOCALE_NEUTRAL, library.put()), S_OK);
    EXPECT_EQ(identityBy(*library), L"TERM");
    EXPECT_EQ(LoadRegTypeLib(LIBID_quillabor, 1, 0, LOCALE_NEUTRAL, library.put()), S_OK);
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(context);
    plugIn = {};
    CoUninitialize();
}

}  // namespace
}  // namespace kavrelon
