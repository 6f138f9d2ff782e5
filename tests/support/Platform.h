#pragma once

#include <deque>
#include <memory>

#include "tests/support/LibraryTest.h"

// The whole platform, each component of it answering well, in packages of its own that are new each time.

namespace tavio::test {

// Makes all new containers, of the test and of the library alike, those of a host: by name only, each a fake "new
// record" or "new list", and its copies too.
class HostContainers {
 public:
  HostContainers();
  ~HostContainers();

 private:
  class Factory;
  std::unique_ptr<Factory> records_, lists_;
};

// Gives a container of a host's a name of its own; does nothing to one of ours.
Dictionary Named(const wchar_t* name, Dictionary record);
Vector Named(const wchar_t* name, Vector list);

class Platform {
 public:
  Platform();
  ~Platform();
  // Lets go of the record sets that it answered.
  void Forget() { records_.clear(); }

 private:
  void AddBusiness();
  void AddSending();
  void AddMail();
  FakeComponent& Add(const wchar_t* progId, FakeComponent::Place place = FakeComponent::Place::kEmpty) {
    return components_.emplace_back(progId, place);
  }
  Value Records(std::initializer_list<Item> records) { return Value(records_.emplace_back(List(records)).New()); }

  class Stream;
  std::deque<FakeComponent> components_;
  std::unique_ptr<Stream> stream_;
  FakeObject file_;
  std::deque<FakeRecords> records_;
};

// An action of the business object 7, a scenario, and users {"1": {FUserID: 1, FName: ...}, ...}, as a host has them.
Dictionary Action(const wchar_t* name, const wchar_t* code, std::int32_t rightMask);
Dictionary Scenario(std::int32_t mask, std::int32_t id, std::int32_t billType = 1);
Dictionary Users(const wchar_t* name, std::initializer_list<std::int32_t> ids);

}  // namespace tavio::test
