#pragma once

#include "foundation/packages/Vector.h"

namespace tavio {

// The platform's business scenarios: the situations in which an action fires and its message is sent. A scenario is
// known by its mask (FMask); the masks make a tree, which is written into the records as "Parent" (the parent's mask, 0
// for a root) and "Level" (0 for a root).
//
// The scenarios are loaded and sorted by the first operation that needs them, and again by the next one if that
// failed. The records, the set and the list are shared with whoever gets them; nothing is copied. No operation throws:
// a failure shows the report box, and the result is unset.
//
// `mask` and `id` narrow a list to the records whose FID equals `id` (an absent one is 0) or whose FMask shares a bit
// with `mask`; with both 0 the object's own package is answered.
class BillEnvironments {
 public:
  // Keyed by the decimal text of FMask, in the order of the source.
  Dictionary GetList(std::int32_t mask = 0, std::int32_t id = 0) noexcept;
  // In the order of the tree. Masks greater than `mask` do not match it: the scenario itself and what is below it.
  Vector GetSortList(std::int32_t mask = 0, std::int32_t id = 0) noexcept;
  // The same with masks of any size.
  Vector GetSortListMsg(std::int32_t mask = 0, std::int32_t id = 0) noexcept;
  // The scenarios whose FBillType holds bill type `billType` (counted from 1), keyed as in GetList. A bill type above
  // 31 is reported as an overflow.
  Dictionary GetBillTypeList(std::int32_t billType) noexcept;
  // The scenario with that mask; with mask 0, the first one with that id, unless it is 0 too.
  Dictionary GetItem(std::int32_t mask = 0, std::int32_t id = 0) noexcept;
  // The platform's menu of classes, as its service answers it.
  Dictionary GetClassMenu() noexcept;

 private:
  void Initialize() noexcept;
  void SortList() noexcept;
  void CollectSet();
  void LoadSet() noexcept;
  void LoadList() noexcept;
  Dictionary ItemWithId(std::int32_t id) const;

  Vector source_;
  Dictionary set_;
  Vector sorted_;
};

}  // namespace tavio
