#include "terminal/win32/WindowClass.h"

#include "support/win32/WindowProcedure.h"

namespace kavrelon {
namespace {

int holders = 0;

WindowClassDescription description(HINSTANCE module) {
    WindowClassDescription result =
        WindowProcedure::windowClass(module, WindowClass::kName, CS_OWNDC | CS_HREDRAW | CS_VREDRAW);
    result.platform.hIcon = LoadIconW(nullptr, MAKEINTRESOURCEW(32512));
    result.platform.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    return result;
}

}  // namespace

WindowClass::WindowClass(HINSTANCE module) : registration_(description(module), holders) {}

}  // namespace kavrelon
