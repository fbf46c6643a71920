#include "samplehost/win32/TerminalClass.h"

#include <windows.h>

#include <objbase.h>

#include <string>
#include <type_traits>

#include "kavrelon.h"
#include "samplehost/win32/ComFailure.h"
#include "samplehost/win32/Resources.h"
#include "support/com/ComText.h"
#include "support/com/Module.h"

namespace kavrelon {

namespace {

constexpr wchar_t kProgId[] = L"kavrelon.clsTerminal";

ComPtr<IClientMain> createByName() {
    CLSID id{};
    check(CLSIDFromProgID(kProgId, &id), "The class kavrelon.clsTerminal was not found");
    ComPtr<IClientMain> plugIn;
    check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IClientMain, plugIn.putVoid()),
          "The class kavrelon.clsTerminal could not be created");
    return plugIn;
}

class RegisteredClass final : public TerminalClass {
  public:
    ComPtr<IClientMain> create() const override { return createByName(); }
};

/// Makes an activation context the thread's for as long as it lives.
class ActiveContext {
  public:
    explicit ActiveContext(HANDLE context) {
        if (!ActivateActCtx(context, &cookie_)) {
            check(HRESULT_FROM_WIN32(GetLastError()), "The plug-in's manifest could not be activated");
        }
    }
    ~ActiveContext() { DeactivateActCtx(0, cookie_); }
    ActiveContext(const ActiveContext&) = delete;
    ActiveContext& operator=(const ActiveContext&) = delete;

  private:
    ULONG_PTR cookie_ = 0;
};

/// The manifest is a resource that this class activates, rather than the one that the system activates for
/// the whole program: a manifest comes before the registry, which would never be asked otherwise. A host that
/// wants the manifest in any case makes it the program's own and needs no code.
class ManifestClass final : public TerminalClass {
  public:
    ManifestClass() {
        const std::wstring program = modulePath();
        ACTCTXW request{};
        request.cbSize = sizeof request;
        request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
        request.lpSource = program.c_str();
        request.lpResourceName = MAKEINTRESOURCEW(kPlugInManifest);
        request.hModule = moduleInstance();
        context_ = CreateActCtxW(&request);
        if (context_ == INVALID_HANDLE_VALUE) {
            check(HRESULT_FROM_WIN32(GetLastError()),
                  "kavrelon.manifest beside the program could not be used");
        }
    }
    ~ManifestClass() override { ReleaseActCtx(context_); }
    ManifestClass(const ManifestClass&) = delete;
    ManifestClass& operator=(const ManifestClass&) = delete;

    ComPtr<IClientMain> create() const override {
        const ActiveContext active(context_);
        return createByName();
    }

  private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
};

class ClassInFile final : public TerminalClass {
  public:
    explicit ClassInFile(const std::string& path) : path_(path) {
        // With a full path the DLL finds what lies beside it, and no other folder is searched.
        std::wstring full(MAX_PATH, L'\0');
        const DWORD length =
            GetFullPathNameW(toBstr(path).get(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (length > 0 && length < full.size()) {
            module_.reset(LoadLibraryExW(full.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
        }
        if (!module_)
            check(HRESULT_FROM_WIN32(GetLastError()), "The library " + path + " could not be loaded");
    }

    ComPtr<IClientMain> create() const override {
        // The documented way from a procedure's address to its type.
        using GetClassObject = HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**);
        const FARPROC entry = GetProcAddress(module_.get(), "DllGetClassObject");
        if (entry == nullptr) throw ComFailure("The library " + path_ + " has no COM classes.");
        auto* const getClassObject = reinterpret_cast<GetClassObject*>(reinterpret_cast<void*>(entry));

        ComPtr<IClassFactory> factory;
        check(getClassObject(CLSID_clsTerminal, IID_IClassFactory, factory.putVoid()),
              "The library " + path_ + " does not have the terminal's class");
        ComPtr<IClientMain> plugIn;
        check(factory->CreateInstance(nullptr, IID_IClientMain, plugIn.putVoid()),
              "The library " + path_ + " could not create its terminal");
        return plugIn;
    }

  private:
    struct Unload {
        void operator()(HMODULE module) const { FreeLibrary(module); }
    };

    std::string path_;
    std::unique_ptr<std::remove_pointer_t<HMODULE>, Unload> module_;
};

}  // namespace

std::unique_ptr<TerminalClass> TerminalClass::fromManifest() {
    return std::make_unique<ManifestClass>();
}

std::unique_ptr<TerminalClass> TerminalClass::fromRegistry() {
    return std::make_unique<RegisteredClass>();
}

std::unique_ptr<TerminalClass> TerminalClass::fromFile(const std::string& path) {
    return std::make_unique<ClassInFile>(path);
}

std::unique_ptr<TerminalClass> TerminalClass::open(const HostOptions& options) {
    if (options.libraryFile) return fromFile(*options.libraryFile);
    return options.registered ? fromRegistry() : fromManifest();
}

}  // namespace kavrelon
