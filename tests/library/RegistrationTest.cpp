#include <gtest/gtest.h>

#include "com/server/Registration.h"
#include "foundation/values/SystemHandle.h"
#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

using namespace tavio::com;

constexpr CLSID kOne = {0x7e0f0001, 0, 0, {1}}, kTwo = {0x7e0f0002, 0, 0, {1}};
constexpr wchar_t kForeign[] = L"{7E0F0003-0000-0000-0100-000000000000}";
constexpr ClassRow kRows[] = {{kOne, L"TavioTest.One", L"One", nullptr}, {kTwo, L"TavioTest.Two", L"Two", nullptr}};
constexpr ServerTable kOwn = {kRows, false, false}, kPolite = {kRows, false, true};
constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

const Text kOneClass = L"CLSID\\{7E0F0001-0000-0000-0100-000000000000}";

RegistryKey Open(HKEY root, const Text& key, REGSAM view = 0) {
  RegistryKey opened;
  RegOpenKeyExW(root, (L"Software\\Classes\\" + key).c_str(), 0, KEY_READ | view, opened.Receive());
  return opened;
}

RegistryKey Make(HKEY root, const Text& key, REGSAM view = 0) {
  RegistryKey made;
  EXPECT_EQ(RegCreateKeyExW(root, (L"Software\\Classes\\" + key).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | view, nullptr,
                            made.Receive(), nullptr),
            ERROR_SUCCESS);
  return made;
}

void TakeOver(const wchar_t* progId) {
  RegSetValueExW(Make(HKEY_LOCAL_MACHINE, Text(progId) + L"\\CLSID").Get(), nullptr, 0, REG_SZ,
                 reinterpret_cast<const BYTE*>(kForeign), sizeof kForeign);
}

// The two classes and their ProgIDs, by their first letters.
std::string In(HKEY root) {
  std::string found;
  found += Open(root, kOneClass) ? "1" : "";
  found += Open(root, L"CLSID\\{7E0F0002-0000-0000-0100-000000000000}") ? "2" : "";
  found += Open(root, L"TavioTest.One") ? "O" : "";
  found += Open(root, L"TavioTest.Two") ? "T" : "";
  return found;
}
std::string Registered() { return In(HKEY_LOCAL_MACHINE) + "/" + In(HKEY_CURRENT_USER); }

std::function<Outcome()> Failing(Outcome number) {
  return [number] { return number; };
}

class RegistrationTest : public ::testing::Test {
 protected:
  ~RegistrationTest() override {
    Unregister(kOwn, Scope::kMachine);
    EXPECT_EQ(Registered(), "/");
  }
};

RegistrationPlan::Part& PartFor(Scope scope, RegistrationPlan& plan) {
  return scope == Scope::kUser ? plan.user : plan.machine;
}

TEST_F(RegistrationTest, LeavesNothingWhereverItFails) {
  for (const auto scope : {Scope::kMachine, Scope::kUser}) {
    auto whole = PlanFor(kOwn);
    for (std::size_t i = 0; i < PartFor(scope, whole).writing.size(); ++i) {
      auto plan = whole;
      auto& failing = PartFor(scope, plan).writing[i];
      failing.run = Failing(E_FAIL);
      const Result result = Register(plan, scope);
      EXPECT_EQ(result.outcome, E_FAIL);
      EXPECT_EQ(result.step, failing.name);
      EXPECT_EQ(Registered(), "/") << Utf8(result.step);
    }
  }
}

TEST_F(RegistrationTest, RemovesWhatItCan) {
  const std::string left[] = {"1", "2", "O", "T", ""};  // the last step is the user's, and takes an empty key
  for (const auto scope : {Scope::kMachine, Scope::kUser}) {
    auto whole = PlanFor(kOwn);
    const bool isUser = scope == Scope::kUser;
    ASSERT_EQ(PartFor(scope, whole).removal.size(), isUser ? 5u : 4u);
    // A user's class that stays may keep its name, since both views of a user's part may be one.
    for (std::size_t i = isUser ? 2 : 0; i < PartFor(scope, whole).removal.size(); ++i) {
      EXPECT_EQ(Register(kOwn, scope), S_OK);
      EXPECT_EQ(Registered(), isUser ? "/12OT" : "12OT/");
      auto plan = whole;
      PartFor(scope, plan).removal[i].run = Failing(kAccessDenied);
      const Result result = Unregister(plan, scope);
      EXPECT_EQ(result.outcome, kAccessDenied);
      EXPECT_EQ(result.step, PartFor(scope, plan).removal[i].name);
      EXPECT_EQ(Registered(), isUser ? "/" + left[i] : left[i] + "/");
      EXPECT_EQ(Unregister(kOwn, scope), S_OK);
    }
  }
}

TEST_F(RegistrationTest, TheUsersPartIsInPlaceOfTheMachines) {
  auto refused = PlanFor(kOwn);
  refused.machine.writing[0].run = Failing(kAccessDenied);
  EXPECT_EQ(Register(refused, Scope::kMachine).outcome, S_OK);
  EXPECT_EQ(Registered(), "/12OT");
  refused.user.writing[1].run = Failing(E_FAIL);
  EXPECT_EQ(Register(refused, Scope::kMachine).outcome, E_FAIL) << "nowhere allowed";
  EXPECT_EQ(Registered(), "/");
  EXPECT_EQ(Register(kOwn, Scope::kMachine), S_OK);
  EXPECT_EQ(Registered(), "12OT/") << "an older one in the user's part would stand before it";
  EXPECT_EQ(Register(kOwn, Scope::kUser), S_OK);
  EXPECT_EQ(Registered(), "12OT/12OT");
  EXPECT_EQ(Unregister(kOwn, Scope::kUser), S_OK);
  EXPECT_EQ(Registered(), "12OT/");
}

TEST_F(RegistrationTest, WhatIsAnothersStays) {
  TakeOver(L"TavioTest.One");
  EXPECT_EQ(Register(kPolite, Scope::kMachine), HRESULT_FROM_WIN32(ERROR_OBJECT_ALREADY_EXISTS));
  EXPECT_EQ(Registered(), "O/");
  EXPECT_EQ(Register(kOwn, Scope::kMachine), S_OK) << "the library's own names are its own";
  TakeOver(L"TavioTest.One");
  EXPECT_EQ(Unregister(kOwn, Scope::kMachine), S_OK);
  EXPECT_EQ(Registered(), "O/");
  EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\TavioTest.One"), ERROR_SUCCESS);
}

// On a 32-bit Windows there is no other view.
TEST_F(RegistrationTest, ProgIdStaysAsLongAsTheOtherBitnessNeedsIt) {
  BOOL emulated = FALSE;
  IsWow64Process(GetCurrentProcess(), &emulated);
  const bool twoViews = sizeof(void*) == 8 || emulated;
  EXPECT_EQ(Register(kOwn, Scope::kMachine), S_OK);
  Make(HKEY_LOCAL_MACHINE, kOneClass, kOtherView);
  EXPECT_EQ(Unregister(kOwn, Scope::kMachine), S_OK);
  EXPECT_EQ(Registered(), twoViews ? "O/" : "/");
  RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + kOneClass).c_str(), kOtherView, 0);
}

}  // namespace
}  // namespace tavio::test
