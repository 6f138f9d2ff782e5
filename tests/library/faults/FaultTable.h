#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "companion/recorder/Breaker.h"
#include "tests/support/LibraryTest.h"

// Every touch of the platform that an operation makes is broken, in every way. A healthy run tells what there is, so
// that nothing is forgotten; what must come of it stands in FaultRules.

namespace tavio::test {

// How a touch is broken.
enum Way : unsigned {
  kNotCreated = 1,
  kMissing = 2,
  kRaises = 4,
  kEmpty = 8,
  kNull = 16,
  kUnset = 32,  // the object that is none
  kNumber = 64,
  kText = 128,
  kStranger = 256,    // an object that is no package
  kWritesBack = 512,  // garbage, into by-reference arguments
  kNothing = kEmpty | kNull | kUnset,
  kAllWays = 1023,
  kEvenTaken = 2047,  // and the answers that are taken for what they stand for
};

// What an operation needs of the platform once: a new object, a member's name, or a member.
struct Touch {
  enum Kind { kCreation, kName, kCall, kAssignment } kind;
  std::wstring object;
  std::wstring member;        // with a "=" behind it if it is assigned
  bool givesPackage = false;  // by reference
  bool givesAny = false;
  VARTYPE answer = VT_EMPTY;  // in a healthy run
  bool isCalled = false;      // the name, which otherwise is only asked for
  bool isRefused = false;     // the name, which an argument has to have for the operation to begin
  int left = 0;               // how many of the same follow it
  int count = 1;              // the how many-th of the same it is
};

// Learns the touches of an operation, and breaks one. It counts those of components, or those of containers.
class Fault final : public Breaker {
 public:
  explicit Fault(bool ofContainers) noexcept : ofContainers_(ofContainers) {}

  // What is touched in `body` counts.
  template <class Body>
  void Count(Body&& body) {
    touches_.clear();
    paused_ = false;
    const struct Pause {
      bool& paused;
      ~Pause() { paused = true; }
    } pause{paused_};
    body();
  }
  // That touch is broken in the next run; before each touch of it `before` is called.
  void Break(const Touch& touch, Way way);
  // Answers whether it was there in that run.
  bool Heal() noexcept;
  std::function<void()> before;
  // Components that cannot be created at all, and do not count.
  std::vector<std::wstring> absent;

  // Those of the last run.
  std::vector<Touch> Touches() const;

  bool Creates(const std::wstring& object) override;
  bool Finds(const std::wstring& object, const std::wstring& member) override;
  Value Calls(const std::wstring& object, const std::wstring& member, bool assigns, Arguments& arguments,
              const LateBound::Method& real) override;

 private:
  std::optional<Way> Note(Touch touch);
  Value Wrong(Way way);
  void WriteBack(Arguments& arguments);

  bool ofContainers_;
  bool paused_ = true;
  std::vector<Touch> touches_;
  companion::Breaker breaker_;  // the one that users break components with
  Way way_ = kEmpty;
  bool met_ = false;
  FakeObject stranger_;
};

// One touch that is broken in one way.
struct Cell {
  std::size_t number;
  Touch touch;
  Way way;
};
std::ostream& operator<<(std::ostream& out, const Cell& cell);

// Object, member and way.
using Broken = std::set<std::tuple<std::wstring, std::wstring, unsigned>>;

// Of the touches of an operation: each member in every way in which it can be broken once, and by raising and by not
// being created every time. What another variant of the operation has broken is left out, and what is new goes to it.
std::vector<Cell> CellsOf(const std::vector<Touch>& touches, bool ofContainers, Broken& byVariants);

// How the library describes the failure; null if it takes what it gets for what it asked for, or for nothing at all.
std::optional<Text> DescriptionOf(const Cell& cell);

}  // namespace tavio::test
