#pragma once

namespace kavrelon::settings {

// Sections and keys of the settings file.
inline constexpr const char* kMisc = "Misc";
inline constexpr const char* kFontStyle = "FontStyle";
/// With the key's number behind it.
inline constexpr const char* kFuncKey = "FuncKey";
inline constexpr const char* kPrinter = "Printer";
inline constexpr const char* kSpoolType = "SpoolType";
inline constexpr const char* kPrinterName = "PrinterName";

}  // namespace kavrelon::settings
