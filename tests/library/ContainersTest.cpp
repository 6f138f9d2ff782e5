#include "foundation/ByName.h"
#include "foundation/Error.h"
#include "tests/support/LibraryTest.h"
#include "tests/support/Roads.h"

namespace tavio::test {
namespace {

class ContainerRoads : public LibraryTest, public ::testing::WithParamInterface<Road> {
 protected:
  Dictionary NewRecord() const { return Dictionary(GetParam().newDictionary()); }
  Vector NewList() const { return Vector(GetParam().newVector()); }
};

INSTANTIATE_TEST_SUITE_P(, ContainerRoads, ::testing::ValuesIn(kRoads), [](const auto& i) { return i.param.name; });

// What `call` raises.
template <class Call>
Error Raised(Call&& call) {
  try {
    call();
  } catch (const Error& error) {
    return error;
  }
  return Error(S_OK, L"", L"nothing");
}

TEST_P(ContainerRoads, RecordKeepsOrderAndPlace) {
  const auto record = NewRecord();
  const auto inner = Record({{L"x", 1}});
  record.Set(L"FCode"_key, Value(L"Save"));
  record.Set(L"FID"_key, Value(1));
  record.Set(L"Messages"_key, inner);
  record.Set(L"nothing"_key, Value(ComPtr<IDispatch>()));
  record.Set(L"FID"_key, Short(7));
  EXPECT_EQ(Show(record), R"({FCode: "Save", FID: 7s, Messages: {x: 1}, nothing: none})");
  EXPECT_EQ(PackageAt(record, L"Messages"_key).Object().Get(), inner.Object().Get());
  record.Remove(L"FID"_key);
  record.Remove(L"FID"_key);
  record.Set(L"FID"_key, Value(8));
  EXPECT_EQ(Show(record), R"({FCode: "Save", Messages: {x: 1}, nothing: none, FID: 8})");
  for (const int outside : {-1, 0, 5}) EXPECT_EQ(record.Name(outside), L"") << outside;
}

TEST_P(ContainerRoads, AbsentFieldsAreEmptyOrTheFallback) {
  const auto record = NewRecord();
  record.Set(L"FMask"_key, Value(3));
  record.Set(L"fallen"_key, Value());
  const struct {
    const wchar_t* key;
    bool present;
    const char *value, *orNothing, *orZero;
  } cases[] = {{L"FMask", true, "3", "3", "3"},
               {L"fallen", true, "empty", "empty", "empty"},
               {L"fmask", false, "empty", "empty", "0"}};
  for (const auto& c : cases) {
    const Key key{TextView(c.key)};
    EXPECT_EQ(record.Lookup(key), c.present);
    EXPECT_EQ(Show(*record.Get(key)), c.value);
    EXPECT_EQ(Show(*record.GetValue(key)), c.orNothing);
    EXPECT_EQ(Show(*record.GetValue(key, Value(0))), c.orZero);
  }
  EXPECT_EQ(record.Count(), 2);
}

TEST_P(ContainerRoads, CopiesAreOneLevelDeep) {
  const auto record = NewRecord();
  record.Set(L"FName"_key, Value(L"a"));
  record.Set(L"Users"_key, Record({{L"1", 1}}));
  for (const auto& copy : {record.Clone(), record.CloneAll()}) {
    EXPECT_EQ(Show(copy), Show(record));
    copy.Set(L"FName"_key, Value(L"b"));
    copy.Remove(L"absent"_key);
    PackageAt(copy, L"Users"_key).Set(L"2"_key, Value(copy.Count()));
    copy.Remove(L"Users"_key);
  }
  EXPECT_EQ(Show(record), R"({FName: "a", Users: {1: 1, 2: 2}})");
}

TEST_P(ContainerRoads, ListCountsFromOne) {
  const auto list = NewList();
  EXPECT_EQ(list.UBound(), 0);
  const auto record = Record({{L"x", 1}});
  list.Add(record);
  list.Add(Value(L"text"));
  EXPECT_EQ(list.Count(), 2);
  EXPECT_EQ(list.LBound(), 1);
  EXPECT_EQ(list.UBound(), 2);
  EXPECT_EQ(list.Record(1).Object().Get(), record.Object().Get());
  EXPECT_EQ(Show(*list.Item(2)), R"("text")");
  for (const int outside : {-1, 0, 3}) {
    EXPECT_EQ(Raised([&] { list.Item(outside); }).Description(), L"下标越界") << outside;
  }
}

using ContainersTest = LibraryTest;

// Scripts assign objects in either way, and some hosts ask for both at once.
TEST_F(ContainersTest, EveryAssignmentStoresTheObjectItself) {
  const auto list = List({});
  constexpr WORD kBoth = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
  for (const WORD flags : {WORD{DISPATCH_PROPERTYPUT}, WORD{DISPATCH_PROPERTYPUTREF}, kBoth}) {
    const auto record = Record({});
    const Value object = list.AsValue(), key(L"m");
    VARIANT arguments[] = {object.Raw(), key.Raw()};
    InvokeByName(record.Object().Get(), L"Value", flags, arguments);
    EXPECT_EQ(record.Get(L"m"_key)->ToObject().Get(), list.Object().Get()) << flags;
  }
}

}  // namespace
}  // namespace tavio::test
