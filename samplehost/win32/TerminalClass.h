#pragma once

#include <memory>

#include "quillabor.h"
#include "samplehost/HostOptions.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// Where the plug-in's class comes from. Keeps the library loaded: must outlive the objects that it creates.
class TerminalClass {
  public:
    virtual ~TerminalClass() = default;

    /// Creates a plug-in. Throws ComFailure.
    virtual ComPtr<IClientMain> create() const = 0;

    /// From the manifests beside the program; nothing needs to be registered.
    static std::unique_ptr<TerminalClass> fromManifest();
    /// From its registration.
    static std::unique_ptr<TerminalClass> fromRegistry();
    /// Straight from a DLL's file, past registry and manifests.
    static std::unique_ptr<TerminalClass> fromFile(const std::string& path);
    /// The one that the options ask for. All four throw ComFailure.
    static std::unique_ptr<TerminalClass> open(const HostOptions& options);
};

}  // namespace kavrelon
