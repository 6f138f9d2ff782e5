#include "com/server/ArgumentFrame.h"

#include <oleauto.h>

#include <algorithm>

#include "com/server/ByReference.h"

namespace tavio::com {
namespace {

bool IsAssignment(const Dispatch::Member& member) noexcept {
  return member.kind == INVOKE_PROPERTYPUT || member.kind == INVOKE_PROPERTYPUTREF;
}

bool IsLeftOut(const VARIANT* argument) noexcept {
  return !argument || (argument->vt == VT_ERROR && argument->scode == DISP_E_PARAMNOTFOUND);
}

VARTYPE ExpectedType(const Dispatch::Parameter& parameter) noexcept {
  return static_cast<VARTYPE>(parameter.byReference ? VT_BYREF | parameter.type : parameter.type);
}

// Whatever else a conversion answers, it tells of an argument of a wrong type.
HRESULT Refusal(HRESULT why) noexcept {
  constexpr HRESULT kKnown[] = {DISP_E_OVERFLOW, DISP_E_PARAMNOTOPTIONAL, E_OUTOFMEMORY};
  return std::ranges::count(kKnown, why) ? why : DISP_E_TYPEMISMATCH;
}

bool IsOfType(VARTYPE type, VARTYPE expected) noexcept {
  return type == expected || (expected == VT_VARIANT && !(type & VT_BYREF));
}

}  // namespace

ArgumentFrame::ArgumentFrame(const Dispatch::Member& member, const DISPPARAMS& given) noexcept
    : member_(member), given_(given) {}

bool ArgumentFrame::Fits(const Dispatch::Member& member, const DISPPARAMS& given) noexcept {
  const UINT namedAllowed = IsAssignment(member) ? 1 : 0;
  if (given.cArgs != member.parameters.size() || given.cNamedArgs != namedAllowed) return false;
  for (UINT i = 0; i < given.cArgs; ++i) {
    const auto& parameter = member.parameters[given.cArgs - 1 - i];
    const VARTYPE type = given.rgvarg[i].vt;
    if (type & VT_BYREF && !given.rgvarg[i].byref) return false;
    if (IsLeftOut(&given.rgvarg[i]) || !IsOfType(type, ExpectedType(parameter))) return false;
  }
  return true;
}

HRESULT ArgumentFrame::Fill(UINT* wrongArgument) {
  slots_.resize(member_.parameters.size());
  HRESULT result = Place();
  for (std::size_t i = 0; SUCCEEDED(result) && i < slots_.size(); ++i) {
    result = Convert(member_.parameters[i], slots_[i]);
    if (FAILED(result) && wrongArgument && slots_[i].source) {
      *wrongArgument = static_cast<UINT>(slots_[i].source - given_.rgvarg);
    }
  }
  if (FAILED(result)) return result;

  for (auto slot = slots_.rbegin(); slot != slots_.rend(); ++slot) reversed_.push_back(slot->passed);
  filled_.rgvarg = reversed_.data();
  filled_.cArgs = static_cast<UINT>(reversed_.size());
  if (IsAssignment(member_)) {
    filled_.rgdispidNamedArgs = &assigned_;
    filled_.cNamedArgs = 1;
  }
  return S_OK;
}

HRESULT ArgumentFrame::Place() {
  if (given_.cArgs > slots_.size() || given_.cNamedArgs > given_.cArgs) return DISP_E_BADPARAMCOUNT;
  const UINT positional = given_.cArgs - given_.cNamedArgs;
  for (UINT i = 0; i < positional; ++i) slots_[i].source = &given_.rgvarg[given_.cArgs - 1 - i];
  for (UINT i = 0; i < given_.cNamedArgs; ++i) {
    const DISPID name = given_.rgdispidNamedArgs[i];
    const auto position = name == DISPID_PROPERTYPUT ? slots_.size() - 1 : static_cast<std::size_t>(name);
    if (position >= slots_.size() || slots_[position].source) return DISP_E_PARAMNOTFOUND;
    slots_[position].source = &given_.rgvarg[i];
  }
  return S_OK;
}

// What a variable holds is never lent to the member: host code may change the variable, here at the conversion of another
// argument or later.
HRESULT ArgumentFrame::Convert(const Dispatch::Parameter& parameter, Slot& slot) {
  const VARIANT* value = Behind(slot.source);
  const VARTYPE expected = ExpectedType(parameter);
  HRESULT result = S_OK;
  VARIANT* held = slot.held.InPlace();
  if (IsLeftOut(value)) {
    result = Supply(parameter, *held);
  } else if (IsOfType(value->vt, expected) && (parameter.byReference || value == slot.source)) {
    slot.passed = *value;
    return S_OK;
  } else {
    result = VariantCopyInd(held, const_cast<VARIANT*>(value));  // only read
  }
  if (SUCCEEDED(result) && parameter.type != VT_VARIANT && held->vt != parameter.type) {
    result = VariantChangeTypeEx(held, held, LOCALE_USER_DEFAULT, VARIANT_ALPHABOOL, parameter.type);
  }
  return SUCCEEDED(result) ? Pass(parameter, slot) : Refusal(result);
}

// A parameter that may be left out and has no default: "missing" if it is a VARIANT, otherwise its type's zero.
HRESULT ArgumentFrame::Supply(const Dispatch::Parameter& parameter, VARIANT& supplied) {
  supplied = {};
  if (!parameter.optional) return DISP_E_PARAMNOTOPTIONAL;
  if (parameter.type == VT_DISPATCH) {  // its default is written as the number 0
    supplied.vt = VT_DISPATCH;
    return S_OK;
  }
  if (parameter.fallback) return VariantCopy(&supplied, const_cast<VARIANT*>(parameter.fallback));  // only read
  supplied.vt = parameter.type == VT_VARIANT ? VARTYPE{VT_ERROR} : parameter.type;
  if (parameter.type == VT_VARIANT) supplied.scode = DISP_E_PARAMNOTFOUND;
  return S_OK;
}

HRESULT ArgumentFrame::Pass(const Dispatch::Parameter& parameter, Slot& slot) {
  slot.passed = slot.held.Raw();
  if (!parameter.byReference) return S_OK;
  VARIANT* held = slot.held.InPlace();
  slot.passed.vt = ExpectedType(parameter);
  slot.passed.byref = parameter.type == VT_VARIANT ? static_cast<void*>(held) : &held->byref;
  return VariantCopy(slot.before.emplace().InPlace(), held);
}

void ArgumentFrame::WriteBack() noexcept {
  for (const auto& slot : slots_) {
    if (slot.source && slot.before && !Same(*slot.before, slot.held)) StoreInto(*slot.source, slot.held);
  }
}

}  // namespace tavio::com
