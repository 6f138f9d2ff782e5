#include "com/server/ErrorInformation.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/PendingError.h"
#include "foundation/environment/ResText.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/environment/ShowMessage.h"
#include "foundation/environment/modMorlaLogMsg.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/InvokeByName.h"
#include "tests/support/BoxWindow.h"
#include "tests/support/Foreign.h"
#include "tests/support/Platform.h"

namespace tavio::test {
namespace {

using FoundationTest = LibraryTest;

TEST_F(FoundationTest, ConversionsFollowThePlatform) {
  const std::tuple<Item, const char*, const char*, const char*, const char*> cases[] = {
      {Value(), "0s", "0", "false", R"("")"},
      {Value::Missing(), "类型不匹配", "类型不匹配", "类型不匹配", "类型不匹配"},
      {Short(-7), "-7s", "-7", "true", R"("-7")"},
      {32768, "溢出", "32768", "true", R"("32768")"},
      {true, "-1s", "-1", "true", R"("True")"},
      {L"70000", "溢出", "70000", "true", R"("70000")"},
      {Record({}), "类型不匹配", "类型不匹配", "类型不匹配", "类型不匹配"},
      {Dictionary(), "类型不匹配", "类型不匹配", "类型不匹配", "类型不匹配"},
  };
  for (const auto& [stored, asShort, asLong, asBool, asText] : cases) {
    SCOPED_TRACE(Show(stored.value));
    EXPECT_EQ(Outcome([&] { return stored.value.ToInt16(); }), asShort);
    EXPECT_EQ(Outcome([&] { return stored.value.ToInt32(); }), asLong);
    EXPECT_EQ(Outcome([&] { return stored.value.ToBool(); }), asBool);
    EXPECT_EQ(Outcome([&] { return stored.value.ToText(); }), asText);
  }
}

UINT IconOf(HWND box) {
  const std::pair<UINT, LPWSTR> icons[] = {
      {MB_ICONQUESTION, IDI_QUESTION}, {MB_ICONWARNING, IDI_WARNING}, {MB_ICONINFORMATION, IDI_INFORMATION}};
  for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    const auto shown = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
    for (const auto& [style, name] : icons) {
      if (shown && shown == LoadIconW(nullptr, name)) return style;
    }
  }
  return 0;
}

// A box on the screen.
Box Read(HWND box) {
  const auto buttons = ButtonsOf(box);
  const UINT kind = buttons == std::vector{IDYES, IDNO} ? MB_YESNO : buttons == std::vector{IDOK} ? MB_OK : ~0u;
  const UINT first = DefaultButtonOf(box, buttons) == buttons.front() ? MB_DEFBUTTON1 : MB_DEFBUTTON2;
  return {TextOf(GetDlgItem(box, kBoxText)), TextOf(box), kind | IconOf(box) | first};
}

TEST_F(FoundationTest, BoxIsAWindowOverTheHostsOwn) {
  boxes.ShowWindows();
  const HWND host = CreateWindowExW(0, L"EDIT", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                    nullptr, nullptr, nullptr);
  SetActiveWindow(host);
  const std::tuple<const wchar_t*, UINT, int, const wchar_t*> cases[] = {
      {kTitle, MB_OK | MB_ICONWARNING, IDOK, L"«Morla提示»"},
      {kTitle, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2, IDNO, L"«Morla提示»"},
      {L"Morla", MB_YESNO | MB_ICONINFORMATION | MB_DEFBUTTON1, IDYES, L"Morla"},
  };
  for (const auto& [title, style, pressed, shownTitle] : cases) {
    Box seen;
    const DialogHook hook([&](HWND box) {
      seen = Read(box);
      EXPECT_EQ(GetWindow(box, GW_OWNER), host);
      PostMessageW(box, WM_COMMAND, MAKEWPARAM(pressed, BN_CLICKED), 0);
    });
    EXPECT_EQ(ShowMessage(L"一\r\n二", static_cast<std::int32_t>(style), title), pressed);
    EXPECT_EQ(seen, (Box{L"一\r\n二", shownTitle, style}));
  }
  DestroyWindow(host);
}

TEST_F(FoundationTest, OperationReportsWhateverIsThrown) {
  const std::pair<const wchar_t*, void (*)()> cases[] = {
      {L"«溢出»", [] { CountedIn16Bits(32768); }},
      {L"«内存不足»", [] { throw std::bad_alloc(); }},
      {L"«自动化错误» 0x80004005", [] { throw 7; }},
  };
  for (const auto& [description, fail] : cases) {
    const auto failing = [&](Text& result) {
      result = L"half-built";
      fail();
    };
    EXPECT_EQ(Operation<Text>({.report = L"TavioClassBillAction.A : B "}, failing), Text());
    EXPECT_EQ(boxes.Take(), Boxes{Report(L"A : B ", description)});
  }
  EXPECT_EQ(CountedIn16Bits(32767), 32767);
}

HRESULT WINAPI DescribeLate(EXCEPINFO* info) {
  info->bstrDescription = BString(L"断开").Detach();
  return S_OK;
}

TEST_F(FoundationTest, SmallNumbersAndLateTextsOfFailuresAreRead) {
  EXCEPINFO info = {};
  info.wCode = 5;
  info.pfnDeferredFillIn = &DescribeLate;
  const auto error = Error::FromInvoke(DISP_E_EXCEPTION, info);
  EXPECT_EQ(error.Number(), MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 5));
  EXPECT_EQ(error.Description(), L"断开");
}

TEST_F(FoundationTest, TranslationKeepsTheBlanksAround) {
  for (const auto& [source, translation] :
       {std::pair{L"  用户 ", L"  «用户» "}, {L"用户 名", L"«用户 名»"}, {L"\t用户", L"«\t用户»"}}) {
    EXPECT_EQ(LoadResText(source), translation);
  }
  EXPECT_EQ(texts->Created(), 1);
  EXPECT_EQ(texts->fileName, L"TavioDesign");
  EXPECT_EQ(texts->language, L"CHS");
  props->props = L"Language=eng";
  LoadResText(L"a");
  EXPECT_EQ(texts->language, L"CHS") << "the language is read once";
}

TEST_F(FoundationTest, PropertiesAreFoundByTheirName) {
  props->props = L"UILanguage=chs;Language=y;UserName=Ann";
  EXPECT_EQ(GetPropValue(L"Language"), L"CHS") << "the first whose name ends so";
  EXPECT_EQ(GetPropValue(L"username"), L"ANN") << "letter case does not count";
  props->On(L"GetProperty", [answer = props->props](Arguments& a) {
    const bool asked = a.At(1).EqualsText(L"PropsString");
    a.Return(1, Value(L"another"));
    return asked ? answer : Text();
  });
  EXPECT_EQ(GetPropValue(L"username"), L"ANN") << "asked for again, though the component changed the name";
}

TEST_F(FoundationTest, PendingErrorSurvivesLogAndTexts) {
  int calls = 0;
  const auto forget = [&] { calls += SetErrorInfo(0, nullptr) == S_OK; };
  log->On(L"LogEnd", forget);
  texts->On(L"LoadString", forget);
  const auto handle = LogStart(L"A.B");
  com::Raise(IID_NULL, E_FAIL, L"Host", L"断开");
  LogEnd(handle, 1);
  LoadResText(L"用户");
  EXPECT_EQ(calls, 2);
  ComPtr<IErrorInfo> pending;
  EXPECT_EQ(GetErrorInfo(0, &pending), S_OK);
}

// The old container goes when the new one is there, and what goes with it may be a host's object that calls back.
TEST_F(FoundationTest, HandleIsWholeWhenItLetsGoOfItsContainer) {
  ForeignRecord fresh(Record({{L"FID", 7}}));
  FakeObject list;
  list.On(L"Count", [] { return 2; });
  for (const auto* member : {L"Item", L"UBound"}) list.On(member, [] { return 0; });
  Dictionary record;
  Vector items;
  std::string seen;
  record = Record({{L"old", LastWords([&] { seen += Show(*record.Get(L"FID"_key)) + " "; })}});
  items = List({LastWords([&] { seen += std::to_string(items.Count()) + " "; })});
  record = fresh.Handle();
  items = Vector(list.New());
  EXPECT_EQ(seen, "7 2 ");
}

// Collections of other makers answer an item that they are asked for by adding it.
TEST_F(FoundationTest, CollectionWithoutBoundsIsNoList) {
  FakeObject collection;
  collection.On(L"Count", [] { return 1; });
  collection.On(L"Item", [] { ADD_FAILURE() << "asked for an item"; });
  EXPECT_EQ(Outcome([&] { return Vector(collection.New()).Count(); }), "类型不匹配");
}

// Counts what hosts' containers are asked.
class Asked final : public Breaker {
 public:
  bool Creates(const std::wstring&) override { return true; }
  bool Finds(const std::wstring&, const std::wstring&) override { return ++names; }
  Value Calls(const std::wstring&, const std::wstring&, bool, Arguments& a, const LateBound::Method& real) override {
    return ++calls, real(a);
  }

  int calls = 0, names = 0;
};

// Key, record and field are a call each; a record is known by the name of one member, and read by that of another.
TEST_F(FoundationTest, HostsRecordsAreAskedThreeCallsAndTwoNamesEach) {
  const auto counted = [](std::int32_t count) {
    const HostContainers hosts;
    const auto records = Dictionary::New();
    for (std::int32_t i = 1; i <= count; ++i) records.Set(Key(i), Record({{L"FCode", i}}));
    Asked asked;
    for (const auto& entry : EntriesIn16Bits(records)) {
      EXPECT_EQ(Show(*entry.Field(L"FCode"_key)), Utf8(entry.KeyView()));
    }
    return std::pair(asked.calls, asked.names);
  };
  const auto few = counted(10), more = counted(20);
  EXPECT_EQ(more.first - few.first, 30);
  EXPECT_EQ(more.second - few.second, 20);
}

class ContainerKinds : public LibraryTest, public ::testing::WithParamInterface<ContainerKind> {
 protected:
  Dictionary NewRecord() const { return Dictionary(GetParam().newDictionary()); }
  Vector NewList() const { return Vector(GetParam().newVector()); }
};

INSTANTIATE_TEST_SUITE_P(, ContainerKinds, ::testing::ValuesIn(kContainerKinds),
                         [](const auto& i) { return i.param.name; });

TEST_P(ContainerKinds, RecordKeepsOrderAndPlace) {
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

TEST_P(ContainerKinds, AbsentFieldsAreEmptyOrTheFallback) {
  const auto record = NewRecord();
  record.Set(L"FMask"_key, Value(3));
  record.Set(L"fallen"_key, Value());
  const std::tuple<const wchar_t*, bool, const char*, const char*> cases[] = {
      {L"FMask", true, "3", "3"}, {L"fallen", true, "empty", "empty"}, {L"fmask", false, "empty", "0"}};
  for (const auto& [name, present, value, orZero] : cases) {
    const Key key{TextView(name)};
    EXPECT_EQ(record.Lookup(key), present);
    EXPECT_EQ(Show(*record.Get(key)), value);
    EXPECT_EQ(Show(*record.GetValue(key)), value);
    EXPECT_EQ(Show(*record.GetValue(key, Value(0))), orZero);
  }
  EXPECT_EQ(record.Count(), 2);
}

TEST_P(ContainerKinds, ListCountsFromOne) {
  const auto list = NewList();
  const auto record = Record({{L"x", 1}});
  list.Add(record);
  list.Add(Value(L"text"));
  const auto read = [&](const wchar_t* member) { return InvokeByName(list.Object().Get(), member, kCallOrRead, {}); };
  EXPECT_EQ(Show(List({list.Count(), read(L"LBound"), read(L"UBound")})), "[2, 1, 2]");
  EXPECT_EQ(list.Record(1).Object().Get(), record.Object().Get());
  EXPECT_EQ(Show(*list.Item(2)), R"("text")");
  for (const int outside : {-1, 0, 3}) {
    EXPECT_EQ(Outcome([&] { return list.Item(outside)->Copy(); }), "下标越界") << outside;
  }
}

// A search leaves out what our own containers tell of themselves, and nothing else.
TEST_P(ContainerKinds, SearchesFindWhatALookAtEachEntryFinds) {
  ForeignRecord hosts(Record({{L"FCode", L"Save1"}}));
  const auto actions = NewRecord();
  actions.Set(L"host's"_key, hosts.Handle());
  actions.Set(L"gone"_key, Record({{L"FCode", L"Save1"}}));
  actions.Set(L"in another place"_key, Record({{L"FID", 1}, {L"FCode", L"Save2"}}));
  actions.Set(L"absent"_key, Record({}));
  const Item codes[] = {L"Save1", L"Save2", 12, Value::Null(), L"", L"S", L"Save1"};
  for (const auto& code : codes) actions.Set(Key(actions.Count()), Record({{L"FCode", code}}));
  actions.Remove(L"gone"_key);
  const Key field = L"FCode"_key;
  const auto found = [&](const auto& searched, TextView wanted) {
    std::string keys;
    for (const auto& entry : searched) {
      const auto stored = entry.Field(field);
      if (!stored->IsNull() && stored->EqualsText(wanted)) keys += Utf8(entry.KeyView()) + " ";
    }
    return keys;
  };
  EXPECT_EQ(found(EntriesIn16Bits(actions), L"Save1"), "host's 4 10 ");
  for (const TextView wanted : {L"Save1", L"Save2", L"12", L"S", L"", L"SAVE1"}) {
    EXPECT_EQ(found(EntriesIn16BitsThatMayHold(actions, field, wanted), wanted),
              found(EntriesIn16Bits(actions), wanted))
        << Utf8(wanted);
  }
}

// Scripts assign objects in either way, and some hosts ask for both at once.
TEST_P(ContainerKinds, EveryAssignmentStoresTheObjectItself) {
  const Value object = List({}).AsValue(), key(L"m");
  constexpr WORD kBoth = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
  for (const WORD flags : {WORD{DISPATCH_PROPERTYPUT}, WORD{DISPATCH_PROPERTYPUTREF}, kBoth}) {
    const auto record = NewRecord();
    VARIANT arguments[] = {object.Raw(), key.Raw()};
    InvokeByName(record.Object().Get(), L"Value", flags, arguments);
    EXPECT_EQ(record.Get(L"m"_key)->ToObject().Get(), object.ToObject().Get()) << flags;
  }
}

}  // namespace
}  // namespace tavio::test
