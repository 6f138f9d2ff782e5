#pragma once

#include <functional>
#include <map>
#include <string>

#include "com/server/ComObject.h"
#include "foundation/values/Value.h"

namespace tavio::com {

// The arguments of one call by name, in source order from 0.
class Arguments {
 public:
  explicit Arguments(const DISPPARAMS& parameters) noexcept : parameters_(parameters) {}

  std::size_t Count() const noexcept { return parameters_.cArgs; }
  // As it was passed, for those who check how; raises DISP_E_BADPARAMCOUNT if there is none.
  const VARIANT& Raw(std::size_t index) const;
  // A copy of the value behind any reference.
  Value At(std::size_t index) const { return Value::CopyOf(Raw(index)); }
  // As At, or empty if the argument was left out.
  Value OrEmpty(std::size_t index) const;
  // Stores into a by-reference argument, converted to its type; an argument passed by value is left alone.
  void Return(std::size_t index, const Value& value) const;

 private:
  const DISPPARAMS& parameters_;
};

// A COM object whose members are functions by name (matched without regard to letter case), reached through IDispatch
// only. An Error, or any other exception, becomes the EXCEPINFO of the call.
class LateBound : public ComObject<IDispatch> {
 public:
  using Method = std::function<Value(Arguments& arguments)>;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                      UINT*) override;

 protected:
  // Answers a method call and a property read alike.
  void Add(const wchar_t* name, Method read);
  // A property that is also assigned, by value or by reference; the new value is the last argument.
  void Add(const wchar_t* name, Method read, Method assign);
  // The member that a call without a name reaches.
  void Default(const wchar_t* name);

 private:
  struct Member {
    DISPID id;
    Method read;
    Method assign;
  };

  const Member* Find(DISPID id) const;

  std::map<std::wstring, Member> members_;  // by upper-cased name
  DISPID default_ = DISPID_UNKNOWN;
};

}  // namespace tavio::com
