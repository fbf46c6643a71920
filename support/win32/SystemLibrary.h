#pragma once

#include <windows.h>

namespace kavrelon {

/// A library of the system that few sessions need, loaded while this exists. An import would load it with
/// every start, and its own start can take longer than that of the terminal.
///
/// It is loaded from the system's folder by its full path, never by a bare name that others could put a file
/// under.
class SystemLibrary {
  public:
    explicit SystemLibrary(const wchar_t* file) noexcept;
    ~SystemLibrary();
    SystemLibrary(const SystemLibrary&) = delete;
    SystemLibrary& operator=(const SystemLibrary&) = delete;

    /// The library's function of that name; null where there is no such library or function.
    template <class Function>
    Function* find(const char* name) const noexcept {
        // Through void*: the address has a type without parameters.
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(address(name)));
    }

  private:
    FARPROC address(const char* name) const noexcept;

    HMODULE module_ = nullptr;
};

}  // namespace kavrelon
