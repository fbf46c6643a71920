#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string_view>
#include <vector>

namespace kavrelon {

/// The arguments of a late-bound call. Texts are copied; a VARIANT passed by reference stays the caller's.
class Arguments {
  public:
    Arguments() = default;
    /// Takes them in the order in which the member declares them.
    template <class... Values>
    explicit Arguments(const Values&... values) : Arguments() {
        (add(values), ...);
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments();

    void add(std::string_view text);
    void add(short value);
    void add(float value);
    void add(VARIANT* reference);

    DISPPARAMS parameters() noexcept {
        return {reversed_.data(), nullptr, static_cast<UINT>(reversed_.size()), 0};
    }

  private:
    VARIANT& addNext(VARTYPE type);

    std::vector<VARIANT> reversed_;
};

/// Calls a member of an automation object by its name, as a script does. `flags` is DISPATCH_METHOD for a
/// method, DISPATCH_PROPERTYGET for reading a property. `result` may be null. Throws a RuntimeError
/// with the member's name when the object has no such member, and a ComError when the member fails.
void callByName(IDispatch& object, const wchar_t* name, WORD flags, Arguments&& arguments = Arguments(),
                VARIANT* result = nullptr);

}  // namespace kavrelon
