#include "samplehost/com/PlugInClasses.h"

#include <windows.h>

#include <objbase.h>

#include <string>
#include <type_traits>

#include "kavrelon.h"
#include "samplehost/com/ComFailure.h"
#include "support/win32/Module.h"
#include "support/win32/WideText.h"

namespace kavrelon {

namespace {

// The resource with the plug-in's manifest; samplehost.rc has the same number.
constexpr int kPlugInManifest = 100;

/// `missing` completes the sentence that begins with the class.
ComPtr<IUnknown> createByName(const wchar_t* progId, const std::string& text, const char* missing) {
    CLSID id{};
    if (FAILED(CLSIDFromProgID(progId, &id))) throw ComFailure("The class " + text + missing);
    ComPtr<IUnknown> object;
    check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.putVoid()),
          "The class " + text + " could not be created");
    return object;
}

class RegisteredClass final : public PlugInClasses {
  private:
    ComPtr<IUnknown> create(const Name& name) const override {
        return createByName(name.progId, name.text,
                            " is not registered on this machine; run \"regsvr32 kavrelon.dll\" first.");
    }
};

/// Makes an activation context the current one of the thread while it exists.
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

/// The manifest is a resource that this class activates when it is needed. If it were the manifest of the
/// whole program, the system would always prefer it to the registry, and `--registered` could not work. A
/// host that always wants the manifest makes it the program's own and needs no code.
class ManifestClass final : public PlugInClasses {
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

  private:
    ComPtr<IUnknown> create(const Name& name) const override {
        const ActiveContext active(context_);
        return createByName(name.progId, name.text, " was not found.");
    }

    HANDLE context_ = INVALID_HANDLE_VALUE;
};

class ClassInFile final : public PlugInClasses {
  public:
    explicit ClassInFile(const std::string& path) : path_(path) {
        // With a full path the DLL finds its neighbours in its own folder, and no other folder is searched.
        std::wstring full(MAX_PATH, L'\0');
        const DWORD length =
            GetFullPathNameW(toWide(path).c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (length > 0 && length < full.size()) {
            module_.reset(LoadLibraryExW(full.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
        }
        if (!module_) {
            check(HRESULT_FROM_WIN32(GetLastError()), "The library " + path + " could not be loaded");
        }
    }

  private:
    ComPtr<IUnknown> create(const Name& name) const override {
        using GetClassObject = HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**);
        const FARPROC entry = GetProcAddress(module_.get(), "DllGetClassObject");
        if (entry == nullptr) throw ComFailure("The library " + path_ + " has no COM classes.");
        // Through void*: the address has a type without parameters.
        auto* const getClassObject = reinterpret_cast<GetClassObject*>(reinterpret_cast<void*>(entry));

        ComPtr<IClassFactory> factory;
        check(getClassObject(name.id, IID_IClassFactory, factory.putVoid()),
              "The library " + path_ + " does not have the class " + name.text);
        ComPtr<IUnknown> object;
        check(factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid()),
              "The library " + path_ + " could not create " + name.text);
        return object;
    }

    struct Unload {
        void operator()(HMODULE module) const { FreeLibrary(module); }
    };

    std::string path_;
    std::unique_ptr<std::remove_pointer_t<HMODULE>, Unload> module_;
};

}  // namespace

ComPtr<IClientMain> PlugInClasses::createPlugIn() const {
    auto plugIn =
        create({L"kavrelon.clsTerminal", CLSID_clsTerminal, "kavrelon.clsTerminal"}).query<IClientMain>();
    if (!plugIn) throw ComFailure("The class kavrelon.clsTerminal is no plug-in of this host.");
    return plugIn;
}

ComPtr<IUnknown> PlugInClasses::createLabel() const {
    return create({L"kavrelon.HTMLLabel", CLSID_HTMLLabel, "kavrelon.HTMLLabel"});
}

std::unique_ptr<PlugInClasses> PlugInClasses::fromManifest() {
    return std::make_unique<ManifestClass>();
}

std::unique_ptr<PlugInClasses> PlugInClasses::fromRegistry() {
    return std::make_unique<RegisteredClass>();
}

std::unique_ptr<PlugInClasses> PlugInClasses::fromFile(const std::string& path) {
    return std::make_unique<ClassInFile>(path);
}

std::unique_ptr<PlugInClasses> PlugInClasses::open(const HostOptions& options) {
    if (options.libraryFile) return fromFile(*options.libraryFile);
    return options.registered ? fromRegistry() : fromManifest();
}

}  // namespace kavrelon
