#pragma once

namespace kavrelon {

/// The resource that makes the plug-in's class known without registration; `samplehost.rc` has the same
/// numbers.
inline constexpr int kPlugInManifest = 100;
/// The resource that is the picture of the demo session.
inline constexpr int kDemoPicture = 101;

}  // namespace kavrelon
