#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace kavrelon {

struct DeleteGdiObject {
    void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};
struct DeleteContext {
    void operator()(HDC context) const noexcept { DeleteDC(context); }
};
struct DestroyMenuHandle {
    void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};

/// Owners of platform handles. A drawing object must not be selected in any context when it is deleted.
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;
using GdiPen = std::unique_ptr<std::remove_pointer_t<HPEN>, DeleteGdiObject>;
using GdiBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, DeleteGdiObject>;
using Region = std::unique_ptr<std::remove_pointer_t<HRGN>, DeleteGdiObject>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteGdiObject>;
using OwnedContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;
using Menu = std::unique_ptr<std::remove_pointer_t<HMENU>, DestroyMenuHandle>;

/// Selects an object into a context for the length of a scope, and then selects the previous one again.
class Selected {
  public:
    Selected(HDC context, HGDIOBJ object) : context_(context), before_(SelectObject(context, object)) {}
    ~Selected() {
        if (before_ != nullptr) SelectObject(context_, before_);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

    /// Whether the context accepted the object.
    explicit operator bool() const { return before_ != nullptr; }

  private:
    HDC context_;
    HGDIOBJ before_;
};

}  // namespace kavrelon
