// The library's entry points. There is no DllMain, as nothing has to be done when the library is loaded.

#include <windows.h>

#include <olectl.h>

#include <new>

#include "htmllabel/com/LabelObject.h"
#include "plugin/com/Registration.h"
#include "plugin/com/TerminalObject.h"
#include "support/com/ClassFactory.h"
#include "support/win32/Module.h"

namespace {

using namespace kavrelon;

/// The file's path in its long form: unregistering finds what registering wrote, also when the library was
/// loaded by its short name the one time and by the long one the other.
std::wstring registeredPath() {
    const std::wstring path = modulePath();
    std::wstring longPath(GetLongPathNameW(path.c_str(), nullptr, 0), L'\0');
    longPath.resize(GetLongPathNameW(path.c_str(), longPath.data(), static_cast<DWORD>(longPath.size())));
    return longPath.empty() ? path : longPath;
}

LSTATUS registerIn(HKEY hive) {
    return ClassesRoot(hive).add(registryGroups(registeredPath()));
}
LSTATUS unregisterIn(HKEY hive) {
    return ClassesRoot(hive).remove(registryGroups(registeredPath()));
}

HRESULT toResult(LSTATUS status) {
    return status == ERROR_SUCCESS ? S_OK : SELFREG_E_CLASS;
}

/// No exception leaves an entry point; what they do can only run out of memory.
template <class Work>
HRESULT guarded(Work&& work) noexcept {
    try {
        return work();
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

template <class Object>
HRESULT makeFactory(REFIID iid, void** object) {
    auto* const factory = new ClassFactory<Object>;
    const HRESULT found = factory->QueryInterface(iid, object);
    factory->Release();
    return found;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return guarded([&] {
        if (clsid == CLSID_clsTerminal) return makeFactory<TerminalObject>(iid, object);
        if (clsid == CLSID_HTMLLabel) return makeFactory<LabelObject>(iid, object);
        return CLASS_E_CLASSNOTAVAILABLE;
    });
}

STDAPI DllCanUnloadNow() {
    return ModuleLock::isFree() ? S_OK : S_FALSE;
}

/// Registers for the machine; without the rights for that, for the user alone.
STDAPI DllRegisterServer() {
    return guarded([] {
        const LSTATUS status = registerIn(HKEY_LOCAL_MACHINE);
        if (status != ERROR_ACCESS_DENIED) return toResult(status);
        OutputDebugStringW(L"kavrelon: no administrator rights, registering for the current user only\n");
        return toResult(registerIn(HKEY_CURRENT_USER));
    });
}

/// Removes the machine's and the user's registration, where they lead to this file and not to another copy.
STDAPI DllUnregisterServer() {
    return guarded([] {
        const HRESULT user = toResult(unregisterIn(HKEY_CURRENT_USER));
        const HRESULT machine = toResult(unregisterIn(HKEY_LOCAL_MACHINE));
        return FAILED(machine) ? machine : user;
    });
}

/// With the command "user" (`regsvr32 /n /i:user`) for the user alone; without one for the machine, never for
/// the user.
STDAPI DllInstall(BOOL install, LPCWSTR command) {
    return guarded([&]() -> HRESULT {
        HKEY hive = HKEY_LOCAL_MACHINE;
        if (command != nullptr && *command != L'\0') {
            if (_wcsicmp(command, L"user") != 0) return E_INVALIDARG;
            hive = HKEY_CURRENT_USER;
        }
        return toResult(install != FALSE ? registerIn(hive) : unregisterIn(hive));
    });
}
