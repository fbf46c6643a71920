#pragma once

#include <memory>

#include "quillabor.h"
#include "samplehost/HostOptions.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// Where the library's classes come from. Keeps the library loaded: must outlive the objects that it creates.
class PlugInClasses {
  public:
    virtual ~PlugInClasses() = default;

    /// A new plug-in and a new HTML label. Both throw ComFailure.
    ComPtr<IClientMain> createPlugIn() const;
    ComPtr<IUnknown> createLabel() const;

    /// By the manifests next to the program; nothing needs to be registered.
    static std::unique_ptr<PlugInClasses> fromManifest();
    /// By their registration.
    static std::unique_ptr<PlugInClasses> fromRegistry();
    /// Straight from a DLL's file, without registry and manifests.
    static std::unique_ptr<PlugInClasses> fromFile(const std::string& path);
    /// The way that the options ask for. All four throw ComFailure.
    static std::unique_ptr<PlugInClasses> open(const HostOptions& options);

  protected:
    struct Name {
        const wchar_t* progId;
        const CLSID& id;
        const char* text;
    };

  private:
    virtual ComPtr<IUnknown> create(const Name& name) const = 0;
};

}  // namespace kavrelon
