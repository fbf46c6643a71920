#include "support/win32/KeyState.h"

#include <windows.h>

#include "support/Keys.h"

namespace kavrelon {

bool isDown(int key) {
    return GetKeyState(key) < 0;
}

std::int16_t shiftState() {
    int state = 0;
    if (isDown(VK_SHIFT)) state |= shifts::kShift;
    if (isDown(VK_CONTROL)) state |= shifts::kCtrl;
    if (isDown(VK_MENU)) state |= shifts::kAlt;
    return static_cast<std::int16_t>(state);
}

}  // namespace kavrelon
