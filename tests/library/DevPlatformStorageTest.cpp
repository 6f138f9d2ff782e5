#include <gtest/gtest.h>

#include <filesystem>

#include "development/BillUseInfo.h"
#include "development/ClassDefineUpdate.h"
#include "development/ClassInfo.h"
#include "development/Command.h"
#include "development/FormTextLoader.h"
#include "development/Log.h"
#include "development/PackageJson.h"
#include "development/PropStore.h"
#include "development/RecordSet.h"
#include "foundation/Error.h"
#include "tests/support/FakeComponent.h"
#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

using development::Rows;

constexpr std::int32_t kClass = 1005;
constexpr wchar_t kProps[] = L"Language=CHS;";

template <class Object>
Component New() {
  return Component(development::MakeObject<Object>());
}

// The description of the failure; "" where there is none.
template <class Body>
std::string FailureOf(Body&& body) {
  try {
    body();
    return {};
  } catch (const Error& error) {
    return Utf8(error.Description());
  }
}

// Every test has a database of its own. No object of the platform outlives a statement, so that each call connects anew
// and reads what was really stored.
class DevPlatformStorageTest : public ::testing::Test {
 protected:
  DevPlatformStorageTest() {
    std::filesystem::remove_all(folder_);
    SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", folder_.c_str());
  }
  ~DevPlatformStorageTest() override {
    EXPECT_EQ(com::ModuleUse(), 0) << "an object of the platform is still alive";
    SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", nullptr);
    std::filesystem::remove_all(folder_);
  }

  static Dictionary Load(std::int32_t classType = kClass) {
    return Dictionary(New<development::ClassInfo>().Call(L"GetBillActions", kProps, classType));
  }
  static void Save(Dictionary& actions, std::int32_t classType = kClass, const Dictionary& type = {}) {
    Dictionary handed = type;
    New<development::ClassDefineUpdate>().Call(L"SaveBillActions", kProps, ByRef(classType), ByRef(actions),
                                               ByRef(handed));
  }
  static Component Query(const wchar_t* sql) {
    return Component(New<development::ClassInfo>().Call(L"GetData", kProps, sql).ToObject());
  }
  static Dictionary Action(const Dictionary& actions, const wchar_t* code) { return PackageAt(actions, Key(code)); }
  // Rows of one column, joined.
  static std::string Column(const wchar_t* sql) {
    std::string text;
    const auto rows = Query(sql);
    for (; !rows.Read(L"EOF").ToBool(); rows.Call(L"MoveNext")) {
      text += Show(Component(rows.Call(L"Fields", 0).ToObject()).Read(L"Value")) + " ";
    }
    return text;
  }

 private:
  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / (L"devplatform" + std::to_wstring(GetCurrentProcessId()));
};

Value Date(double days) {
  Value value;
  value.InPlace()->vt = VT_DATE;
  value.InPlace()->date = days;
  return value;
}

Value Null() {
  Value value;
  value.InPlace()->vt = VT_NULL;
  return value;
}

TEST_F(DevPlatformStorageTest, PackagesKeepTypesAndOrderThroughText) {
  const auto lookalike = Record({{L"$i2", L"text"}});
  const auto package = Record({{L"Z", 1},
                               {L"A", Short(1)},
                               {L"Whole", 2.0},
                               {L"Single", 0.5f},
                               {L"Flag", true},
                               {L"Text", L"\"引号\" \\ \r\n 😀"},
                               {L"Unset", Value(ComPtr<IDispatch>())},
                               {L"Empty", Value()},
                               {L"Null", Null()},
                               {L"Date", Date(45356.25)},
                               {L"List", List({1, L"x", Record({})})},
                               {L"Lookalike", lookalike}});
  const auto back = Dictionary(development::FromJson(
      development::FromColumn(Value(TextView(development::ToColumn(development::ToJson(package)))))));
  EXPECT_EQ(Show(back), Show(package));
  for (std::int32_t i = 1; i <= package.Count(); ++i)
    EXPECT_EQ(back.At(i).value->Type(), package.At(i).value->Type()) << i;
  EXPECT_EQ(back.Get(L"Date"_key)->Raw().date, 45356.25);
}

TEST_F(DevPlatformStorageTest, PackageWithoutEndIsRefused) {
  const auto loop = Record({});
  loop.Set(L"Self"_key, loop);
  EXPECT_NE(FailureOf([&] { development::ToJson(loop); }), "");
  loop.Remove(L"Self"_key);
}

TEST_F(DevPlatformStorageTest, SavedCollectionIsReadBack) {
  auto actions = Load();
  const std::string messages = Show(*Action(actions, L"Save").Get(L"Messages"_key));
  Action(actions, L"Save").Set(L"FName"_key, Value(L"存盘"));
  Action(actions, L"Save").Set(L"FStatus"_key, Value(2));
  Action(actions, L"Close").Set(L"FStatus"_key, Value(4));
  const Dictionary added = Record({{L"FID", 0},
                                   {L"FCode", L"Export"},
                                   {L"FCode_Old", L""},
                                   {L"FStatus", 1},
                                   {L"FRightMask", 512},
                                   {L"FObjectID", kClass}});
  actions.Set(L"Export"_key, added);
  Save(actions);

  const auto stored = Load();
  EXPECT_EQ(Show(actions), Show(stored)) << "what comes back by reference is what is stored";
  EXPECT_EQ(stored.Count(), 3);
  EXPECT_FALSE(stored.Lookup(L"Close"_key));
  EXPECT_EQ(Show(*Action(stored, L"Save").Get(L"FName"_key)), "\"存盘\"");
  EXPECT_EQ(Show(*Action(stored, L"Save").Get(L"Messages"_key)), messages);
  EXPECT_EQ(Show(*Action(stored, L"Save").Get(L"FID"_key)), "1001");
  EXPECT_EQ(Show(*Action(stored, L"Save").Get(L"FStatus"_key)), "0");
  EXPECT_EQ(
      Show(Action(stored, L"Export")),
      "{FID: 2001, FCode: \"Export\", FStatus: 0, FRightMask: 512, FObjectID: 1005, FClassTypeID: 1005, FVersion: 2}");
  EXPECT_EQ(Show(*added.Get(L"FID"_key)), "0") << "the packages handed in stay as they were";
  const wchar_t* taken = L"select 1 from t_ObjectAccessType where fobjectid=1005 and (512 & faccessuse <> 0)";
  EXPECT_EQ(Column(taken), "1 ");
  Action(actions, L"Export").Set(L"FStatus"_key, Value(4));
  Save(actions);
  EXPECT_EQ(Column(taken), "") << "a dropped action's rights bit is free again";
}

TEST_F(DevPlatformStorageTest, RefusedSaveStoresNothing) {
  const struct {
    const char* name;
    std::function<void(Dictionary&)> spoil;
    const char* told;
  } cases[] = {
      {"somebody else saved in between",
       [](Dictionary&) {
         auto theirs = Load();
         Save(theirs);
       },
       "其他用户"},
      {"made without reading what is stored",
       [](Dictionary& actions) {
         actions = Record({{L"New", Record({{L"FCode", L"New"}, {L"FStatus", 1}})}});
       },
       "已有保存过的操作"},
      {"records of two versions", [](Dictionary& a) { Action(a, L"Save").Set(L"FVersion"_key, Value(99)); },
       "不同版本"},
      {"one code twice", [](Dictionary& a) { Action(a, L"Save").Set(L"FCode"_key, Value(L"Close")); }, "重复"},
      {"no code", [](Dictionary& a) { Action(a, L"Close").Remove(L"FCode"_key); }, "缺少操作代码"},
      {"a failure of the database half-way", [](Dictionary& a) { Action(a, L"Close").Set(L"FID"_key, Value(1001)); },
       "数据库错误"},
      {"no collection", [](Dictionary& a) { a = Dictionary(); }, "需要"},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.name);
    auto actions = Load();
    given.spoil(actions);
    const auto before = Show(Load());
    const auto rights = Column(L"SELECT FAccessUse FROM t_ObjectAccessType");
    const auto handed = actions.Object();
    const auto failure = FailureOf([&] { Save(actions); });
    EXPECT_NE(failure.find(given.told), std::string::npos) << failure;
    EXPECT_EQ(Show(Load()), before);
    EXPECT_EQ(Column(L"SELECT FAccessUse FROM t_ObjectAccessType"), rights);
    EXPECT_EQ(actions.Object(), handed);
  }
}

TEST_F(DevPlatformStorageTest, DeletingEveryActionBringsTheDefaultsBack) {
  const auto type = Record({{L"FID", 1006}, {L"FBillTypeID", 1}, {L"FName_CHS", L"新单据"}});
  auto actions = Record({{L"Only", Record({{L"FID", 0}, {L"FCode", L"Only"}, {L"FStatus", 1}})}});
  Save(actions, 1006, type);
  EXPECT_EQ(Show(New<development::ClassInfo>().Call(L"GetClassType", kProps, 1006)), Show(type)) << "now known";
  Action(actions, L"Only").Set(L"FStatus"_key, Value(5));
  Save(actions, 1006, type);
  const auto defaults = Load(1006);
  ASSERT_GT(defaults.Count(), 0);
  const auto catalogue = Column(L"SELECT FCode FROM t_PredefineAction WHERE (FBillType & 1) <> 0 ORDER BY FIndex");
  std::string codes;
  for (std::int32_t i = 1; i <= defaults.Count(); ++i) {
    const Dictionary action(*defaults.At(i).value);
    codes += Show(*action.Get(L"FCode"_key)) + " ";
    EXPECT_FALSE(action.Lookup(L"FBillType"_key));
  }
  EXPECT_EQ(codes, catalogue);
}

TEST_F(DevPlatformStorageTest, RecordSetWalksAndNamesWithoutCase) {
  const auto rows = Query(
      L"SELECT a.FName AS Name, b.FMobilePhone AS Phone, a.FUserID FROM t_User a LEFT OUTER JOIN t_Emp b ON b.FItemID "
      L"= a.FEmpID WHERE a.FUserID IN (16398, 16399) ORDER BY a.FUserID");
  const auto cell = [&](const Value& field) {
    return Show(Component(rows.Call(L"Fields", field).ToObject()).Read(L"Value"));
  };
  EXPECT_EQ(cell(Value(L"NAME")) + cell(Value(L"phone")) + cell(Value(2)), "\"陈静\"\"13800000005\"16398");
  rows.Call(L"MoveNext");
  EXPECT_EQ(cell(Value(L"Phone")), "null");
  rows.Call(L"MoveNext");
  EXPECT_TRUE(rows.Read(L"EOF").ToBool());
  EXPECT_NE(FailureOf([&] { cell(Value(0)); }), "");
  EXPECT_NE(FailureOf([&] { rows.Call(L"MoveNext"); }), "");
  rows.Call(L"MoveFirst");
  EXPECT_EQ(cell(Value(L"FUserID")), "16398");
  for (const auto& wrong : {Value(L"Nothing"), Value(3), Value(-1)}) EXPECT_NE(FailureOf([&] { cell(wrong); }), "");
  const auto none = Query(L"SELECT 1 FROM t_User WHERE 1 = 0");
  EXPECT_TRUE(none.Read(L"EOF").ToBool() && none.Read(L"BOF").ToBool());
  EXPECT_NE(FailureOf([&] { Query(L"SELECT FNothing FROM t_User"); }).find("FNothing"), std::string::npos);
}

// What a client passes, with one argument replaced.
struct MessageArguments {
  Value connection{L"Provider=TavioDev"};
  Value bytes, length{3}, title{L"标题"}, recipients, sender{16394}, first{std::int16_t{0}}, second{std::int16_t{1}};
  Value command{L"FUNCID:-1|FFlag:5|FInterID:77"};

  MessageArguments() {
    const std::byte content[] = {std::byte{'a'}, std::byte{'b'}, std::byte{'c'}, std::byte{'\r'}};
    const std::int32_t users[] = {16395, 16396};
    bytes = Value::Bytes(content);
    recipients = Value::Integers(users);
  }
  void Send() {
    New<development::Command>().Call(L"SendMessage", connection, ByRef(bytes), ByRef(length), title, ByRef(recipients),
                                     ByRef(sender), first, second, ByRef(command));
  }
};

TEST_F(DevPlatformStorageTest, MessageReachesEveryRecipient) {
  MessageArguments().Send();
  EXPECT_EQ(Column(L"SELECT FRecipientID FROM t_Inbox ORDER BY FID"), "16395 16396 ");
  EXPECT_EQ(Column(L"SELECT FSenderID || FTitle || FContent || FCommand || FFlag1 || FFlag2 FROM t_Inbox WHERE "
                   L"FRecipientID = 16395"),
            "\"16394标题abcFUNCID:-1|FFlag:5|FInterID:7701\" ");
}

TEST_F(DevPlatformStorageTest, MessageOfOtherTypesIsRefused) {
  Value MessageArguments::*const places[] = {
      &MessageArguments::connection, &MessageArguments::bytes,      &MessageArguments::length,
      &MessageArguments::title,      &MessageArguments::recipients, &MessageArguments::sender,
      &MessageArguments::first,      &MessageArguments::second,     &MessageArguments::command};
  for (std::size_t i = 0; i < std::size(places); ++i) {
    MessageArguments message;
    message.*places[i] = Value(1.5);
    EXPECT_NE(FailureOf([&] { message.Send(); }).find("第" + std::to_string(i + 1) + "个参数"), std::string::npos) << i;
  }
  for (const std::int32_t length : {-1, 5}) {
    MessageArguments message;
    message.length = Value(length);
    EXPECT_NE(FailureOf([&] { message.Send(); }), "") << length;
  }
  EXPECT_EQ(Column(L"SELECT FID FROM t_Inbox"), "");
}

TEST_F(DevPlatformStorageTest, LogEntriesHaveHandlesOfTheirOwn) {
  std::int32_t first = New<development::Log>().Call(L"LogStart", L"甲").ToInt32();
  std::int32_t second = New<development::Log>().Call(L"LogStart", L"乙").ToInt32(), outcome = 1;
  New<development::Log>().Call(L"LogEnd", ByRef(first), ByRef(outcome));
  EXPECT_NE(first, second);
  EXPECT_EQ(Column(L"SELECT FLabel FROM t_Log WHERE FOutcome = 1 AND FEnd >= FBegin AND FBegin > 1600000000000"),
            "\"甲\" ");
}

TEST_F(DevPlatformStorageTest, ChangedPropertyKeepsItsPlace) {
  const auto props = [] {
    return Utf8(New<development::PropStore>().Call(L"GetProperty", 1, L"PropsString").ToText());
  };
  const std::string before = props();
  New<development::PropStore>().Call(L"SetProperty", L"language", L"ENU");
  New<development::PropStore>().Call(L"SetProperty", L"Extra", L"1");
  EXPECT_EQ(props(), "Language=ENU" + before.substr(before.find(';')) + "Extra=1;");
}

TEST_F(DevPlatformStorageTest, CaptionsReachTheControlsThatAreThere) {
  std::string assigned;
  FakeObject control, form;
  control.On(L"Caption", nullptr, [&](Arguments& a) { return assigned += "tab " + Show(a.At(0)), Value(); });
  form.On(L"Caption", nullptr, [&](Arguments& a) { return assigned += "form " + Show(a.At(0)) + " ", Value(); });
  form.On(L"tabMain", [&](Arguments&) { return Value(control.New()); });
  Value reference(form.New());
  Dictionary texts;
  const auto load = [&](const wchar_t* language) {
    return Vector(New<development::FormTextLoader>().Call(L"LoadFrmResStrings", ByRef(reference), language, L"",
                                                          L"TavioDesign", ByRef(texts)));
  };
  EXPECT_EQ(load(L"CHS").Count(), 0);
  EXPECT_EQ(assigned, "");
  EXPECT_EQ(load(L"ENU").Count(), 5);
  EXPECT_EQ(assigned, "form \"Message recipients\" tab \"Message recipients\"");
  EXPECT_EQ(Show(*texts.Get(L"cmdOK"_key)), "\"Send (&O)\"");
}

TEST_F(DevPlatformStorageTest, DisabledUsersAndUnknownTypesGetNothing) {
  Vector asked = List({Record({{L"FUserID", 16398}}), Record({{L"FUserID", 16399}}), Record({{L"FUserID", 1}})});
  const auto told = [&](const wchar_t* type) {
    return Show(New<development::BillUseInfo>().Call(L"GetUserInfo", kProps, type, ByRef(asked)));
  };
  EXPECT_EQ(told(L"U"), "[{FUserID: 16399, FName: \"赵磊\", Email: \"zhaolei@example.com\", Mobile: \"\"}]");
  EXPECT_EQ(told(L"S"),
            "[{FUserID: 1, FName: \"南山材料厂\", Email: \"nanshan@example.com\", Mobile: \"13900000011\"}]");
  EXPECT_NE(FailureOf([&] { told(L"X"); }), "");
  EXPECT_EQ(Show(New<development::BillUseInfo>().Call(L"GetIsUserNeedSend", kProps, ByRef(asked), std::int16_t{3})),
            "{16398: {FUserID: 16398, FIsNeedSend: true}, 16399: {FUserID: 16399, FIsNeedSend: true}, 1: {FUserID: 1, "
            "FIsNeedSend: false}}");
}

}  // namespace
}  // namespace tavio::test
