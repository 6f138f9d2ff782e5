#include <gtest/gtest.h>

#include <map>

#include "com/server/RegistrationPlan.h"

namespace tavio::test {
namespace {

using namespace tavio::com;

constexpr Outcome kFailed = -1, kWorse = -2;

// Each step is a letter: those that write are large, those that take back are small.
struct Rehearsal {
  std::map<char, Outcome> failures;
  std::string ran = {};

  Steps Of(const char* letters) {
    Steps steps;
    for (; *letters; ++letters) {
      steps.push_back({Text(1, static_cast<Char>(*letters)), [this, letter = *letters] {
                         ran += letter;
                         return failures.contains(letter) ? failures.at(letter) : Outcome{1};
                       }});
    }
    return steps;
  }
};

TEST(RegistrationPlanTest, GoesOnWhereItTakesBack) {
  const struct {
    const char* name;
    Result (*act)(const RegistrationPlan&, Scope);
    Scope scope;
    std::map<char, Outcome> failures;
    const char* ran;
    Outcome outcome;
    const char* failed;
  } cases[] = {
      {"for the machine", Register, Scope::kMachine, {}, "?MN", 0, ""},
      {"for the user", Register, Scope::kUser, {}, "?UV", 0, ""},
      {"refused", Register, Scope::kMachine, {{'?', kFailed}}, "?", kFailed, "?"},
      {"failed at the start", Register, Scope::kMachine, {{'M', kFailed}}, "?Mmn", kFailed, "M"},
      {"failed at the end", Register, Scope::kMachine, {{'N', kFailed}}, "?MNmn", kFailed, "N"},
      {"failed, and taken back in part",
       Register,
       Scope::kUser,
       {{'V', kFailed}, {'u', kWorse}},
       "?UVuv",
       kFailed,
       "V"},
      {"not allowed", Register, Scope::kMachine, {{'M', kAccessDenied}, {'m', kAccessDenied}}, "?MmnUV", 0, ""},
      {"nowhere allowed", Register, Scope::kMachine, {{'M', kAccessDenied}, {'U', kFailed}}, "?MmnUuv", kFailed, "U"},
      {"not allowed to the user", Register, Scope::kUser, {{'U', kAccessDenied}}, "?Uuv", kAccessDenied, "U"},
      {"taken out of both parts", Unregister, Scope::kMachine, {}, "mnuv", 0, ""},
      {"taken out of the user's", Unregister, Scope::kUser, {}, "uv", 0, ""},
      {"stays", Unregister, Scope::kMachine, {{'m', kAccessDenied}}, "mnuv", kAccessDenied, "m"},
      {"stays in part", Unregister, Scope::kMachine, {{'n', kFailed}, {'u', kWorse}}, "mnuv", kFailed, "n"},
      {"stays in the user's", Unregister, Scope::kUser, {{'u', kFailed}, {'v', kWorse}}, "uv", kFailed, "u"},
  };
  for (const auto& c : cases) {
    Rehearsal rehearsal{c.failures};
    const RegistrationPlan plan = {
        rehearsal.Of("?"), {rehearsal.Of("MN"), rehearsal.Of("mn")}, {rehearsal.Of("UV"), rehearsal.Of("uv")}};
    const Result result = c.act(plan, c.scope);
    EXPECT_EQ(rehearsal.ran, c.ran) << c.name;
    EXPECT_EQ(result.outcome, c.outcome) << c.name;
    EXPECT_EQ(std::string(result.step.begin(), result.step.end()), c.failed) << c.name;
  }
}

}  // namespace
}  // namespace tavio::test
