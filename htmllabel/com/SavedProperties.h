#pragma once

#include <windows.h>

#include <ocidl.h>

#include <string>

#include "htmllabel/HTMLLabelProperties.h"

namespace kavrelon {

/// Reads a saved set from a container's property bag. A property that is missing or invalid gets its default;
/// an invalid one is reported to the log, if there is one.
HTMLLabelProperties loadProperties(IPropertyBag& bag, IErrorLog* log);
/// Writes all properties, or only those that differ from their default; an invalid one is written as its
/// default. Throws a ComError.
void saveProperties(const HTMLLabelProperties& properties, IPropertyBag& bag, bool all);

/// The same set as bytes for a stream, with a version number. An invalid property is written as its default.
std::string encodeProperties(const HTMLLabelProperties& properties);
/// Reads these bytes from a stream, and leaves it after them. Throws a ComError when they are not a complete
/// set.
HTMLLabelProperties decodeProperties(IStream& stream);

}  // namespace kavrelon
