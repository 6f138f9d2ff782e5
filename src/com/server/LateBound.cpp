#include "com/server/LateBound.h"

#include "com/server/ByReference.h"
#include "foundation/values/Error.h"
#include "foundation/values/Text.h"

namespace tavio::com {
namespace {

HRESULT Explain(const Error& error, EXCEPINFO* info) noexcept {
  if (!info) return error.Number();
  *info = {};
  info->scode = error.Number();
  info->bstrSource = SysAllocString(error.Source().c_str());
  info->bstrDescription = SysAllocString(error.Description().c_str());
  return DISP_E_EXCEPTION;
}

}  // namespace

const VARIANT& Arguments::Raw(std::size_t index) const {
  if (index >= Count()) throw Error::FromHresult(DISP_E_BADPARAMCOUNT);
  return parameters_.rgvarg[Count() - 1 - index];
}

Value Arguments::OrEmpty(std::size_t index) const { return index < Count() ? At(index) : Value(); }

void Arguments::Return(std::size_t index, const Value& value) const { Check(StoreInto(Raw(index), value)); }

STDMETHODIMP LateBound::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP LateBound::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) try {
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  if (count != 1) return DISP_E_UNKNOWNNAME;
  const auto found = members_.find(ToUpper(names[0]));
  if (found == members_.end()) return DISP_E_UNKNOWNNAME;
  ids[0] = found->second.id;
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

const LateBound::Member* LateBound::Find(DISPID id) const {
  const DISPID wanted = id == DISPID_VALUE ? default_ : id;
  for (const auto& [name, member] : members_) {
    if (member.id == wanted) return &member;
  }
  return nullptr;
}

STDMETHODIMP LateBound::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                               EXCEPINFO* info, UINT*) {
  const Member* member = Find(id);
  const bool assigns = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  const Method* method = !member ? nullptr : assigns ? &member->assign : &member->read;
  if (!method || !*method) return DISP_E_MEMBERNOTFOUND;
  AddRef();  // a call may let go of the last reference to its own object
  HRESULT outcome = S_OK;
  try {
    Arguments arguments(*parameters);
    Value answer = (*method)(arguments);
    if (result) *result = answer.Detach();
  } catch (...) {
    outcome = Explain(Translate(), info);
  }
  Release();
  return outcome;
}

void LateBound::Add(const wchar_t* name, Method read) { Add(name, std::move(read), nullptr); }

void LateBound::Add(const wchar_t* name, Method read, Method assign) {
  const auto id = static_cast<DISPID>(members_.size() + 1);
  members_.insert_or_assign(ToUpper(name), Member{id, std::move(read), std::move(assign)});
}

void LateBound::Default(const wchar_t* name) { default_ = members_.at(ToUpper(name)).id; }

}  // namespace tavio::com
