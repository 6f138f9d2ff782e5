#include "com/server/ArgumentFrame.h"

#include <oleauto.h>

namespace tavio::com {
namespace {

constexpr VARTYPE kVariable = VT_BYREF | VT_VARIANT;

bool IsAssignment(const Dispatch::Member& member) noexcept {
  return member.kind == INVOKE_PROPERTYPUT || member.kind == INVOKE_PROPERTYPUTREF;
}

bool IsLeftOut(const VARIANT* argument) noexcept {
  return !argument || (argument->vt == VT_ERROR && argument->scode == DISP_E_PARAMNOTFOUND);
}

VARTYPE ExpectedType(const Dispatch::Parameter& parameter) noexcept {
  return static_cast<VARTYPE>(parameter.byReference ? VT_BYREF | parameter.type : parameter.type);
}

// The argument itself or, if it is a variable, what that holds. Null if it refers to nothing.
const VARIANT* Behind(const VARIANT* argument) noexcept {
  if (argument && argument->vt == kVariable) argument = argument->pvarVal;
  return argument && argument->vt & VT_BYREF && !argument->byref ? nullptr : argument;
}

}  // namespace

ArgumentFrame::ArgumentFrame(const Dispatch::Member& member, const DISPPARAMS& given) noexcept
    : member_(member), given_(given) {}

ArgumentFrame::~ArgumentFrame() {
  for (auto& slot : slots_) VariantClear(&slot.converted);
}

bool ArgumentFrame::Fits(const Dispatch::Member& member, const DISPPARAMS& given) noexcept {
  const UINT namedAllowed = IsAssignment(member) ? 1 : 0;
  if (given.cArgs != member.parameters.size() || given.cNamedArgs != namedAllowed) return false;
  for (UINT i = 0; i < given.cArgs; ++i) {
    const auto& parameter = member.parameters[given.cArgs - 1 - i];
    const VARTYPE type = given.rgvarg[i].vt;
    if (type & VT_BYREF && !given.rgvarg[i].byref) return false;
    const bool anything = parameter.type == VT_VARIANT && !(type & VT_BYREF) && !IsLeftOut(&given.rgvarg[i]);
    if (type != ExpectedType(parameter) && !anything) return false;
  }
  return true;
}

HRESULT ArgumentFrame::Fill(UINT* wrongArgument) {
  slots_.resize(member_.parameters.size());
  for (auto& slot : slots_) {
    slot.passed = {};
    slot.converted = {};
  }
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

HRESULT ArgumentFrame::Convert(const Dispatch::Parameter& parameter, Slot& slot) {
  const VARIANT* value = Behind(slot.source);
  const VARTYPE expected = ExpectedType(parameter);
  HRESULT result = S_OK;
  if (IsLeftOut(value)) {
    result = Supply(parameter, slot.converted);
  } else if (slot.source->vt == expected) {
    slot.passed = *slot.source;
    return S_OK;
  } else if (value->vt == expected || (expected == VT_VARIANT && !(value->vt & VT_BYREF))) {
    slot.passed = *value;
    return S_OK;
  } else {
    result = VariantCopyInd(&slot.converted, const_cast<VARIANT*>(value));  // only read
  }
  if (SUCCEEDED(result) && parameter.type != VT_VARIANT && slot.converted.vt != parameter.type) {
    result =
        VariantChangeTypeEx(&slot.converted, &slot.converted, LOCALE_USER_DEFAULT, VARIANT_ALPHABOOL, parameter.type);
  }
  if (SUCCEEDED(result)) Pass(parameter, slot);
  return result;
}

// A parameter that may be left out and has no default: "missing" if it is a VARIANT, otherwise its type's zero.
HRESULT ArgumentFrame::Supply(const Dispatch::Parameter& parameter, VARIANT& supplied) {
  if (!parameter.optional) return DISP_E_PARAMNOTOPTIONAL;
  if (parameter.type == VT_DISPATCH) {  // its default is written as the number 0
    supplied.vt = VT_DISPATCH;
    supplied.pdispVal = nullptr;
    return S_OK;
  }
  if (parameter.fallback) return VariantCopy(&supplied, const_cast<VARIANT*>(parameter.fallback));  // only read
  supplied.vt = parameter.type == VT_VARIANT ? VARTYPE{VT_ERROR} : parameter.type;
  if (parameter.type == VT_VARIANT) supplied.scode = DISP_E_PARAMNOTFOUND;
  return S_OK;
}

void ArgumentFrame::Pass(const Dispatch::Parameter& parameter, Slot& slot) noexcept {
  slot.passed = slot.converted;
  if (!parameter.byReference) return;
  slot.passed.vt = ExpectedType(parameter);
  slot.passed.byref = parameter.type == VT_VARIANT ? static_cast<void*>(&slot.converted) : &slot.converted.byref;
}

void ArgumentFrame::WriteBack() noexcept {
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    auto& slot = slots_[i];
    const bool fromVariable = slot.source && slot.source->vt == kVariable && Behind(slot.source);
    const bool converted = slot.passed.vt & VT_BYREF && slot.passed.byref == &slot.converted.byref;
    if (fromVariable && converted && member_.parameters[i].byReference) {
      VariantCopy(slot.source->pvarVal, &slot.converted);
    }
  }
}

}  // namespace tavio::com
