#include <winsock2.h>
#include <ws2tcpip.h>

#include <filesystem>

#include "development/business/BillUseInfo.h"
#include "development/business/ClassDefineUpdate.h"
#include "development/business/ClassInfo.h"
#include "development/environment/Data.h"
#include "development/environment/Log.h"
#include "development/environment/PropStore.h"
#include "development/environment/UserProfile.h"
#include "development/mail/MailGateway.h"
#include "development/mail/SmsGateway.h"
#include "development/mail/Smtp.h"
#include "development/print/NotePrint.h"
#include "development/storage/Files.h"
#include "development/storage/PackageJson.h"
#include "development/storage/Storage.h"
#include "development/storage/Tables.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/values/CodePage.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using namespace development;

constexpr std::int32_t kClass = 1005;
constexpr wchar_t kProps[] = L"Language=CHS;";

// Every test has a database of its own. No object of the platform outlives a statement, so that each call connects anew
// and reads what was really stored.
class DevPlatformTest : public ::testing::Test {
 protected:
  DevPlatformTest() {
    std::filesystem::remove_all(folder_);
    SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", folder_.c_str());
  }
  ~DevPlatformTest() override {
    EXPECT_EQ(com::ModuleUse(), 0) << "an object of the platform is still alive";
    for (const auto* name : {L"TAVIO_DEV_FOLDER", L"TAVIO_DEV_USER"}) SetEnvironmentVariableW(name, nullptr);
    std::filesystem::remove_all(folder_);
  }

  static Dictionary Added(const wchar_t* code) {
    return Record({{L"FCode", code}, {L"FStatus", 1}, {L"FRightMask", 512}, {L"FObjectID", kClass}});
  }
  static Dictionary Load() {
    return Dictionary(Component(MakeObject<ClassInfo>()).Call(L"GetBillActions", kProps, kClass));
  }
  static std::string Save(Dictionary& actions) {
    auto classType = kClass;
    Dictionary type;
    const Component update(MakeObject<ClassDefineUpdate>());
    return Outcome(
        [&] { return update.Call(L"SaveBillActions", kProps, ByRef(classType), ByRef(actions), ByRef(type)); });
  }
  // Runs a statement; what it answers in its column F, one after the other.
  static std::string Sql(const Text& text) {
    std::string column;
    const RecordSet rows(Component(MakeObject<ClassInfo>()).Call(L"GetData", kProps, text));
    for (; !rows.EndReached(); rows.MoveNext()) column += Show(rows.Field(L"F")) + " ";
    return column;
  }
  static std::string Export() { return Utf8(Component(MakeObject<Data>()).Call(L"Export").ToText()); }
  static std::string Import(const std::string& data) {
    return Outcome([&] { return Component(MakeObject<Data>()).Call(L"Import", FromUtf8(data)); });
  }
  // The rights masks that are taken for the business object.
  static std::string Rights() {
    return Sql(L"select FAccessUse AS F from t_ObjectAccessType where fobjectid=1005 order by 1");
  }
  // A bill's values as they are printed; in the file they are 16-bit numbers.
  static std::string Printed(Text name, std::int32_t bill) {
    const Component print(MakeObject<NotePrint>());
    print.Assign(L"TableInfo", Component(MakeObject<ClassInfo>()).Call(L"GetTableInfo", kProps, kClass));
    const auto outcome = Outcome([&] { return print.Call(L"CreatePDFFile", ByRef(name), ByRef(bill), kProps); });
    return outcome == "true" ? ReadWhole(name) : outcome;
  }

  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / (L"devplatform" + std::to_wstring(GetCurrentProcessId()));
};

TEST_F(DevPlatformTest, SavedCollectionIsReadBack) {
  auto actions = Load();
  PackageAt(actions, L"Close"_key).Set(L"FStatus"_key, Value(4));
  actions.Set(L"Export"_key, Added(L"Export"));
  EXPECT_EQ(Save(actions), "empty");
  EXPECT_EQ(Show(actions), Show(Load())) << "what comes back by reference is what is stored";
  EXPECT_FALSE(actions.Lookup(L"Close"_key));
  EXPECT_EQ(Show(*actions.Get(L"Export"_key)),
            "{FCode: \"Export\", FStatus: 0, FRightMask: 512, FObjectID: 1005, FID: 2001, FClassTypeID: 1005, "
            "FVersion: 2}");
  EXPECT_NE(Rights().find("512 "), std::string::npos);
  PackageAt(actions, L"Export"_key).Set(L"FStatus"_key, Value(4));
  Save(actions);
  EXPECT_EQ(Rights().find("512 "), std::string::npos) << "a dropped action's rights bit is free again";
}

TEST_F(DevPlatformTest, RefusedSaveStoresNothing) {
  auto broken = Load();
  PackageAt(broken, L"Close"_key).Set(L"FID"_key, Value(1001));
  const auto before = Show(Load()) + Rights();
  EXPECT_NE(Save(broken).find("数据库错误"), std::string::npos);
  EXPECT_EQ(Show(Load()) + Rights(), before);
}

TEST_F(DevPlatformTest, CallsWithoutPropertiesAreRefused) {
  const std::pair<ComPtr<IDispatch> (*)(), Strings> served[] = {
      {&MakeObject<ClassInfo>,
       {"GetBillActions", "getpredefineactions", "GetBillEnvironments", "GetClassMenu", "GetData", "GetClassType",
        "GetTableInfo", "GetClassTypeEntry", "GetBillData"}},
      {&MakeObject<ClassDefineUpdate>, {"SaveBillActions"}},
      {&MakeObject<BillUseInfo>, {"GetIsUserNeedSend", "GetUserInfo"}},
      {&MakeObject<ServerProfile>, {"LoadUserProfile"}}};
  const std::string refusal = "属性字符串为空";
  for (const auto& [make, members] : served) {
    for (const auto& member : members) {
      const auto call = [&] { return Component(make()).Call(FromUtf8(member).c_str(), L"", kClass, L"U", true); };
      EXPECT_EQ(Outcome(call), refusal) << member;
    }
  }
  const auto request = Record({{L"PropsString", L""}, {L"Recipients", L"1"}, {L"Addrecipients", L"a@b"}});
  const Component mail(MakeObject<MailGateway>()), sms(MakeObject<SmsGateway>()), print(MakeObject<NotePrint>());
  EXPECT_EQ(Outcome([&] { return mail.Call(L"MorlaSendMail", request); }), '"' + refusal + '"');
  EXPECT_EQ(Outcome([&] { return sms.Call(L"SmsSendForBillCheck", List({request})); }), refusal);
  EXPECT_EQ(Outcome([&] { return print.Call(L"CreatePDFFile", L"x", 5001, L""); }), refusal);
}

TEST_F(DevPlatformTest, UserOfTheProcessAlone) {
  const Component store(MakeObject<PropStore>());
  const auto read = [&](const wchar_t* name) { return Outcome([&] { return store.Call(L"GetProperty", 0, name); }); };
  const auto all = read(L"PropsString");
  EXPECT_NE(all.find("UserID=16394;UserName=张伟;"), std::string::npos);
  SetEnvironmentVariableW(L"TAVIO_DEV_USER", L"16395");
  EXPECT_NE(read(L"PropsString").find("Language=CHS;UserID=16395;UserName=李娜;"), std::string::npos);
  EXPECT_EQ(read(L"username"), "\"李娜\"");
  const auto renamed = Outcome([&] { return store.Call(L"SetProperty", L"UserID", L"16396"); });
  EXPECT_NE(renamed.find("TAVIO_DEV_USER"), std::string::npos);
  const Component profile(MakeObject<ClientProfile>());
  profile.Call(L"Save", L"Section", L"Name", Record({{L"FOwn", 1}}));
  SetEnvironmentVariableW(L"TAVIO_DEV_USER", nullptr);
  EXPECT_EQ(Show(profile.Call(L"Load", L"Section", L"Name")), "{}") << "the settings are those of the process's user";
  EXPECT_EQ(read(L"PropsString"), all) << "nothing is stored";
  for (const auto* wrong : {L"1", L"16398", L"李娜", L"16395;"}) {  // 16398 may not log in
    SetEnvironmentVariableW(L"TAVIO_DEV_USER", wrong);
    EXPECT_EQ(read(L"PropsString"), "环境变量 TAVIO_DEV_USER 指定的用户不存在或已禁用: " + Utf8(wrong));
  }
}

TEST_F(DevPlatformTest, RelativeFolderIsThatOfTheFirstUse) {
  const auto before = std::filesystem::current_path();
  std::filesystem::create_directories(folder_ / "first");
  std::filesystem::create_directories(folder_ / "later");
  std::filesystem::current_path(folder_ / "first");
  SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", L"not/yet\\there");
  Load();
  std::filesystem::current_path(folder_ / "later");
  EXPECT_TRUE(Printed(L"bill", 5001).starts_with("%PDF"));
  std::filesystem::current_path(before);
  EXPECT_TRUE(std::filesystem::exists(folder_ / "first/not/yet/there/print/bill_5001.pdf"));
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "later"));
  SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", L"a;b");
  EXPECT_EQ(Outcome([] { return Load(); }), "数据文件夹的路径不能含有分号: a;b");
}

TEST_F(DevPlatformTest, PrintsTheBillWhoseObjectBearsTheName) {
  Sql(L"INSERT INTO t_ClassType VALUES (7, 1, '{\"FName_ENU\": \"Order\"}')");
  Sql(L"INSERT INTO t_Bill VALUES (7, 5001, '{\"Page1\": {\"FBillNo\": \"Z\"}}')");
  Sql(L"INSERT INTO t_Bill VALUES (7, 9, '{\"Page1\": {\"FBillNo\": \"Z\"}}')");
  const std::string refusal = "多个单据的编号相同,无法按名称确定: ";
  EXPECT_NE(Printed(L"Order", 5001).find("005A> Tj"), std::string::npos);
  EXPECT_EQ(Printed(L"采购申请单", 5001).find("005A> Tj"), std::string::npos);
  EXPECT_NE(Printed(L"any", 9).find("005A> Tj"), std::string::npos) << "the only one";
  EXPECT_EQ(Printed(L"any", 5001), refusal + "any");
  Sql(L"UPDATE t_ClassType SET FPackage = '{\"FName_ENU\": \"Purchase Request\"}' WHERE FID = 7");
  EXPECT_EQ(Printed(L"Purchase Request", 5001), refusal + "Purchase Request") << "both bear it";
}

TEST_F(DevPlatformTest, OldLogEntriesGo) {
  const Component log(MakeObject<Log>());
  Sql(L"INSERT INTO t_Log (FID, FProcessID, FLabel, FBegin) SELECT 500, 1, 'old', 0 UNION SELECT 501, 1, 'kept', 0");
  Sql(L"UPDATE t_Identity SET FNext = 20499 WHERE FName = 'Log'");
  log.Call(L"LogStart", L"before");
  EXPECT_EQ(Sql(L"SELECT FLabel AS F FROM t_Log ORDER BY FID"), "\"old\" \"kept\" \"before\" ");
  log.Call(L"LogStart", L"now");
  EXPECT_EQ(Sql(L"SELECT FLabel AS F FROM t_Log ORDER BY FID"), "\"kept\" \"before\" \"now\" ");
}

TEST_F(DevPlatformTest, ExportedDataComesBack) {
  const auto fresh = Export();
  auto actions = Load();
  actions.Set(L"New"_key, Added(L"New"));
  Save(actions);
  const auto changed = Export();
  EXPECT_EQ(Import(std::string(Seed())), "empty");
  EXPECT_EQ(Export(), fresh);
  EXPECT_EQ(Import(changed), "empty");
  EXPECT_EQ(Import(R"({"t_PlatformVersion": [{"FVersion": 1}], "t_UserNeedSend": []})"), "empty");
  EXPECT_EQ(Sql(L"SELECT COUNT(*) AS F FROM t_UserNeedSend UNION ALL SELECT COUNT(*) FROM t_User"), "0 6 ");
  auto numbered = Load();
  numbered.Set(L"Next"_key, Added(L"Next"));
  EXPECT_EQ(Save(numbered), "empty");
  EXPECT_EQ(Show(*PackageAt(numbered, L"Next"_key).Get(L"FID"_key)), "2002") << "a number is given out once";
}

TEST_F(DevPlatformTest, WrongDataIsRefusedWhole) {
  const auto bill = [](const std::string& package) {
    return R"("t_Bill": [{"FClassTypeID": 1, "FID": 1, "FPackage": )" + package + "}]";
  };
  const auto need = [](const std::string& columns) { return R"("t_UserNeedSend": [{"FKind": 3, )" + columns + "}]"; };
  const std::tuple<const char*, std::string, const char*> kRows[] = {
      {"no list", R"("t_Bill": {})", "t_Bill 不是列表"},
      {"no record", R"("t_Bill": [7])", "t_Bill 第1行: 不是记录"},
      {"an unknown column", need(R"("FUserID": 1, "FIsNeedSend": 1, "FX": 1)"), "未知的列 FX"},
      {"a missing column", need(R"("FUserID": 1)"), "第1行: FIsNeedSend 缺少值"},
      {"a text for a number", need(R"("FUserID": "1", "FIsNeedSend": 1)"), "FUserID 值不合适"},
      {"beyond 32 bits", need(R"("FUserID": 4294967296, "FIsNeedSend": 1)"), "FUserID 溢出"},
      {"beyond 64 bits", need(R"("FUserID": 99999999999999999999, "FIsNeedSend": 1)"), "溢出"},
      {"a long text", R"("t_SharedProperty": [{"FIndex": 1, "FValue": "", "FName": ")" + std::string(81, 'x') + "\"}]",
       "FName 值不合适"},
      {"no package", bill("\"x\""), "FPackage 值不合适"},
      {"a package without end", bill(std::string(99999, '[') + std::string(99999, ']')), "嵌套过深"},
      {"the package of another bill", bill(R"({"FID": 2})"), "FPackage 与其他列不符"},
      {"a user without employee", R"("t_Emp": [])", "数据不一致: t_User.FEmpID"},
      {"without the current user", R"("t_User": [])", "数据不一致: t_SharedProperty.UserID 16394"},
      {"an unknown setting", R"("t_Setting": [{"FName": "MailWay", "FValue": "pigeon"}])", "MailWay 不能设为 pigeon"},
  };
  const auto before = Export();
  for (const auto& [name, tables, told] : kRows) {
    const auto data = R"({"t_PlatformVersion": [{"FVersion": 2}], "t_ClassMenu": [], )" + tables + "}";
    EXPECT_NE(Import(data).find(told), std::string::npos) << name;
    EXPECT_EQ(Export(), before) << name;
  }
  EXPECT_TRUE(Import("{").starts_with("不是有效的 JSON: "));
  EXPECT_EQ(Import(R"({"t_User": []})"), "数据没有版本 (t_PlatformVersion)");
  EXPECT_EQ(Import(R"({"t_PlatformVersion": [{"FVersion": 3}]})"), "数据的版本是 3,本程序只能处理到版本 2");
}

TEST_F(DevPlatformTest, ResetReachesWhatIsNotExported) {
  const Component data(MakeObject<Data>());
  auto late = Load();
  Sql(L"INSERT INTO t_SmsOutbox VALUES (1, '', '', '', 0, 0, 0)");
  EXPECT_NE(Outcome([&] { return data.Call(L"Reset", L"another"); }).find("而不是 another"), std::string::npos);
  EXPECT_EQ(Sql(L"SELECT FID AS F FROM t_SmsOutbox"), "1 ");
  data.Call(L"Reset", TextAt(Dictionary(data.Call(L"Describe")), L"FDatabase"_key));
  EXPECT_EQ(Sql(L"SELECT FID AS F FROM t_SmsOutbox"), "");
  EXPECT_NE(Save(late).find("其他用户"), std::string::npos) << "what was loaded before is outdated";
}

TEST_F(DevPlatformTest, OtherVersionsOfTheTables) {
  const wchar_t index[] = L"SELECT name AS F FROM sqlite_master WHERE name = 'i_Inbox_Recipient'";
  const wchar_t version[] = L"SELECT FVersion AS F FROM t_PlatformVersion";
  Sql(L"DROP INDEX i_Inbox_Recipient");
  Sql(L"UPDATE t_PlatformVersion SET FVersion = 1");
  Sql(L"DELETE FROM t_Setting WHERE FName <> 'LogEnabled'");
  const auto before = Sql(L"SELECT FPackage AS F FROM t_Bill");
  EXPECT_EQ(Sql(version) + Sql(index), "2 \"i_Inbox_Recipient\" ");
  EXPECT_EQ(Sql(L"SELECT FPackage AS F FROM t_Bill"), before);
  EXPECT_EQ(Show(Component(MakeObject<Data>()).Call(L"Setting", L"MailWay")), "\"outbox\"");
  const auto refused = [](const char* told) {
    const auto outcome = Outcome(&Load);
    EXPECT_TRUE(outcome.starts_with("不能使用数据库 SQLite ") && outcome.find(told) != std::string::npos) << outcome;
  };
  const std::pair<const wchar_t*, const char*> kSpoilt[] = {
      {L"UPDATE t_PlatformVersion SET FVersion = 3", "表的版本是 3,本程序只能处理到版本 2"},
      {L"UPDATE t_PlatformVersion SET FVersion = 'x'", "无法读取其版本"},
      {L"DELETE FROM t_PlatformVersion", "无法读取其版本"},
      {L"DROP TABLE t_PlatformVersion", "already exists"}};
  for (const auto& [spoil, told] : kSpoilt) {
    std::filesystem::remove_all(folder_);
    Sql(spoil);
    refused(told);
  }
  WriteWhole(folder_.wstring() + L"\\platform.db", std::string(4096, 'x'));
  refused("not a database");
}

TEST(SmtpTest, LoginsAreForThisMachine) {
  const std::pair<const char*, bool> kAddresses[] = {
      {"127.0.0.1", true}, {"127.8.0.9", true}, {"128.0.0.1", false},       {"192.0.2.127", false},
      {"::1", true},       {"::2", false},      {"::ffff:127.0.0.1", true}, {"::ffff:10.0.0.127", false},
      {"7f00::1", false}};
  WSADATA data;
  ASSERT_EQ(WSAStartup(MAKEWORD(2, 2), &data), 0);
  for (const auto& [text, isLoopback] : kAddresses) {
    addrinfo hints = {}, *found = nullptr;
    hints.ai_flags = AI_NUMERICHOST;
    ASSERT_EQ(getaddrinfo(text, "25", &hints, &found), 0) << text;
    EXPECT_EQ(IsLoopback(*found->ai_addr), isLoopback) << text;
    freeaddrinfo(found);
  }
  WSACleanup();
}

TEST(PackageJsonTest, NumbersMustFit) {
  const std::pair<const char*, const char*> kRows[] = {
      {"[2147483647, -2147483648]", "[2147483647, -2147483648]"},
      {"2147483648", "溢出"},
      {"-2147483649", "溢出"},
      {"18446744073709551615", "溢出"},
      {R"({"$i2": -32768})", "-32768s"},
      {R"({"$i2": 32768})", "溢出"},
      {R"({"$i2": 1.5})", "类型不匹配"},
      {R"({"$i8": 1})", "类型不匹配"},
  };
  for (const auto& [json, outcome] : kRows) {
    EXPECT_EQ(Outcome([&] { return FromJson(Json::parse(json)); }), outcome) << json;
  }
}

}  // namespace
}  // namespace tavio::test
