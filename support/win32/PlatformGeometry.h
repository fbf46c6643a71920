#pragma once

#include <windows.h>

#include "support/Geometry.h"

namespace kavrelon {

inline RECT toPlatform(const Rect& block) {
    return {block.left, block.top, block.right, block.bottom};
}

inline Rect fromPlatform(const RECT& block) {
    return {static_cast<int>(block.left), static_cast<int>(block.top), static_cast<int>(block.right),
            static_cast<int>(block.bottom)};
}

/// The point in a message. Its parts are signed: the mouse may be to the left of its window or above it.
inline Point pointIn(LPARAM parameter) {
    return {static_cast<short>(LOWORD(parameter)), static_cast<short>(HIWORD(parameter))};
}

}  // namespace kavrelon
