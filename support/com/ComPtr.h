#pragma once

#include <unknwn.h>

#include <utility>

namespace kavrelon {

/// Holds one reference to a COM object.
template <class Interface>
class ComPtr {
  public:
    ComPtr() = default;
    /// Adds a reference.
    explicit ComPtr(Interface* object) noexcept : object_(object) {
        if (object_ != nullptr) object_->AddRef();
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.object_) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ~ComPtr() {
        if (object_ != nullptr) object_->Release();
    }
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    Interface* get() const noexcept { return object_; }
    Interface* operator->() const noexcept { return object_; }
    Interface& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// For an out parameter: takes over the reference that a call stores here. The old one is released.
    Interface** put() noexcept {
        *this = ComPtr();
        return &object_;
    }
    void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }
    /// Another interface of the object; empty when it has no such interface.
    template <class Other>
    ComPtr<Other> query() const noexcept {
        ComPtr<Other> other;
        if (object_ != nullptr) object_->QueryInterface(__uuidof(Other), other.putVoid());
        return other;
    }
    /// Gives the reference to the caller.
    [[nodiscard]] Interface* detach() noexcept { return std::exchange(object_, nullptr); }

  private:
    Interface* object_ = nullptr;
};

}  // namespace kavrelon
