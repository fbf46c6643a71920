#include "support/com/ComText.h"

#include <new>

namespace kavrelon {

Bstr::Bstr(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (text_ == nullptr) throw std::bad_alloc();
}

std::wstring_view Bstr::view() const noexcept {
    return bstrView(text_);
}

BSTR* Bstr::put() noexcept {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
}

Bstr toBstr(std::string_view ansi) {
    return Bstr(toWide(ansi));
}

}  // namespace kavrelon
