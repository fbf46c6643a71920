#pragma once

#include <windows.h>

namespace kavrelon {

/// The registration of a window class, shared by all who hold one: the last takes it back, since a class that
/// outlived the library would point into code that is gone.
class SharedWindowClass {
  public:
    /// `holders` counts those who hold this class: a variable of static storage for each class. The class's
    /// name must outlive the object.
    SharedWindowClass(const WNDCLASSEXA& description, int& holders);
    ~SharedWindowClass();
    SharedWindowClass(const SharedWindowClass&) = delete;
    SharedWindowClass& operator=(const SharedWindowClass&) = delete;

    const char* name() const { return name_; }
    HINSTANCE module() const { return module_; }

  private:
    const char* name_;
    HINSTANCE module_;
    int& holders_;
};

}  // namespace kavrelon
