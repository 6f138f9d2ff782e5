#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "com/server/LateBound.h"
#include "tests/support/Packages.h"

namespace tavio::test {

using com::Arguments;
using com::LateBound;

// How many objects of all fakes are alive.
long LivingFakes() noexcept;

// Sees every touch of the fakes that have a name, while it lives, and may break it. There is one at most.
class Breaker {
 public:
  Breaker() noexcept;
  virtual ~Breaker();
  Breaker(const Breaker&) = delete;
  Breaker& operator=(const Breaker&) = delete;
  static Breaker* Current() noexcept;

  // A new object is asked for; an object is asked for a member that it has. False refuses it.
  virtual bool Creates(const std::wstring& object) = 0;
  virtual bool Finds(const std::wstring& object, const std::wstring& member) = 0;
  // A member is called or, if there is no answer to give, assigned, which `real` does.
  virtual Value Calls(const std::wstring& object, const std::wstring& member, bool assigns, Arguments& arguments,
                      const LateBound::Method& real) = 0;
};

// A stand-in for an object of the platform or of a host that is reached by name only: its members are lambdas, given
// before an object is made. All objects of one fake share them, and what they remember is the test's own.
//
//   FakeObject form;
//   form.On(L"Caption", [&](Arguments&) { return Value(L"用户"); });
//   ComPtr<IDispatch> object = form.New();
class FakeObject {
 public:
  using Method = LateBound::Method;

  FakeObject();
  virtual ~FakeObject() = default;
  FakeObject(const FakeObject&) = delete;
  FakeObject& operator=(const FakeObject&) = delete;

  // A method or a property that is read, a property that is also assigned, and one that is only assigned; the new value
  // is the last argument. Given again, it replaces the earlier one. A function takes the arguments or nothing, and
  // answers anything that can be stored or nothing.
  template <class Read>
  void On(const wchar_t* member, Read read) {
    Put(member, Adapted(std::move(read)), nullptr);
  }
  template <class Read, class Assign>
  void On(const wchar_t* member, Read read, Assign assign) {
    Put(member, Adapted(std::move(read)), Adapted(std::move(assign)));
  }
  template <class Assign>
  void OnAssign(const wchar_t* member, Assign assign) {
    Put(member, nullptr, Adapted(std::move(assign)));
  }
  // One more interface that objects answer for, which is that of `real`.
  void AnswerFor(const IID& id, ComPtr<IDispatch> real);

  virtual ComPtr<IDispatch> New();

  // What a breaker knows all its objects by; a component's is its ProgID.
  void Name(std::wstring name);
  // The same for an object that is a fake's.
  static void Name(IDispatch* object, std::wstring name);

  // How many objects were made, how many of them are alive, and how often a member was called or read.
  int Created() const noexcept;
  int Living() const noexcept;
  int Calls(const wchar_t* member) const;

 private:
  friend class FakeInstance;
  struct Kind;

  template <class Function>
  static Method Adapted(Function function) {
    return [function = std::move(function)](Arguments& arguments) mutable -> Value {
      const auto call = [&] {
        if constexpr (std::is_invocable_v<Function&>) {
          return function();
        } else {
          return function(arguments);
        }
      };
      if constexpr (std::is_void_v<decltype(call())>) {
        call();
        return Value();
      } else {
        return Item(call()).value.Copy();
      }
    };
  }
  void Put(const wchar_t* member, Method read, Method assign);

  std::shared_ptr<Kind> kind_;
};

// A fake that is created by its ProgID, in this process only, for as long as it lives. Raises Error where somebody
// else's class is registered under the ProgID: tests run where the platform is not. Only what every Windows has is
// there, and the fake stands in front of it.
//
//   FakeComponent classInfo(L"TavioMClass.ClassInfo");
//   classInfo.On(L"GetBillActions", [&](Arguments& a) { EXPECT_EQ(Show(a.At(1)), "7"); return actions.AsValue(); });
class FakeComponent : public FakeObject {
 public:
  enum class Place { kEmpty, kInFront };
  explicit FakeComponent(const wchar_t* progId, Place place = Place::kEmpty);
  ~FakeComponent() override;

 private:
  std::wstring progId_;
  Place place_;
  DWORD cookie_ = 0;
};

// An object that says something when it is let go for good: `said` is called while it ends.
ComPtr<IDispatch> LastWords(std::function<void()> said);

// A member that raises that description.
LateBound::Method Failing(const wchar_t* description);

}  // namespace tavio::test
