#pragma once

#include <optional>

#include "com/server/Dispatch.h"
#include "foundation/values/Value.h"

namespace tavio::com {

// The arguments of one late-bound call in the form that ITypeInfo::Invoke understands: by position, complete, and each
// of its parameter's type.
class ArgumentFrame {
 public:
  ArgumentFrame(const Dispatch::Member& member, const DISPPARAMS& given) noexcept;
  ArgumentFrame(const ArgumentFrame&) = delete;
  ArgumentFrame& operator=(const ArgumentFrame&) = delete;

  // Whether `given` can be handed on as it is. What needs a conversion cannot: Wine loses the arguments before one that
  // it cannot convert.
  static bool Fits(const Dispatch::Member& member, const DISPPARAMS& given) noexcept;

  // Fills the frame. On failure `wrongArgument` tells which of the given arguments was refused.
  HRESULT Fill(UINT* wrongArgument);
  DISPPARAMS* Parameters() noexcept { return &filled_; }
  // After a call that succeeded: gives what it has changed to the variables that by-reference parameters were made
  // from, converted to their types. A variable that cannot hold it stays as it is.
  void WriteBack() noexcept;

 private:
  // One parameter: the caller's argument, what is passed, and what that refers to if it is not the caller's own.
  struct Slot {
    const VARIANTARG* source = nullptr;
    VARIANT passed = {};
    Value held;
    std::optional<Value> before;  // `held` as it was passed, if the member may change it
  };

  HRESULT Place();
  static HRESULT Convert(const Dispatch::Parameter& parameter, Slot& slot);
  static HRESULT Supply(const Dispatch::Parameter& parameter, VARIANT& supplied);
  static HRESULT Pass(const Dispatch::Parameter& parameter, Slot& slot);

  const Dispatch::Member& member_;
  const DISPPARAMS& given_;
  DISPPARAMS filled_ = {};
  DISPID assigned_ = DISPID_PROPERTYPUT;
  std::vector<Slot> slots_;        // in the order of the parameters
  std::vector<VARIANT> reversed_;  // as IDispatch takes them
};

}  // namespace tavio::com
