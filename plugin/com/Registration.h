#pragma once

#include <string>
#include <vector>

#include "support/com/Registry.h"

namespace kavrelon {

/// All registry entries of this library, for a library file at `path`: of its classes, its type libraries and
/// their interfaces. Registering writes them and unregistering removes them.
std::vector<RegistryGroup> registryGroups(const std::wstring& path);

}  // namespace kavrelon
