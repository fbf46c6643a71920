#pragma once

#include <windows.h>

#include <oleauto.h>

namespace kavrelon {

/// Calls a member of an automation object by its name, as a script does: a method, with `argument` when there
/// is one, or with DISPATCH_PROPERTYGET the reading of a property. `result` may be null. Throws a ComError
/// when the object has no such member or the member fails.
void callByName(IDispatch& object, const wchar_t* name, WORD flags, VARIANT* argument, VARIANT* result);

}  // namespace kavrelon
