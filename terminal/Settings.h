#pragma once

namespace kavrelon::settings {

// Sections and keys of the settings file.
inline constexpr const char* kMisc = "Misc";
inline constexpr const char* kFontStyle = "FontStyle";
/// The address behind the knowledge base's first item.
inline constexpr const char* kKnowledgeBase = "KnowledgeBase";
/// "1": remote programs are started only after the user has been asked.
inline constexpr const char* kConfirmPrograms = "ConfirmPrograms";
/// "1": a typed carriage return is sent as CR LF.
inline constexpr const char* kCRtoCRLF = "CRtoCRLF";
inline constexpr const char* kOn = "1";
inline constexpr const char* kOff = "0";
/// Followed by the key's number.
inline constexpr const char* kFuncKey = "FuncKey";
inline constexpr const char* kPrinter = "Printer";
inline constexpr const char* kSpoolType = "SpoolType";
inline constexpr const char* kPrinterName = "PrinterName";

}  // namespace kavrelon::settings
