#pragma once

#include <windows.h>

#include <string>

namespace kavrelon {

/// What a window class is to be, and its name.
struct WindowClassDescription {
    const char* name;
    WNDCLASSEXW platform;
};

/// The registration of a window class, shared by all objects that hold one: the last one unregisters it,
/// since a class that outlived the library would point to code that is gone.
class SharedWindowClass {
  public:
    /// `holders` counts the objects that hold this class: a static variable for each class. The class's name
    /// must outlive the object.
    SharedWindowClass(const WindowClassDescription& description, int& holders);
    ~SharedWindowClass();
    SharedWindowClass(const SharedWindowClass&) = delete;
    SharedWindowClass& operator=(const SharedWindowClass&) = delete;

    const char* name() const { return name_; }
    HINSTANCE module() const { return module_; }

  private:
    const char* name_;
    std::wstring wideName_;
    HINSTANCE module_;
    int& holders_;
};

}  // namespace kavrelon
