#pragma once

#include "foundation/packages/Vector.h"
#include "tests/support/FakeComponent.h"

// Containers that are not ours.

namespace tavio::test {

// Another container over a real one: it has its members by name, and one interface of it at most.
class ForeignContainer : public FakeObject {
 public:
  explicit ForeignContainer(ComPtr<IDispatch> real, const IID& shown = IID_NULL);
};

// A keyed container of a host's own, by name only, that raises "无此字段" where `Value` reads a key that is absent.
// Members are made to fail with On, before Handle is called.
class ForeignRecord : public ForeignContainer {
 public:
  explicit ForeignRecord(const Dictionary& content);

  // One more object of it, over the same content.
  Dictionary Handle() { return Dictionary(New()); }
};

// The three ways in which a container can be reached: ours lends what it stores, another one has the interface, and a
// host's own has the members' names and nothing else. New containers of each.
struct ContainerKind {
  const char* name;
  ComPtr<IDispatch> (*newDictionary)();
  ComPtr<IDispatch> (*newVector)();
};
extern const ContainerKind kContainerKinds[3];

inline std::ostream& operator<<(std::ostream& out, const ContainerKind& kind) { return out << kind.name; }

}  // namespace tavio::test
