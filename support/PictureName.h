#pragma once

#include <string_view>

namespace kavrelon {

/// Whether a picture name from the remote side may be looked up in a folder: it names a file there and
/// nothing else. Refused are paths, drives, networks, addresses and streams, device names, wildcards, names
/// that the platform would shorten, and names that no file can have. Bytes above 127 are taken for letters.
bool isPlainFileName(std::string_view name) noexcept;

}  // namespace kavrelon
