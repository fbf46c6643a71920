#pragma once

#include <windows.h>

#include <oleauto.h>

#include "support/win32/Module.h"

namespace kavrelon {

/// One interface of a base that implements several, and the interfaces that it extends: QueryInterface
/// answers for those too.
template <class Interface, class... Extended>
struct Face {
    static bool answersTo(REFIID iid) {
        return iid == __uuidof(Interface) || ((iid == __uuidof(Extended)) || ...);
    }
    using Type = Interface;
};

/// All interfaces of a base that implements several. The base calls this type `Faces`.
template <class... Each>
struct FaceList {
    template <class Base>
    static void* find(Base& base, REFIID iid) {
        void* found = nullptr;
        ((found =
              found == nullptr && Each::answersTo(iid) ? static_cast<typename Each::Type*>(&base) : found),
         ...);
        return found;
    }
};

/// An interface for the list of `Implements`: QueryInterface answers for it and for those that it extends.
template <class Interface, class... Extended>
class Extending : public Interface {
  public:
    using Faces = FaceList<Face<Interface, Extended...>>;
};

namespace detail {
template <class Base>
concept HasFaces = requires {
    typename Base::Faces;
};

template <class Base>
struct InterfaceOf {
    using Type = Base;
    static constexpr bool kDual = false;
};
template <class Base>
requires requires {
    typename Base::Interface;
}
struct InterfaceOf<Base> {
    using Type = typename Base::Interface;
    static constexpr bool kDual = true;
};
}  // namespace detail

/// IUnknown for a class that implements the given interfaces, each of which is a plain interface, a
/// DualInterface, or a base that lists its `Faces`. The first is also the object's IUnknown and, when it is
/// dual, its IDispatch. All dual ones report errors through error objects.
///
/// An object starts with one reference, which belongs to its maker, and keeps the library loaded until it
/// ends.
template <class First, class... Others>
class Implements : public First, public Others..., public ISupportErrorInfo, private ModuleLock {
  public:
    Implements(const Implements&) = delete;
    Implements& operator=(const Implements&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = find(iid);
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

    STDMETHODIMP_(ULONG) Release() override {
        const LONG left = InterlockedDecrement(&references_);
        if (left == 0) {
            // An object released in the destructor may add and release a reference to this one, which must
            // not delete it again.
            references_ = 1;
            delete this;
        }
        return static_cast<ULONG>(left);
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override {
        return isDual<First>(iid) || (isDual<Others>(iid) || ...) ? S_OK : S_FALSE;
    }

  protected:
    Implements() = default;
    virtual ~Implements() = default;

  private:
    template <class Base>
    static bool isDual(REFIID iid) {
        if constexpr (detail::HasFaces<Base>)
            return false;
        else
            return detail::InterfaceOf<Base>::kDual &&
                   iid == __uuidof(typename detail::InterfaceOf<Base>::Type);
    }

    template <class Base>
    void* as(REFIID iid) {
        if constexpr (detail::HasFaces<Base>) {
            return Base::Faces::find(static_cast<Base&>(*this), iid);
        } else {
            using Named = typename detail::InterfaceOf<Base>::Type;
            return iid == __uuidof(Named) ? static_cast<Named*>(static_cast<Base*>(this)) : nullptr;
        }
    }

    void* find(REFIID iid) {
        if (iid == IID_IUnknown || (detail::InterfaceOf<First>::kDual && iid == IID_IDispatch)) {
            return static_cast<typename detail::InterfaceOf<First>::Type*>(static_cast<First*>(this));
        }
        if (iid == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
        void* found = as<First>(iid);
        ((found = found != nullptr ? found : as<Others>(iid)), ...);
        return found;
    }

    LONG references_ = 1;
};

}  // namespace kavrelon
