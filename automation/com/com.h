// The COM headers, and the RAII types for what COM hands out.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cguid.h>
#include <ole2.h>
#include <olectl.h>

#include <utility>

namespace tornby::automation {

/// A counted reference to a COM object.
template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  explicit ComPtr(Interface* shared) : object_(shared) {
    if (object_) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() {
    if (object_) object_->Release();
  }

  /// Takes over a reference that somebody has already counted.
  static ComPtr adopt(Interface* owned) {
    ComPtr pointer;
    pointer.object_ = owned;
    return pointer;
  }

  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// The reference itself; the caller releases it.
  Interface* detach() { return std::exchange(object_, nullptr); }

  /// For functions that hand out a reference through an argument. What was held is released first.
  Interface** out() {
    *this = ComPtr();
    return &object_;
  }
  void** out_void() { return reinterpret_cast<void**>(out()); }

 private:
  Interface* object_ = nullptr;
};

/// A VARIANT that clears itself.
class OwnedVariant {
 public:
  OwnedVariant() { ::VariantInit(&value_); }
  explicit OwnedVariant(const VARIANT& taken_over) : value_(taken_over) {}
  ~OwnedVariant() { ::VariantClear(&value_); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;

  VARIANT* get() { return &value_; }
  VARIANT& operator*() { return value_; }
  VARIANT* operator->() { return &value_; }
  VARIANT detach() {
    const VARIANT value = value_;
    ::VariantInit(&value_);
    return value;
  }

 private:
  VARIANT value_;
};

/// Throws when a COM call fails; see error_edge.h for what becomes of it.
void check(HRESULT result);

}  // namespace tornby::automation
