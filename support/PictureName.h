#pragma once

#include <string_view>

namespace kavrelon {

/// Whether a picture name from the remote side may be looked up in a folder: it can only name a file in that
/// folder. Refused are paths, drives, network names, addresses, alternate streams, device names, wildcards,
/// names that the platform would shorten, and names that no file can have. Bytes above 127 count as letters.
bool isPlainFileName(std::string_view name) noexcept;

}  // namespace kavrelon
