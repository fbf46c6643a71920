#pragma once

#include <windows.h>

#include "support/win32/SharedWindowClass.h"

namespace kavrelon {

/// The class of the terminal windows.
class WindowClass {
  public:
    static constexpr const char* kName = "kavrelon.frmTerm";

    explicit WindowClass(HINSTANCE module);

    HINSTANCE module() const { return registration_.module(); }

  private:
    SharedWindowClass registration_;
};

}  // namespace kavrelon
