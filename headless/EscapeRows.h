#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "plugin/EscapeTable.h"

/// Rows of the escape table by name, for who hands the terminal a sequence without a stream.
namespace kavrelon::rows {

/// The row of a pattern. Throws when the table has none.
inline std::int16_t rowOf(const std::string& pattern) {
    for (std::int16_t row = 1; row <= escapeTable().EscTreeCount(); ++row) {
        if (escapeTable().row(row).pattern == pattern) return row;
    }
    throw std::out_of_range("no row has the pattern " + pattern);
}

inline const std::int16_t kHome = rowOf("<ESC>[H");
inline const std::int16_t kCursorPosition = rowOf("<27>[{N};{N}H");
inline const std::int16_t kCursorUp = rowOf("<27>[{N}A");
inline const std::int16_t kCursorDown = rowOf("<27>[{N}B");
inline const std::int16_t kCursorForward = rowOf("<27>[{N}C");
inline const std::int16_t kCursorBack = rowOf("<27>[{N}D");
inline const std::int16_t kForceCursorPosition = rowOf("<ESC>[{N};{N}f");
inline const std::int16_t kSaveCursor = rowOf("<ESC>[s");
inline const std::int16_t kClearEndOfLine = rowOf("<ESC>[K");
inline const std::int16_t kClearStartOfLine = rowOf("<ESC>[1K");
inline const std::int16_t kClearLine = rowOf("<ESC>[2K");
inline const std::int16_t kClearEndOfScreen = rowOf("<ESC>[J");
inline const std::int16_t kClearBeginOfScreen = rowOf("<ESC>[1J");
inline const std::int16_t kClearScreen = rowOf("<ESC>[2J");
inline const std::int16_t kSetAttribute = rowOf("<ESC>[{N}m");
inline const std::int16_t kSetAttributes = rowOf("<ESC>[{N};{X}m");
inline const std::int16_t kLogOff = rowOf("<27><8>L0<term>");
inline const std::int16_t kLogOn = rowOf("<27><8>L1<term>");
inline const std::int16_t kLogOnWithText = rowOf("<27><8>L1 {X}<term>");
inline const std::int16_t kSizeScreen = rowOf("<27><8>SIZE {N},{N}<term>");
inline const std::int16_t kNewScreen = rowOf("<27><8>NS<TERM>");
inline const std::int16_t kCloseScreen = rowOf("<27><8>CS<TERM>");
inline const std::int16_t kSetFunctionKey = rowOf("<27><8>FKEY {x};{x}<TERM>");
inline const std::int16_t kShowHelpBox = rowOf("<31>HELPBOX {n} {n},{n},{n},{n} {x}<31>");
inline const std::int16_t kHideHelpBox = rowOf("<31>HELPBOX {n} HIDE<31>");
inline const std::int16_t kAddKB = rowOf("<31>KB {X},{X}<31>");
inline const std::int16_t kClearKB = rowOf("<31>KB Clear<31>");
inline const std::int16_t kAddRemote = rowOf("<31>REMOTE [{X}] \"{X}\"<31>");

}  // namespace kavrelon::rows
