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

  ComPtr<IDispatch> New();

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
// else's class is registered under the ProgID: tests run where the platform is not.
//
//   FakeComponent classInfo(L"TavioMClass.ClassInfo");
//   classInfo.On(L"GetBillActions", [&](Arguments& a) { EXPECT_EQ(Show(a.At(1)), "7"); return actions.AsValue(); });
class FakeComponent : public FakeObject {
 public:
  explicit FakeComponent(const wchar_t* progId);
  ~FakeComponent() override;

 private:
  std::wstring progId_;
  DWORD cookie_ = 0;
};

// An object that says something when it is let go for good: `said` is called while it ends.
ComPtr<IDispatch> LastWords(std::function<void()> said);

// A member that raises that description.
LateBound::Method Failing(const wchar_t* description);

}  // namespace tavio::test
