#pragma once

#include <windows.h>

namespace kavrelon {

/// The registration of the terminal windows' class, shared by all who hold one: the last takes it back, since
/// a class that outlived the library would point into code that is gone.
class WindowClass {
  public:
    static constexpr const char* kName = "kavrelon.frmTerm";

    WindowClass(HINSTANCE module, WNDPROC procedure);
    ~WindowClass();
    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;

    HINSTANCE module() const { return module_; }

  private:
    HINSTANCE module_;
};

}  // namespace kavrelon
