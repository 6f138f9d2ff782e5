#include <fstream>

#include "message/Message.h"
#include "tests/support/Foreign.h"
#include "tests/support/Platform.h"

namespace tavio::test {
namespace {

class SendMessageTest : public LibraryTest {
 protected:
  SendMessageTest() {
    RemoveMessageFiles();  // that a failed sending left
    props->props = L"Language=chs;ConnectString={Provider=x;Server=y};userid= 16394 ;";
    command->On(L"SendMessage", [this](Arguments& a) { return Receive(a); });
    message.ClassTypeID(5);
    message.ClassType(Record({}));
    message.TableInfo(Record({}));
  }
  ~SendMessageTest() override { RemoveMessageFiles(); }

  void Take(const Item& text, const Item& caption, const Item& to) {
    message.SetMessage(Record({{L"FID", 1}, {L"FTitle", caption}, {L"FMessage", text}, {L"MessageUsers", to}}));
  }
  Value Receive(Arguments& a) {
    constexpr VARTYPE kRef = VT_BYREF, kArray = VT_BYREF | VT_ARRAY;
    const VARTYPE types[] = {VT_BSTR,      kArray | VT_UI1, kRef | VT_I4, VT_BSTR,       kArray | VT_I4,
                             kRef | VT_I4, VT_I2,           VT_I2,        kRef | VT_BSTR};
    EXPECT_EQ(a.Count(), std::size(types));
    for (std::size_t i = 0; i < std::size(types); ++i) EXPECT_EQ(a.Raw(i).vt, types[i]) << "argument " << i;
    const auto bytes = a.At(1).ToBytes();
    content.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    users = a.At(4).ToIntegers();
    title = a.At(3).ToText();
    rest = Show(List({a.At(0), a.At(2), a.At(5), a.At(6), a.At(7), a.At(8)}));
    filesThen = MessageFiles();
    return Value(L"not read");
  }

  std::optional<FakeComponent> command{std::in_place, L"TavioAppCommand.Command"};
  // What the command was given.
  std::string content, rest;
  std::vector<std::int32_t> users;
  Text title;
  std::vector<std::filesystem::path> filesThen;
  Message message;
};

TEST_F(SendMessageTest, CommandTakesTheMessageInBytes) {
  message.RefreshVariableValue(Record({{L"FID", 77}}));
  message.AddVariable(Record({{L"FName", L"no"}, {L"FCaption", L"单号"}, {L"FValue", 5}}));
  Take(L"单[no]\U0001F600", L"[no]", Users(L"users", {3, -7}));
  EXPECT_TRUE(message.SendMessage({}));
  EXPECT_EQ(content, "\xB5\xA5\x35??\r") << "in the system's code page, and the carriage return";
  EXPECT_EQ(rest, R"(["Provider=x;Server=y", 5, 16394, 0s, 1s, "FUNCID:-1|FFlag:5|FInterID:77"])");
  EXPECT_EQ(users, (std::vector{3, -7}));
  EXPECT_EQ(title, L"[no]");
  ASSERT_EQ(filesThen.size(), 1u);
  EXPECT_EQ(filesThen[0].filename().wstring().substr(0, 9), L"temp1.639");
  EXPECT_TRUE(MessageFiles().empty());

  message.ClassTypeID(1003000);
  Take(L"", L"a\r\nb" + Text(60, L'长'), Users(L"users", {3}));
  EXPECT_TRUE(message.SendMessage({}));
  EXPECT_EQ(title, L"a\x14\nb" + Text(46, L'长')) << "control character 20 for the carriage return, and 50 in all";
  EXPECT_EQ(content, "\r");
  EXPECT_EQ(rest, R"(["Provider=x;Server=y", 0, 16394, 0s, 1s, "FUNCID:63510509|FFlag:1|FInterID:77"])");

  message.RefreshVariableValue(Record({{L"FID", Value::Null()}}));
  Take(Value::Null(), Value::Null(), Users(L"users", {3}));
  EXPECT_TRUE(message.SendMessage({}));
  EXPECT_EQ(title, L"");
  EXPECT_EQ(content, "\r");
  EXPECT_TRUE(rest.ends_with("FInterID:0\"]")) << rest;
}

TEST_F(SendMessageTest, RecipientsAreSettledFirst) {
  auto info = Record({{L"FBiller", Record({{L"FKey", L"FBiller"}, {L"FNeedSave", 1}, {L"FLookUpType", 7}})},
                      {L"Page1", Record({{L"FBiller", 1}})}});
  FakeComponent classInfo(L"TavioMClass.ClassInfo");
  FakeRecords nobody(List({})), found(List({Record({{L"FUserID", 11}})}));
  std::string sql;
  classInfo.On(L"GetData", [&](Arguments& a) {
    sql = Utf8(a.At(1).ToText());
    return Value(sql.find("=41 ") == std::string::npos ? nobody.New() : found.New());
  });
  const std::tuple<const char*, Dictionary, Item, std::vector<std::int32_t>> cases[] = {
      {"a user", {}, L"9", {3, 7, 9}},
      {"an excluded user", {}, 5, {3, 7}},
      {"no number", {}, L"张三", {3, 7}},
      {"a Boolean", {}, true, {3, 7}},
      {"a null", {}, Value::Null(), {3, 7}},
      {"an object that is no package", {}, FakeObject().New(), {3, 7}},
      {"an employee", {}, Record({{L"FUserID", L"?"}, {L"FEmpID", 41}}), {3, 7, 11}},
      {"an employee who is no user", {}, Record({{L"FEmpID", 42}}), {3, 7}},
      {"given recipients", Users(L"users", {5, 8, 6}), 9, {8, 9}},
      {"nobody is left", Users(L"users", {5}), Value(), {}},
  };
  message.TableInfo(info);
  message.RefreshVariableList();
  message.RefreshVariableValue(Record({{L"Page1", Record({{L"FBiller", 4}})}}));
  message.ExcludeUser(List({5, L"6", 100.0}));
  for (const auto& [row, given, held, sentTo] : cases) {
    SCOPED_TRACE(row);
    Take(L"a", L"b", Users(L"users", {3, 5, 7}));
    message.Data(Record({{L"Page1", Record({{L"FBiller", held}})}}));
    users.clear();
    EXPECT_EQ(message.SendMessage(given), !sentTo.empty());
    EXPECT_EQ(users, sentTo);
    EXPECT_TRUE(log->entries.back().ends_with(sentTo.empty() ? " 0" : " 1"));
    EXPECT_EQ(PackageAt(message.GetMessage(), L"MessageUsers"_key).Count(), 3);
    EXPECT_FALSE(given && given.Lookup(L"5"_key)) << "removed from the caller's own";
  }
  EXPECT_EQ(sql, "select FUserID from t_User where FEmpID=42 and FForbidden <> 1");
}

TEST_F(SendMessageTest, NothingToSendIsNoFailure) {
  EXPECT_FALSE(message.SendMessage(Users(L"users", {3}))) << "no package";
  EXPECT_TRUE(log->entries.back().ends_with(" 0"));
  Take(L"a", L"b", Value());
  EXPECT_FALSE(message.SendMessage({})) << "no list";
  EXPECT_TRUE(log->entries.back().ends_with(" 0"));
}

TEST_F(SendMessageTest, HostMayTakeItsExcludedUsersBackMeanwhile) {
  const auto listed = Users(L"users", {3, 5, 6});
  ForeignRecord given(listed);
  given.On(L"Lookup", [&](Arguments& a) {
    message.ExcludeUser({});
    return listed.Lookup(Key(a.At(0).ToText()));
  });
  Take(L"a", L"b", Value());
  message.ExcludeUser(List({L"5", L"6"}));
  EXPECT_TRUE(message.SendMessage(given.Handle()));
  EXPECT_EQ(users, std::vector{3});
}

TEST_F(SendMessageTest, FailuresAreReported) {
  std::ifstream reader;  // of the message's file
  const auto keepOpen = [&] { reader.open(MessageFiles().at(0)); };
  const auto beyond = Record({{L"2147483648", 1}});
  const auto tooMany = Dictionary::New();
  for (std::int32_t id = 1; id <= 32768; ++id) tooMany.Set(Key(id), Value(id));
  const std::tuple<const char*, std::function<void()>, const wchar_t*, bool> cases[] = {
      {"too many", [&] { Take(L"a", L"b", tooMany); }, L"«溢出»", false},
      {"beyond 32 bits", [&] { Take(L"a", L"b", beyond); }, L"«溢出»", false},
      {"the sender twice", [&] { props->props += L"UserID=1"; }, L"«共享属性重复» UserID", false},
      {"the file stays", [&] { command->On(L"SendMessage", keepOpen); }, L"«不能删除文件»", true},  // behind the call
  };
  for (const auto& [row, prepare, description, sent] : cases) {
    SCOPED_TRACE(row);
    props->props = L"ConnectString=x;userid=16394;";
    Take(L"a", L"b", Users(L"users", {3}));
    prepare();
    RemoveMessageFiles();
    EXPECT_EQ(message.SendMessage({}), sent);
    reader.close();
    auto shown = boxes.Take();
    if (sent) shown.at(0).text.resize(shown.at(0).text.rfind(L' '));  // the path
    EXPECT_EQ(shown, Boxes{Report(L"Message : SendMessage", description)});
  }
}

}  // namespace
}  // namespace tavio::test
