#include <deque>
#include <limits>
#include <random>

#include "tests/library/ServerFixture.h"
#include "tests/support/ForeignRecord.h"

namespace tavio::test {
namespace {

// Arguments of all kinds, from a fixed seed.
class Wild {
 public:
  Wild() {
    AddScalars();
    AddPackages();
  }

  std::size_t Below(std::size_t limit) { return random_() % limit; }
  // Holds until Forget: the value itself, a variable that holds it, or a typed reference to it.
  VARIANT Argument() {
    const auto& chosen = pool_[Below(pool_.size())];
    if (Below(3) == 0) return chosen.Raw();
    auto& held = held_.emplace_back(chosen.Copy());
    VARIANT reference = Variable(held);
    const auto type = held.Type();
    if (Below(2) == 0 && type != VT_EMPTY && type != VT_NULL && type != VT_DECIMAL) {
      reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
      reference.byref = &held.InPlace()->byref;
    }
    return reference;
  }
  void Forget() { held_.clear(); }

 private:
  void Add(const Item& item) { pool_.push_back(item.value.Copy()); }
  void AddScalars() {
    using Integer = std::numeric_limits<std::int32_t>;
    for (const auto* text : {L"", L"Save", L"12", L"a[FBillNo]b[", L"True", L"1e400"}) Add(text);
    for (const auto number : {0, 1, 7, -1, Integer::max(), Integer::min()}) Add(number);
    for (const auto number : {2.5, 1e300, std::numeric_limits<double>::quiet_NaN()}) Add(number);
    for (const auto& value : {Item(Short(-1)), Item(true), Item(Value()), Item(Value::Missing())}) Add(value);
    Add(Value::Integers(std::vector{1, 2}));
    Add(Value::Bytes({}));
    for (const VARTYPE type :
         {VT_NULL, VT_BSTR, VT_UNKNOWN, VT_DATE, VT_CY, VT_DECIMAL, VT_I8, VT_UI4, VT_UI1, VT_ERROR}) {
      VARIANT variant = {};
      variant.vt = type;
      Add(Value::In(variant));
    }
  }
  void AddPackages() {
    const auto action = [](const wchar_t* code) {
      return Record({{L"FCode", code}, {L"FEnvironment", 3}, {L"FID", 7}});
    };
    ForeignRecord foreign(action(L"Save")), failing(Record({}));
    for (const auto* member : {L"Lookup", L"Count", L"Clone", L"GetValue"}) failing.On(member, Failing(L"断开"));
    for (const auto& record : {Dictionary(), Record({}), action(L"Save"), foreign.Handle(), failing.Handle(),
                               Record({{L"Save", action(L"Save")}, {L"Check", action(L"Check")}}),
                               Record({{L"FMessage", L"[FBillNo]"}, {L"MessageUsers", Record({{L"3", 1}})}}),
                               Record({{L"Page1", Record({{L"FBillNo", 5}})}, {L"FBillNo", action(L"a")}}),
                               Record({{L"FName", L"FBillNo"}, {L"FCaption", L"单号"}, {L"a", List({1})}})}) {
      Add(record);
    }
    Add(List({action(L"a")}));
    Add(List({}));
    Add(Value(FakeObject().New()));
  }

  std::mt19937 random_{20260101};
  std::vector<Value> pool_;
  std::deque<Value> held_;
};

struct Member {
  DISPID id;
  INVOKEKIND kind;
  std::size_t parameters;
};

// All but the flag of a message that opens a dialog.
std::vector<Member> MembersOf(REFIID iid) {
  std::vector<Member> members;
  ForEachMember(iid, [&](ITypeInfo*, const FUNCDESC& function) {
    std::size_t parameters = 0;
    for (SHORT i = 0; i < function.cParams; ++i) {
      parameters += !(function.lprgelemdescParam[i].paramdesc.wParamFlags & PARAMFLAG_FRETVAL);
    }
    members.push_back({function.memid, function.invkind, parameters});
  });
  if (iid == __uuidof(_Message)) std::erase_if(members, [](const Member& member) { return member.id == 6; });
  return members;
}

// One call: three in four as the member is meant to be called, with any arguments.
HRESULT CallWildly(IDispatch* object, const Member& member, Wild& wild) {
  const bool meant = wild.Below(4) != 0;
  const WORD flags = meant ? static_cast<WORD>(member.kind) : static_cast<WORD>(wild.Below(16));
  std::vector<VARIANT> arguments;
  const auto count = meant ? member.parameters : wild.Below(6);
  while (arguments.size() < count) arguments.push_back(wild.Argument());
  std::vector<DISPID> named;
  if (meant && flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) named.push_back(DISPID_PROPERTYPUT);
  while (!meant && named.size() < count && wild.Below(3) == 0) named.push_back(static_cast<DISPID>(wild.Below(6)) - 3);
  DISPPARAMS parameters = {arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                           static_cast<UINT>(named.size())};
  Value result;
  EXCEPINFO info = {};
  VARIANT* taken = wild.Below(8) ? result.Receive() : nullptr;
  const HRESULT outcome = object->Invoke(member.id, IID_NULL, 0, flags, &parameters, taken, &info, nullptr);
  if (outcome == DISP_E_EXCEPTION) Error::FromInvoke(outcome, info);
  wild.Forget();
  return outcome;
}

class WildCallsTest : public ServerTest {
 protected:
  ~WildCallsTest() override {
    std::filesystem::current_path(folder_);
    std::filesystem::remove_all(std::filesystem::path(ServerFolder() + L"temp"));
  }

 private:
  std::filesystem::path folder_ = std::filesystem::current_path();
};

TEST_F(WildCallsTest, NeitherCrashNorLeak) {
  constexpr int kCalls = 800, kCallsPerObject = 100;
  boxes.AnswerWith(BoxWatcher::kAny);
  const std::pair<CLSID, IID> classes[] = {{__uuidof(::BillActions), __uuidof(_BillActions)},
                                           {__uuidof(::Message), __uuidof(_Message)}};
  for (const auto& [id, iid] : classes) {
    Wild wild;
    ComPtr<IDispatch> object;
    const auto members = MembersOf(iid);
    int succeeded = 0;
    std::size_t shown = 0;
    for (int i = 0; i < kCalls; ++i) {
      if (i % kCallsPerObject == 0) object = Make(id);
      const auto& member = members[wild.Below(members.size())];
      const HRESULT outcome = CallWildly(object.Get(), member, wild);
      ASSERT_TRUE(outcome == S_OK || FAILED(outcome)) << member.id;
      succeeded += outcome == S_OK;
      shown += boxes.Take().size();
    }
    EXPECT_GT(succeeded, kCalls / 5) << "else the calls stop at their arguments";
    EXPECT_GT(shown, 0u);
  }
}

}  // namespace
}  // namespace tavio::test
