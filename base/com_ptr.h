// An owner of one reference to a COM interface. Attach takes the reference over without adding one (mingw's
// own ComPtr adds one there).
#pragma once

#include <unknwn.h>

#include <utility>

namespace quorvex {

template <typename Interface>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): a null pointer reads as one
  ComPtr(const ComPtr& other) : pointer(other.pointer) {
    if (pointer != nullptr) pointer->AddRef();
  }
  ComPtr(ComPtr&& other) noexcept : pointer(std::exchange(other.pointer, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer, other.pointer);
    return *this;
  }
  ~ComPtr() { Reset(); }

  // Owns `pointer` from here on; its reference count stays as it is.
  static ComPtr Attach(Interface* pointer) {
    ComPtr owner;
    owner.pointer = pointer;
    return owner;
  }

  // Shares `pointer`: adds a reference.
  static ComPtr Share(Interface* pointer) {
    if (pointer != nullptr) pointer->AddRef();
    return Attach(pointer);
  }

  [[nodiscard]] Interface* Get() const { return pointer; }
  Interface* operator->() const { return pointer; }
  explicit operator bool() const { return pointer != nullptr; }

  void Reset() {
    if (Interface* old = std::exchange(pointer, nullptr)) old->Release();
  }

  // Gives the reference away.
  [[nodiscard]] Interface* Detach() { return std::exchange(pointer, nullptr); }

  // For a call that hands out an interface: what was held is released first.
  [[nodiscard]] Interface** Receive() {
    Reset();
    return &pointer;
  }
  [[nodiscard]] void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }

  // The same object's other interface; null when it has none.
  template <typename Other>
  [[nodiscard]] ComPtr<Other> As() const {
    ComPtr<Other> other;
    if (pointer != nullptr) pointer->QueryInterface(__uuidof(Other), other.ReceiveVoid());
    return other;
  }

 private:
  Interface* pointer = nullptr;
};

}  // namespace quorvex
