#pragma once

#include "foundation/packages/Vector.h"

namespace tavio {

// The platform's catalogue of predefined actions: what a bill of a type starts with. The catalogue is loaded by the
// first operation that needs it, and again by every next one as long as loading fails; SetList spares the loading.
//
// Records are shared with whoever gets them, except those of GetDefaultActions. No operation throws: a failure shows
// the report box, and the result is empty.
class PredefineActions {
 public:
  // The first record whose FCode equals `code`, letter case included; unset when there is none.
  Dictionary Item(TextView code) noexcept;
  // Takes a Vector of records as the catalogue. Anything else is ignored without a word; the answer is always true.
  bool SetList(const Value& vctItems) noexcept;
  // The catalogue itself; unset when it cannot be loaded.
  Vector GetList() noexcept;
  bool LookUp(TextView code) noexcept;
  // Copies of the actions whose FBillType holds bill type `billType` (counted from 1), in the catalogue's order. The
  // copies are one level deep. A bill type above 31 is reported as an overflow.
  Vector GetDefaultActions(std::int32_t billType) noexcept;
  // Whether a record's FRightMask (0 if it has none) equals `mask`. Failures are silent.
  bool LookupRightMask(std::int32_t mask) noexcept;

 private:
  void Initialize() noexcept;
  void Load() noexcept;
  Dictionary Find(TextView code) const;

  Vector catalogue_;
};

}  // namespace tavio
