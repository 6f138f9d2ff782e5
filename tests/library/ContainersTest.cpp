#include <windows.h>
#include <Vexo.h>

#include <functional>

#include "foundation/ByName.h"
#include "foundation/Containers.h"
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

std::string Enumerated(IEnumVARIANT* items) {
  std::string text;
  for (Value item; items->Next(1, item.Receive(), nullptr) == S_OK;) text += Show(item) + " ";
  return text;
}

TEST_F(ContainersTest, StoresWhatAReferenceRefersTo) {
  ComPtr<_Dictionary> record;
  NewContainer(Container::kDictionary).As(&record);
  LONG number = 7;
  VARIANT toNumber;
  toNumber.vt = VT_BYREF | VT_I4;
  toNumber.plVal = &number;
  EXPECT_EQ(record->put_Value(L"n"_key.Get(), toNumber), S_OK);
  number = 8;
  EXPECT_EQ(Show(Dictionary(record)), "{n: 7}");
}

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

TEST_F(ContainersTest, WrongArgumentsAreRefusedByTheirNumber) {
  const auto record = Record({{L"a", 1}});
  const auto list = List({1});
  const struct {
    ComPtr<IDispatch> object;
    const wchar_t* member;
    Vector arguments;  // in source order
    HRESULT expected;
  } cases[] = {
      {record.Object(), L"Lookup", List({}), DISP_E_PARAMNOTOPTIONAL},
      {record.Object(), L"Lookup", List({L"a", 1, 2}), DISP_E_BADPARAMCOUNT},
      {record.Object(), L"Lookup", List({record}), DISP_E_TYPEMISMATCH},
      {record.Object(), L"Name", List({3e9}), DISP_E_OVERFLOW},
      {record.Object(), L"Nonsense", List({}), DISP_E_UNKNOWNNAME},
      {list.Object(), L"Item", List({L"1"}), S_OK},
  };
  for (const auto& c : cases) {
    std::vector<VARIANT> reversed;
    for (auto i = c.arguments.Count(); i > 0; --i) reversed.push_back(c.arguments.Item(i)->Raw());
    const auto raised = Raised([&] { InvokeByName(c.object.Get(), c.member, DISPATCH_METHOD, reversed); });
    EXPECT_EQ(raised.Number(), c.expected) << Utf8(c.member) << " with " << Show(c.arguments);
  }
}

TEST_F(ContainersTest, EnumerationShowsWhatThereWasAtItsBeginning) {
  auto record = Record({{L"a", 1}, {L"b", 2}, {L"c", 3}});
  const Value given = InvokeByName(record.Object().Get(), L"_NewEnum", DISPATCH_PROPERTYGET, {});
  ComPtr<IEnumVARIANT> keys, twin;
  ASSERT_EQ(given.Raw().punkVal->QueryInterface(IID_PPV_ARGS(&keys)), S_OK);
  record.Remove(L"b"_key);
  record.Set(L"d"_key, Value(4));
  record = Dictionary();
  EXPECT_EQ(keys->Skip(1), S_OK);
  EXPECT_EQ(keys->Clone(&twin), S_OK);
  EXPECT_EQ(keys->Reset(), S_OK);
  EXPECT_EQ(Enumerated(keys.Get()), R"("a" "b" "c" )");
  VARIANT rest[3];
  ULONG fetched = 0;
  EXPECT_EQ(twin->Next(3, rest, &fetched), S_FALSE);
  EXPECT_EQ(fetched, 2u);
  for (ULONG i = 0; i < fetched; ++i) VariantClear(&rest[i]);
}

// Calls back when it is let go.
class Farewell final : public LateBound {
 public:
  explicit Farewell(std::function<void()> said) : said_(std::move(said)) {}
  ~Farewell() override { said_(); }

  static Value Saying(std::function<void()> said) {
    ComPtr<IDispatch> object;
    *object.GetAddressOf() = new Farewell(std::move(said));  // Attach adds a reference with some compilers
    return Value(std::move(object));
  }

 private:
  std::function<void()> said_;
};

TEST_F(ContainersTest, IsWholeWhenWhatItHeldCallsBack) {
  std::string seen;
  IDispatch* dying = nullptr;
  const auto look = [&] {
    const ComPtr<IDispatch> again(dying);
    seen += Show(Value(again));
  };
  {
    const auto record = Record({});
    dying = record.Object().Get();
    record.Set(L"k"_key, Farewell::Saying(look));
  }
  {
    const auto list = List({});
    dying = list.Object().Get();
    list.Add(Farewell::Saying(look));
  }
  EXPECT_EQ(seen, "{}[]");
}

}  // namespace
}  // namespace tavio::test
