#pragma once

#include "tests/support/FakeComponent.h"
#include "tests/support/Packages.h"

namespace tavio::test {

// A keyed container of a host's own: it has the containers' members by name only, and raises "无此字段" where `Value`
// reads a key that is absent. Members are made to fail with On, before Handle is called.
class ForeignRecord : public FakeObject {
 public:
  explicit ForeignRecord(Dictionary content);

  // One more object of it, over the same content.
  Dictionary Handle() { return Dictionary(New()); }
};

// A member that raises that description.
LateBound::Method Failing(const wchar_t* description);

}  // namespace tavio::test
