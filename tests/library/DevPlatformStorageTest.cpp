#include <gtest/gtest.h>

#include <filesystem>

#include "development/BillUseInfo.h"
#include "development/ClassDefineUpdate.h"
#include "development/ClassInfo.h"
#include "development/Command.h"
#include "development/PackageJson.h"
#include "development/RecordSet.h"
#include "foundation/Error.h"
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

TEST_F(DevPlatformStorageTest, PackagesKeepTypesAndOrderThroughText) {
  Value date, null;
  date.InPlace()->vt = VT_DATE;
  date.InPlace()->date = 45356.25;
  null.InPlace()->vt = VT_NULL;
  const auto package =
      List({1, Short(1), 2.0, 0.5f, true, L"\"引号\" \\ \r\n 😀", Dictionary(), Value(), null, date,
            List({1, L"x", Record({})}), Record({{L"Z", 1}, {L"A", 1}}), Record({{L"$i2", L"lookalike"}})});
  const auto back = Vector(development::FromJson(
      development::FromColumn(Value(TextView(development::ToColumn(development::ToJson(package.AsValue())))))));
  EXPECT_EQ(Show(back), Show(package));
  for (std::int32_t i = 1; i <= package.Count(); ++i) EXPECT_EQ(back.Item(i)->Type(), package.Item(i)->Type()) << i;
}

TEST_F(DevPlatformStorageTest, SavedCollectionIsReadBack) {
  auto actions = Load();
  Action(actions, L"Save").Set(L"FName"_key, Value(L"存盘"));
  Action(actions, L"Save").Set(L"FStatus"_key, Value(2));
  auto expected = Action(actions, L"Save").Clone();
  expected.Set(L"FStatus"_key, Value(0));
  expected.Set(L"FVersion"_key, Value(2));
  Action(actions, L"Close").Set(L"FStatus"_key, Value(4));
  actions.Set(L"Export"_key, Record({{L"FID", 0},
                                     {L"FCode", L"Export"},
                                     {L"FCode_Old", L""},
                                     {L"FStatus", 1},
                                     {L"FRightMask", 512},
                                     {L"FObjectID", kClass}}));
  Save(actions);
  const auto stored = Load();
  EXPECT_EQ(Show(actions), Show(stored)) << "what comes back by reference is what is stored";
  EXPECT_FALSE(stored.Lookup(L"Close"_key));
  EXPECT_EQ(Show(Action(stored, L"Save")), Show(expected));
  EXPECT_EQ(
      Show(Action(stored, L"Export")),
      "{FID: 2001, FCode: \"Export\", FStatus: 0, FRightMask: 512, FObjectID: 1005, FClassTypeID: 1005, FVersion: 2}");
  const wchar_t* taken = L"select 1 from t_ObjectAccessType where fobjectid=1005 and (512 & faccessuse <> 0)";
  EXPECT_EQ(Column(taken), "1 ");
  Action(actions, L"Export").Set(L"FStatus"_key, Value(4));
  Save(actions);
  EXPECT_EQ(Column(taken), "") << "a dropped action's rights bit is free again";
}

TEST_F(DevPlatformStorageTest, RefusedSaveStoresNothing) {
  auto theirs = Load(), late = Load();
  Save(theirs);
  auto broken = Load();
  Action(broken, L"Close").Set(L"FID"_key, Value(1001));
  auto unread = Record({{L"New", Record({{L"FCode", L"New"}, {L"FStatus", 1}})}});
  const std::pair<Dictionary*, const char*> cases[] = {
      {&late, "其他用户"}, {&unread, "已有保存过的操作"}, {&broken, "数据库错误"}};
  for (const auto& [actions, told] : cases) {
    const auto before = Show(Load());
    const auto rights = Column(L"SELECT FAccessUse FROM t_ObjectAccessType");
    const auto failure = FailureOf([&] { Save(*actions); });
    EXPECT_NE(failure.find(told), std::string::npos) << failure;
    EXPECT_EQ(Show(Load()), before);
    EXPECT_EQ(Column(L"SELECT FAccessUse FROM t_ObjectAccessType"), rights);
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
  std::string codes;
  for (std::int32_t i = 1; i <= defaults.Count(); ++i)
    codes += Show(*Dictionary(*defaults.At(i).value).Get(L"FCode"_key)) + " ";
  EXPECT_EQ(codes, Column(L"SELECT FCode FROM t_PredefineAction WHERE (FBillType & 1) <> 0 ORDER BY FIndex"));
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
  EXPECT_NE(FailureOf([&] { cell(Value(L"Nothing")); }), "");
  rows.Call(L"MoveNext");
  EXPECT_TRUE(rows.Read(L"EOF").ToBool());
  EXPECT_NE(FailureOf([&] { cell(Value(0)); }), "");
  EXPECT_NE(FailureOf([&] { Query(L"SELECT FNothing FROM t_User"); }).find("FNothing"), std::string::npos);
}

TEST_F(DevPlatformStorageTest, MessageReachesEveryRecipient) {
  const std::byte content[] = {std::byte{'a'}, std::byte{'b'}, std::byte{'\r'}};
  const std::int32_t users[] = {16395, 16396};
  Value bytes = Value::Bytes(content), length(2), to = Value::Integers(users), sender(16394), command(L"FUNCID:-1");
  New<development::Command>().Call(L"SendMessage", L"Provider=TavioDev", ByRef(bytes), ByRef(length), L"标题",
                                   ByRef(to), ByRef(sender), Short(0), Short(1), ByRef(command));
  EXPECT_EQ(Column(L"SELECT FRecipientID || FSenderID || FTitle || FContent || FCommand || FFlag1 || FFlag2 "
                   L"FROM t_Inbox ORDER BY FID"),
            R"("1639516394标题abFUNCID:-101" "1639616394标题abFUNCID:-101" )");
}

TEST_F(DevPlatformStorageTest, DisabledUsersAndUnknownTypesGetNothing) {
  Vector asked = List({Record({{L"FUserID", 16398}}), Record({{L"FUserID", 16399}}), Record({{L"FUserID", 1}})});
  const auto told = [&](const wchar_t* type) {
    return Show(New<development::BillUseInfo>().Call(L"GetUserInfo", kProps, type, ByRef(asked)));
  };
  EXPECT_EQ(told(L"U"), "[{FUserID: 16399, FName: \"赵磊\", Email: \"zhaolei@example.com\", Mobile: \"\"}]");
  EXPECT_EQ(told(L"S"),
            "[{FUserID: 1, FName: \"南山材料厂\", Email: \"nanshan@example.com\", Mobile: \"13900000011\"}]");
  EXPECT_EQ(Show(New<development::BillUseInfo>().Call(L"GetIsUserNeedSend", kProps, ByRef(asked), std::int16_t{3})),
            "{16398: {FUserID: 16398, FIsNeedSend: true}, 16399: {FUserID: 16399, FIsNeedSend: true}, 1: {FUserID: 1, "
            "FIsNeedSend: false}}");
}

}  // namespace
}  // namespace tavio::test
