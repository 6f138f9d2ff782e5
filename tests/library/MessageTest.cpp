#include "com/MessageShell.h"
#include "message/Message.h"
#include "tests/support/Foreign.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

const char kNew[] = R"({FID: 0s, FTitle: "", FMessage: "", FMessageDescriptions: "", FSendType: 1s, )"
                    R"(MessageUsers: {}, EmailUsers: {}, SMSUsers: {}})";

Dictionary Variable(const wchar_t* name, const Item& caption, const Item& value = Value()) {
  return Record({{L"FName", name}, {L"FCaption", caption}, {L"FValue", value}});
}

Dictionary FieldOf(const wchar_t* key, const Item& needSave, const Item& visible, const Item& lookUpType) {
  return Record({{L"FKey", key},
                 {L"FCaption", L"名" + Text(key)},
                 {L"FNeedSave", needSave},
                 {L"FVisible", visible},
                 {L"FLookUpType", lookUpType}});
}

class MessageTest : public LibraryTest {
 protected:
  MessageTest() {
    message.ClassType(Record({}));
    message.TableInfo(Record({}));
  }

  Value Users() const { return message.GetMessage().Get(L"MessageUsers"_key)->Copy(); }
  // Field information with these records on the header page.
  void Fields(std::initializer_list<Field> fields) {
    const auto info = Record(fields);
    const auto page = Dictionary::New();
    for (const auto& field : fields) page.Set(Key(field.key), Value(1));
    info.Set(L"Page1"_key, page);
    message.TableInfo(info);
    message.RefreshVariableList();
  }
  std::string Lists() { return Show(message.GetVariableList()) + " " + Show(message.GetVariableUser()); }

  Message message;
};

TEST_F(MessageTest, FailuresAreReportedUnderEachOperationsLabel) {
  bool caption = true, value = true, name = true;
  EXPECT_EQ(message.TransMessage(L"a", caption, value, name), L"");
  EXPECT_TRUE(caption && value && name) << "as they were given";
  message.AddVariable(Variable(L"no", L"", Record({})));
  caption = name = false;
  EXPECT_EQ(message.TransMessage(L"a[no]b", caption, value, name), L"");
  message.TableInfo({});
  message.RefreshVariableList();
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.Message.RefreshVariableList 刷新消息变元列表 0");
  message.NewMessage();
  EXPECT_FALSE(message.RefreshVariableValue(Record({})));
  EXPECT_FALSE(message.SetMessage(Record({})));
  const Text kUnbound = L"«请先设置本组件关联的业务对象模板信息!»";
  EXPECT_EQ(boxes.Take(),
            (Boxes{Report(L"Message : TransMessage", L"«不能同时翻译标题和内容!»"),
                   Report(L"Message : TransMessage", L"«类型不匹配»"), Report(L"Message : NewMessage", kUnbound),
                   Report(L"Message : RefreshVariableValue", kUnbound), Report(L"Message : SetMessage", kUnbound)}));
}

TEST_F(MessageTest, SetMessageDescribesThePackageItself) {
  message.AddVariable(Variable(L"FBillNo", L"编号", 5));
  ForeignRecord foreign(Record({{L"FMessage", L"单号[FBillNo]"}, {L"FOwn", 1}}));
  const auto given = foreign.Handle();
  ASSERT_TRUE(message.SetMessage(given));
  EXPECT_EQ(Show(given), R"({FMessage: "单号[FBillNo]", FOwn: 1, FMessageDescriptions: "单号[编号]"})");
  EXPECT_EQ(message.GetMessage().Object().Get(), given.Object().Get());
  for (const auto& empty : {Record({}), Dictionary()}) {
    EXPECT_TRUE(message.SetMessage(empty));
    EXPECT_EQ(Show(message.GetMessage()), kNew);
    EXPECT_NE(message.GetMessage().Object().Get(), empty.Object().Get());
  }
  PackageAt(message.GetMessage(), L"EmailUsers"_key).Set(L"5"_key, Value(1));
  EXPECT_EQ(Show(*message.GetMessage().Get(L"SMSUsers"_key)), "{}") << "each list is one of its own";
}

TEST_F(MessageTest, EachEditOfTheUsersGivesThePackageANewList) {
  EXPECT_FALSE(message.RemoveAllUsers());
  EXPECT_FALSE(message.GetMessage()) << "no package is made to empty it";
  EXPECT_TRUE(message.AddUser(25));
  message.GetMessage().Set(L"FID"_key, Value(9));
  const auto first = Users();
  EXPECT_TRUE(message.AddUser(25));
  EXPECT_TRUE(message.AddUser(-3));
  EXPECT_EQ(Show(Users()), "{25: {FUserID: 25, FMessageID: 0s}, -3: {FUserID: -3, FMessageID: 9}}");
  EXPECT_EQ(Show(first), "{25: {FUserID: 25, FMessageID: 0s}}");
  const auto second = Users();
  EXPECT_FALSE(message.RemoveUser(4));
  EXPECT_NE(Users().ToObject().Get(), second.ToObject().Get());
  EXPECT_TRUE(message.RemoveUser(25));
  EXPECT_EQ(Show(Users()), "{-3: {FUserID: -3, FMessageID: 9}}");
  EXPECT_FALSE(message.RemoveAllUsers());
  EXPECT_EQ(Show(Users()), "{}");
}

TEST_F(MessageTest, StoredAndVisibleHeaderFieldsAreVariables) {
  Fields({{L"a", FieldOf(L"a", 1, 4, Value::Null())},
          {L"b", FieldOf(L"b", Value::Null(), 4, 7)},
          {L"b2", FieldOf(L"b", 1, Value::Null(), 0)},
          {L"c", FieldOf(L"c", true, 12, 7)},
          {L"d", FieldOf(L"d", -1, 0, L"7")},
          {L"e", FieldOf(L"e", L"1", L"8", 7.0)},
          {L"f", FieldOf(L"a", Short(1), Short(1), 6)}});
  EXPECT_EQ(Lists(), R"({a: {FName: "a", FCaption: "名a"}, e: {FName: "e", FCaption: "名e"}} )"
                     R"({c: {FName: "c", FCaption: "名c"}, )"
                     R"(d: {FName: "d", FCaption: "名d"}, e: {FName: "e", FCaption: "名e"}})");
  message.TableInfo(Record({{L"Page2", Record({{L"a", 1}})}}));
  message.RefreshVariableList();
  EXPECT_EQ(Lists(), "{} {}");
}

TEST_F(MessageTest, AddedVariableReplacesThatOfItsName) {
  EXPECT_FALSE(message.RemoveUser(1)) << "of a new package";
  Fields({{L"a", FieldOf(L"a", 1, 1, 0)}});
  ForeignRecord foreign(Record({{L"FName", 5}, {L"FCaption", L"五"}}));
  foreign.On(L"GetValue", Failing(L"only Lookup and Value are asked for"));
  EXPECT_TRUE(message.AddVariable(foreign.Handle()));
  EXPECT_TRUE(message.AddVariable(Variable(L"a", L"新", Record({}))));
  EXPECT_FALSE(message.AddVariable(Record({{L"FName", L"a"}})));
  EXPECT_TRUE(log->entries.back().ends_with(" 1")) << "no failure";
  EXPECT_EQ(Lists(), R"({a: {FName: "a", FCaption: "新", FValue: {}}, 5: {FName: 5, FCaption: "五", FValue: ""}} {})");
}

TEST_F(MessageTest, ValuesComeFromTheHeaderPage) {
  const auto looked = [](const Item& shown, const Item& stored) {
    return Record({{L"FKey", L"a"}, {L"FNeedSave", 1}, {L"FVisible", 1}, {L"FDSP", shown}, {L"FFLD", stored}});
  };
  const auto record = Record({{L"FName", L"张三"}, {L"FNick", Value()}, {L"FItemID", 3}});
  const auto plain = FieldOf(L"a", 1, 1, 0);
  auto onEntry = FieldOf(L"a", 1, 1, 0);
  onEntry.Set(L"FEntryType"_key, Value(Short(1)));
  const std::tuple<const char*, Dictionary, Dictionary, const char*> cases[] = {
      {"a plain field", plain, Record({{L"a", Short(5)}}), "5s"},
      {"another field's", plain, Record({{L"b", 5}}), "absent"},
      {"on an entry", onEntry, Record({{L"a", 5}}), "absent"},
      {"shown", looked(L"FName", L"FItemID"), Record({{L"a", record}}), R"("张三")"},
      {"shown empty", looked(L"FNick", L"FItemID"), Record({{L"a", record}}), "empty"},
      {"stored", looked(L"FNumber", L"FItemID"), Record({{L"a", record}}), "3"},
      {"stored, a host's page", looked(Value::Null(), L"FItemID"), ForeignRecord(Record({{L"a", record}})).Handle(),
       "3"},
      {"neither", looked(L"FNumber", L""), Record({{L"a", record}}), "absent"},
  };
  message.AddVariable(Variable(L"own", L"", 1));
  for (const auto& [row, field, page, value] : cases) {
    SCOPED_TRACE(row);
    Fields({{L"a", field}});
    const auto variable = PackageAt(message.GetVariableList(), L"a"_key), own = Variable(L"own", L"", 1);
    variable.Set(L"FValue"_key, Value(L"old"));
    message.AddVariable(own);
    EXPECT_TRUE(message.RefreshVariableValue(Record({{L"FID", 77}, {L"Page1", page}})));
    EXPECT_EQ(variable.Lookup(L"FValue"_key) ? Show(*variable.Get(L"FValue"_key)) : "absent", value);
    EXPECT_EQ(Show(*message.GetVariableList().Get(L"own"_key)), Show(own));
  }
}

TEST_F(MessageTest, HostMayChangeTheListWhileItsPageIsRead) {
  const auto add = [&](int first, int last) {
    for (int i = first; i < last; ++i) message.AddVariable(Variable((L"variable " + std::to_wstring(i)).c_str(), L""));
  };
  add(100, 200);
  const auto list = message.GetVariableList(), last = PackageAt(list, L"variable 199"_key);
  ForeignRecord page(Record({}));
  page.On(L"Lookup", [&](Arguments& a) {
    if (!a.At(0).EqualsText(L"variable 199")) return false;
    list.Remove(L"variable 199"_key);
    add(200, 400);  // one of which gets the room of the removed key
    return true;
  });
  page.On(L"Value", [](Arguments& a) { return a.At(0); });
  EXPECT_TRUE(message.RefreshVariableValue(Record({{L"Page1", page.Handle()}})));
  EXPECT_EQ(Show(*last.Get(L"FValue"_key)), R"("variable 199")");
}

class TransMessageTest : public MessageTest {
 protected:
  TransMessageTest() {
    message.AddVariable(Variable(L"no", L"单号", 5));
    message.AddVariable(Variable(L"date", L"Date", L"[no]"));
    message.AddVariable(Variable(L"open", L"单号", L""));
    message.AddVariable(Variable(L"bare", L""));
    message.AddVariable(Variable(L"void", Value()));
    const auto bare = PackageAt(message.GetVariableList(), L"bare"_key);
    bare.Remove(L"FCaption"_key);
    bare.Remove(L"FValue"_key);
  }
};

TEST_F(TransMessageTest, EachNameIsTranslatedAsTheFlagsSay) {
  const auto values = Record({{L"no", 7}, {L"bare", 2.5}});
  const auto editing = Record({{L"no", 7}, {L"bare", 2.5}, {L"FCode", L"mnuEditUse"}});
  ForeignRecord plainest(values);
  plainest.On(L"GetValue", Failing(L"GetValue"));
  ForeignRecord failing(values);
  failing.On(L"Lookup", Failing(L"断开"));
  const struct {
    const char *row, *flags, *settled;  // caption, value and name, if they are set
    Dictionary group;
    const wchar_t *text, *translation;
  } cases[] = {
      {"captions", "c", "c", {}, L"a[no]b[none][date]", L"a[单号]b[none][Date]"},
      {"captions before values", "cv", "c", {}, L"[bare][NO][ no][][void]", L"[bare][NO][ no][][]"},
      {"values", "v", "v", {}, L"[no][date][open][bare][none][void]", L"5[no][bare][none]"},
      {"a group fills", "v", "v", values, L"[no][open][bare][none]", L"52.5[none]"},
      {"a group rules", "v", "v", editing, L"[no][bare][open][FCode]", L"72.5[open][FCode]"},
      {"a host's group", "v", "v", plainest.Handle(), L"[no][open][bare][none]", L"52.5[none]"},
      {"a host's group that fails, and is not needed", "v", "v", failing.Handle(), L"[none]a[b", L"[none]a[b"},
      {"names", "n", "n", {}, L"[单号][DATE][date][no][]", L"[no][date][date][no][void]"},
      {"names before values", "vn", "n", {}, L"[单号]", L"[no]"},
  };
  for (const auto& [row, flags, settled, group, text, translation] : cases) {
    SCOPED_TRACE(row);
    message.GroupInfo(group);
    const auto given = [&](char flag) { return std::string(flags).find(flag) != std::string::npos; };
    bool caption = given('c'), value = given('v'), name = given('n');
    EXPECT_EQ(Utf8(message.TransMessage(text, caption, value, name).View()), Utf8(translation));
    EXPECT_EQ(std::string(caption, 'c') + std::string(value, 'v') + std::string(name, 'n'), settled);
  }
}

TEST_F(TransMessageTest, HostMayTakeItsGroupBackMeanwhile) {
  ForeignRecord group(Record({{L"no", 7}, {L"FCode", L"mnuEditUse"}}));
  group.On(L"Lookup", [&] {
    message.GroupInfo({});
    return true;
  });
  message.GroupInfo(group.Handle());
  bool caption = false, value = true, name = false;
  EXPECT_EQ(message.TransMessage(L"[no]", caption, value, name), L"7");
}

TEST_F(TransMessageTest, CaptionsAreSoughtAsFarAsTheTextNeedsThem) {
  message.GetVariableList().Set(L"spoilt"_key, Value(L"no record"));
  const auto names = [&](const wchar_t* text) {
    bool caption = false, value = false, name = true;
    return Utf8(message.TransMessage(text, caption, value, name).View());
  };
  EXPECT_EQ(names(L"[DATE][单号][][abc"), "[date][no][void][abc");
  EXPECT_EQ(names(L"[单号][nobody's]"), "");
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"Message : TransMessage", L"«类型不匹配»")});
}

// Host code, in the log, in a record of the host's or in its group, gives the text's variable and a value read before new
// texts.
TEST_F(LibraryTest, TextIsTranslatedAsItWasGiven) {
  const auto bound = Record({});
  ComPtr<_Message> message;
  com::Make<com::MessageShell>(IID_PPV_ARGS(&message));
  message->putref_ClassType(bound.Object().Get());
  message->putref_TableInfo(bound.Object().Get());
  message->RefreshVariableList();
  ComPtr<IDispatch> list;
  message->GetVariableList(&list);
  const Dictionary variables(list);
  ForeignRecord hosts(Record({{L"FValue", L"host"}})), group(Record({{L"FCode", L"x"}}));
  BString text;
  std::vector<BString> others;
  const auto change = [&] {
    text = BString(L"[f] [h] after");
    PackageAt(variables, L"f"_key).Set(L"FValue"_key, Value(L"after"));
    // Some of them get the room of the old ones.
    for (int i = 0; i < 16; ++i) others.emplace_back(i % 2 ? L"[f] [h] other" : L"other");
    return true;
  };
  const std::tuple<const char*, std::function<void()>, const char*> cases[] = {
      {"the log", [&] { log->On(L"LogStart", change); }, "after host given"},
      {"a host's record",
       [&] {
         log->On(L"IsEnabled", [] { return false; });
         hosts.On(L"Lookup", change);
         message->NewMessage();  // whereupon the log is let go
       },
       "value host given"},
      {"the host's group",
       [&] {
         hosts.On(L"Lookup", [] { return true; });
         group.On(L"Lookup", change);
         message->putref_GroupInfo(group.Handle().AsValue().Raw());
       },
       "after host given"}};
  for (const auto& [row, arrange, expected] : cases) {
    variables.Set(L"f"_key, Variable(L"f", L"f", L"value"));
    variables.Set(L"h"_key, hosts.Handle());
    arrange();
    text = BString(L"[f] [h] given");
    VARIANT_BOOL value = 1;
    BString translation;
    EXPECT_EQ(message->TransMessage(text.Get(), nullptr, &value, nullptr, translation.Receive()), S_OK);
    EXPECT_EQ(Utf8(translation.View()), expected) << row;
    EXPECT_EQ(value, 1) << "as it was, which is true";
  }
}

}  // namespace
}  // namespace tavio::test
