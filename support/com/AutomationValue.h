#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <type_traits>

#include "support/com/ComText.h"

namespace kavrelon {

// Values as automation passes them, and back: a flag, a number, or a text in the ANSI code page, which is the
// caller's to free.

inline VARIANT_BOOL toAutomation(bool flag) {
    return flag ? VARIANT_TRUE : VARIANT_FALSE;
}
inline BSTR toAutomation(const std::string& text) {
    return toBstr(text).detach();
}
template <class Number>
requires std::is_arithmetic_v<Number> Number toAutomation(Number number) {
    return number;
}

/// As what a member takes that wants a `Given`.
template <class Given, class Automation>
auto fromAutomation(Automation value) {
    if constexpr (std::is_same_v<Automation, BSTR>) {
        return toAnsi(bstrView(value));
    } else if constexpr (std::is_same_v<Given, bool>) {
        return value != VARIANT_FALSE;
    } else {
        return static_cast<Given>(value);
    }
}

}  // namespace kavrelon
