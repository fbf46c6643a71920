#pragma once

namespace kavrelon {

/// The resource that makes the plug-in's class known without registration; `samplehost.rc` has the same
/// number.
inline constexpr int kPlugInManifest = 100;

}  // namespace kavrelon
