#include "com/server/Dispatch.h"

#include <oleauto.h>

#include <memory>
#include <new>

#include "com/server/ArgumentFrame.h"
#include "foundation/values/BString.h"
#include "foundation/values/OwnModule.h"

namespace tavio::com {

struct Dispatch::Cache {
  std::vector<std::unique_ptr<Dispatch>> interfaces;

  static Cache& Instance() {
    static auto& cache = *new Cache;  // released by ForgetAll, never while the process ends
    return cache;
  }
};

namespace {

using Microsoft::WRL::ComPtr;

// The type of a parameter as an automation call passes it: enumerations and aliases do not occur in our libraries.
Dispatch::Parameter Describe(const ELEMDESC& element) noexcept {
  const TYPEDESC& type = element.tdesc;
  const auto& description = element.paramdesc;
  const bool byReference = type.vt == VT_PTR && type.lptdesc->vt != VT_USERDEFINED;
  VARTYPE plain = byReference ? type.lptdesc->vt : type.vt;
  if (plain == VT_PTR || plain == VT_USERDEFINED) plain = VT_DISPATCH;
  const bool optional = (description.wParamFlags & (PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) != 0;
  const bool hasDefault = (description.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0;
  return {plain, byReference, optional, hasDefault ? &description.pparamdescex->varDefaultValue : nullptr};
}

std::wstring NameOf(ITypeInfo& info, DISPID member) {
  BString name;
  UINT count = 0;
  info.GetNames(member, name.Receive(), 1, &count);
  return std::wstring(name.View());
}

WORD FlagOf(INVOKEKIND kind) noexcept { return static_cast<WORD>(kind); }

constexpr WORD kAssignments = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
constexpr WORD kReads = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

// Hosts differ in which assignment they make, and call a property ("x.Count()", an enumerator). A method is never read.
bool IsAskedFor(WORD kind, WORD flags) noexcept {
  if (kind & kAssignments) return flags & kAssignments;
  return flags & (kind == DISPATCH_METHOD ? DISPATCH_METHOD : kReads);
}

}  // namespace

Dispatch& Dispatch::For(REFIID interfaceId) noexcept {
  auto& interfaces = Cache::Instance().interfaces;
  for (const auto& known : interfaces) {
    if (known->id_ == interfaceId) return *known;
  }
  return *interfaces.emplace_back(new Dispatch(interfaceId));
}

void Dispatch::ForgetAll() noexcept { Cache::Instance().interfaces.clear(); }

Dispatch::Dispatch(REFIID interfaceId) : id_(interfaceId) {
  ComPtr<ITypeLib> library;
  loaded_ = LoadTypeLibEx(ModuleFile().c_str(), REGKIND_NONE, &library);
  if (SUCCEEDED(loaded_)) loaded_ = library->GetTypeInfoOfGuid(interfaceId, &typeInfo_);
  if (FAILED(loaded_)) return;
  for (UINT i = 0; auto function = FunctionAt(typeInfo_.Get(), i); ++i) {
    AddMember(*function.Get().lent);
    functions_.push_back(std::move(function));
  }
}

void Dispatch::AddMember(const FUNCDESC& function) {
  // Those of IUnknown and IDispatch are listed before, and are nobody's to call by name.
  constexpr auto kInherited = static_cast<SHORT>(7 * sizeof(void*));
  if (function.oVft < kInherited) return;
  Member member{function.memid, NameOf(*typeInfo_.Get(), function.memid), function.invkind, {}};
  for (SHORT i = 0; i < function.cParams; ++i) {
    const auto& element = function.lprgelemdescParam[i];
    if (element.paramdesc.wParamFlags & (PARAMFLAG_FRETVAL | PARAMFLAG_FLCID)) continue;
    member.parameters.push_back(Describe(element));
  }
  members_.push_back(std::move(member));
}

HRESULT Dispatch::GetTypeInfo(ITypeInfo** info) const noexcept {
  if (!info) return E_POINTER;
  *info = nullptr;
  return FAILED(loaded_) ? loaded_ : typeInfo_.CopyTo(info);
}

// The type library compares names as the user's language does, which takes longer than most calls: it is asked for those
// that are not written as it writes them.
HRESULT Dispatch::GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept {
  if (count == 1 && names && names[0] && ids) {
    const std::wstring_view asked(names[0]);
    for (const auto& member : members_) {
      if (member.name.empty() || member.name != asked) continue;
      *ids = member.id;
      return S_OK;
    }
  }
  return FAILED(loaded_) ? loaded_ : typeInfo_->GetIDsOfNames(names, count, ids);
}

// `flags` become the kind of the member that is found, if the caller names the other one or both.
const Dispatch::Member* Dispatch::Find(DISPID id, WORD& flags) const noexcept {
  const Member* other = nullptr;
  for (const auto& member : members_) {
    if (member.id != id) continue;
    if (FlagOf(member.kind) == flags) return &member;
    if (!other && IsAskedFor(FlagOf(member.kind), flags)) other = &member;
  }
  if (other) flags = FlagOf(other->kind);
  return other;
}

HRESULT Dispatch::Invoke(void* self, DISPID id, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* info,
                         UINT* wrongArgument) const noexcept try {
  if (FAILED(loaded_)) return loaded_;
  if (!arguments) return E_POINTER;
  SetErrorInfo(0, nullptr);
  const Member* member = Find(id, flags);
  if (!member) return DISP_E_MEMBERNOTFOUND;
  if (ArgumentFrame::Fits(*member, *arguments)) {
    return typeInfo_->Invoke(self, id, flags, arguments, result, info, wrongArgument);
  }
  ArgumentFrame frame(*member, *arguments);
  HRESULT outcome = frame.Fill(wrongArgument);
  if (FAILED(outcome)) return outcome;
  outcome = typeInfo_->Invoke(self, id, flags, frame.Parameters(), result, info, wrongArgument);
  if (SUCCEEDED(outcome)) frame.WriteBack();
  return outcome;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

}  // namespace tavio::com
