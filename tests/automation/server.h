// The real tornby.dll, and calls to it as a script makes them.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "automation/com/com.h"
#include "base/text.h"
#include "tornby_idl.h"

namespace tornby::testing {

using automation::ComPtr;
using automation::OwnedVariant;

/// The DLL, loaded without the registry for as long as the object lives. Tests compare what it keeps alive.
class Server {
 public:
  Server();
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  ComPtr<IClassFactory> factory(REFCLSID clsid) const;

  template <class Interface>
  ComPtr<Interface> create(REFCLSID clsid) const {
    ComPtr<Interface> object;
    EXPECT_EQ(factory(clsid)->CreateInstance(nullptr, __uuidof(Interface), object.out_void()), S_OK);
    return object;
  }

  /// True when no object is left: the DLL may be unloaded.
  bool is_idle() const;

  FARPROC entry(const char* name) const { return ::GetProcAddress(library_, name); }

 private:
  HMODULE library_;
};

/// The full name of the DLL under test.
std::wstring dll_path();

/// Makes the classes known through the manifest beside the DLL, for as long as the object lives.
class ManifestActivation {
 public:
  ManifestActivation();
  ~ManifestActivation();
  ManifestActivation(const ManifestActivation&) = delete;
  ManifestActivation& operator=(const ManifestActivation&) = delete;

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
};

class Bstr {
 public:
  Bstr() : text_(nullptr) {}
  Bstr(const wchar_t* text) : text_(::SysAllocString(text)) {}
  explicit Bstr(StringView text)
      : text_(::SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size()))) {}
  ~Bstr() { ::SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  operator BSTR() const { return text_; }
  BSTR* address() { return &text_; }

 private:
  BSTR text_;
};

VARIANT long_variant(LONG value);
VARIANT short_variant(SHORT value);
/// Owned by whoever clears it.
VARIANT string_variant(const wchar_t* text);
/// A script's variable: the member may change it.
VARIANT variable(VARIANT* value);

/// What a late-bound call gave: the HRESULT, the result and what an engine would show of an error.
struct Outcome {
  HRESULT result = S_OK;
  OwnedVariant value;
  HRESULT error = S_OK;
  std::wstring description;
  std::wstring source;
};

/// Calls a member by name. Arguments stand in the order of the source text and stay the caller's.
void call(Outcome& outcome, IDispatch* object, const wchar_t* member, WORD flags,
          std::initializer_list<VARIANT> arguments = {});

}  // namespace tornby::testing
