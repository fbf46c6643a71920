#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>

#include "plugin/HostParent.h"

namespace kavrelon {

/// The host's parent object for the plug-in: called through IClientParent where it has that interface, else
/// by the names of its members, as the object of a script. Null for null. A call that fails throws a ComError
/// with the host's own result and error object.
std::shared_ptr<HostParent> makeClientParent(IDispatch* object);

}  // namespace kavrelon
