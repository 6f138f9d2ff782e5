#pragma once

#include "com/server/Dispatch.h"

namespace tavio::com {

// The arguments of one late-bound call in the form that ITypeInfo::Invoke understands: by position, complete, and each
// of its parameter's type.
class ArgumentFrame {
 public:
  ArgumentFrame(const Dispatch::Member& member, const DISPPARAMS& given) noexcept;
  ~ArgumentFrame();
  ArgumentFrame(const ArgumentFrame&) = delete;
  ArgumentFrame& operator=(const ArgumentFrame&) = delete;

  // Whether `given` can be handed on as it is. What needs a conversion cannot: Wine loses the arguments before one that
  // it cannot convert.
  static bool Fits(const Dispatch::Member& member, const DISPPARAMS& given) noexcept;

  // Fills the frame. On failure `wrongArgument` tells which of the given arguments was refused.
  HRESULT Fill(UINT* wrongArgument);
  DISPPARAMS* Parameters() noexcept { return &filled_; }
  // After a call that succeeded: hands what by-reference parameters hold to the variables they were made from.
  void WriteBack() noexcept;

 private:
  // One parameter: what is passed, the converted value it may refer to, and the caller's argument.
  struct Slot {
    VARIANT passed;
    VARIANT converted;
    VARIANTARG* source = nullptr;
  };

  HRESULT Place();
  static HRESULT Convert(const Dispatch::Parameter& parameter, Slot& slot);
  static HRESULT Supply(const Dispatch::Parameter& parameter, VARIANT& supplied);
  static void Pass(const Dispatch::Parameter& parameter, Slot& slot) noexcept;

  const Dispatch::Member& member_;
  const DISPPARAMS& given_;
  DISPPARAMS filled_ = {};
  DISPID assigned_ = DISPID_PROPERTYPUT;
  std::vector<Slot> slots_;        // in the order of the parameters
  std::vector<VARIANT> reversed_;  // as IDispatch takes them
};

}  // namespace tavio::com
