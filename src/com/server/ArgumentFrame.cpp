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

// The argument behind a variable or a typed reference.
VARIANT* Behind(VARIANT* argument) noexcept { return argument->vt == kVariable ? argument->pvarVal : argument; }

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
    const bool anything = parameter.type == VT_VARIANT && !(type & VT_BYREF) && !IsLeftOut(&given.rgvarg[i]);
    if (type != ExpectedType(parameter) && !anything) return false;
  }
  return true;
}

HRESULT ArgumentFrame::Fill(UINT* wrongArgument) {
  slots_.resize(member_.parameters.size());
  for (auto& slot : slots_) {
    VariantInit(&slot.passed);
    VariantInit(&slot.converted);
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
  VARIANT* value = slot.source ? Behind(slot.source) : nullptr;
  if (IsLeftOut(value)) {
    if (!parameter.optional) return DISP_E_PARAMNOTOPTIONAL;
    if (!parameter.fallback && parameter.type == VT_VARIANT) {
      slot.converted.vt = VT_ERROR;
      slot.converted.scode = DISP_E_PARAMNOTFOUND;
    } else if (parameter.fallback) {
      const HRESULT copied = VariantCopy(&slot.converted, const_cast<VARIANT*>(parameter.fallback));
      if (FAILED(copied)) return copied;
      if (parameter.type == VT_DISPATCH) slot.converted.vt = VT_DISPATCH;  // its default is written as the number 0
    } else {
      slot.converted.vt = parameter.type;
    }
    value = nullptr;
  }
  if (value && value->vt == ExpectedType(parameter)) {
    slot.passed = *value;
    return S_OK;
  }
  if (value) {
    const HRESULT copied = VariantCopyInd(&slot.converted, value);
    if (FAILED(copied)) return copied;
  }
  if (parameter.type != VT_VARIANT && slot.converted.vt != parameter.type) {
    const HRESULT changed = VariantChangeTypeEx(&slot.converted, &slot.converted, LOCALE_USER_DEFAULT,
                                                VARIANT_ALPHABOOL, parameter.type);
    if (FAILED(changed)) return changed;
  }
  slot.passed = slot.converted;
  if (parameter.byReference) {
    slot.passed.vt = ExpectedType(parameter);
    slot.passed.byref = parameter.type == VT_VARIANT ? static_cast<void*>(&slot.converted) : &slot.converted.byref;
  }
  return S_OK;
}

void ArgumentFrame::WriteBack() noexcept {
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    auto& slot = slots_[i];
    const bool fromVariable = slot.source && slot.source->vt == kVariable;
    const bool converted = slot.passed.vt & VT_BYREF && slot.passed.byref == &slot.converted.byref;
    if (fromVariable && converted && member_.parameters[i].byReference) {
      VariantCopy(slot.source->pvarVal, &slot.converted);
    }
  }
}

}  // namespace tavio::com
