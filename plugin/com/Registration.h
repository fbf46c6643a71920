#pragma once

#include <string>
#include <vector>

#include "support/com/Registry.h"

namespace kavrelon {

/// Everything that the registry says of this library, for a library file at `path`: its classes, its type
/// libraries and their interfaces. Registering writes it and unregistering removes it.
std::vector<RegistryGroup> registryGroups(const std::wstring& path);

}  // namespace kavrelon
