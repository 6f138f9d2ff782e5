#pragma once

#include "tests/support/FakeComponent.h"
#include "tests/support/Packages.h"

namespace tavio::test {

// A record set of a platform component: a Vector of records, read by EOF, MoveNext, Fields, Item and Value. A field
// that the current record lacks is an error, as it is there.
class FakeRecords : public FakeObject {
 public:
  explicit FakeRecords(Vector records);

 private:
  Vector records_;
  std::int32_t position_ = 1;
  FakeObject fields_;
  FakeObject field_;
  Value current_;
};

}  // namespace tavio::test
