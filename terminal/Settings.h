#pragma once

namespace kavrelon::settings {

// Sections and keys of the settings file.
inline constexpr const char* kMisc = "Misc";
inline constexpr const char* kFontStyle = "FontStyle";
/// The address behind the knowledge base's first item.
inline constexpr const char* kKnowledgeBase = "KnowledgeBase";
/// "1": remote programs are started only after the user has been asked.
inline constexpr const char* kConfirmPrograms = "ConfirmPrograms";
/// Followed by the key's number.
inline constexpr const char* kFuncKey = "FuncKey";
inline constexpr const char* kPrinter = "Printer";
inline constexpr const char* kSpoolType = "SpoolType";
inline constexpr const char* kPrinterName = "PrinterName";

}  // namespace kavrelon::settings
