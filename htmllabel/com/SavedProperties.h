#pragma once

#include <windows.h>

#include <ocidl.h>

#include <string>

#include "htmllabel/HTMLLabelProperties.h"

namespace kavrelon {

/// Reads a saved set from a container's property bag. What the bag lacks has its default, and so has what
/// cannot be meant; the log, where there is one, is told of the latter.
HTMLLabelProperties loadProperties(IPropertyBag& bag, IErrorLog* log);
/// Writes them all, or those that differ from what a bag that lacks them would give; what cannot be meant as
/// its default. Throws a ComError.
void saveProperties(const HTMLLabelProperties& properties, IPropertyBag& bag, bool all);

/// The same set as bytes for a stream, with the version of their form, and with the same defaults.
std::string encodeProperties(const HTMLLabelProperties& properties);
/// Reads these from a stream, which stands behind them then. Throws a ComError for what is no such set, or
/// only a part of one.
HTMLLabelProperties decodeProperties(IStream& stream);

}  // namespace kavrelon
