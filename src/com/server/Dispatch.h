#pragma once

#include <windows.h>
#include <oaidl.h>
#include <wrl/client.h>

#include <string>
#include <vector>

#include "com/server/TypeDescription.h"

namespace tavio::com {

// Late-bound calls on one dual interface, over ITypeInfo::Invoke of the type library embedded in this server. In front
// of it stands what script hosts need:
//  - a variable passed for a typed parameter (VT_BYREF|VT_VARIANT) is converted, and takes what a
//    by-reference parameter leaves behind;
//  - arguments are given by name, and those that have a default are left out, by-reference ones too;
//  - an assignment reaches a property that knows only the other kind of assignment ("x.Data = d" and "Set x.Data = d"),
//    and a call reaches a property ("x.Count()" in JScript).
// A refused argument answers DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW, DISP_E_BADPARAMCOUNT, DISP_E_PARAMNOTOPTIONAL or, by
// name, DISP_E_PARAMNOTFOUND.
class Dispatch {
 public:
  struct Parameter {
    VARTYPE type;  // without VT_BYREF
    bool byReference;
    bool optional;
    const VARIANT* fallback;  // null if the parameter has no default
  };
  struct Member {
    DISPID id;
    std::wstring name;  // as the type library writes it; empty if it has none
    INVOKEKIND kind;
    std::vector<Parameter> parameters;  // those that a caller passes
  };

  // Built at first use and kept until the server may be unloaded.
  static Dispatch& For(REFIID interfaceId) noexcept;
  static void ForgetAll() noexcept;

  HRESULT GetTypeInfo(ITypeInfo** info) const noexcept;
  HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept;
  // `self` is the object as the dual interface.
  HRESULT Invoke(void* self, DISPID id, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* info,
                 UINT* wrongArgument) const noexcept;

 private:
  explicit Dispatch(REFIID interfaceId);
  const Member* Find(DISPID id, WORD& flags) const noexcept;
  void AddMember(const FUNCDESC& function);

  IID id_;
  Microsoft::WRL::ComPtr<ITypeInfo> typeInfo_;
  HRESULT loaded_ = E_FAIL;
  std::vector<Member> members_;
  // The descriptions stay alive, since the defaults of parameters are read in place.
  std::vector<FunctionDescription> functions_;

  struct Cache;
  friend struct Cache;
};

}  // namespace tavio::com
