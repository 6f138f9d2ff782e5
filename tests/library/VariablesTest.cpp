#include "message/Message.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

Dictionary FieldOf(const wchar_t* key, const Item& needSave, const Item& visible, const Item& lookUpType) {
  return Record({{L"FKey", key},
                 {L"FCaption", (L"名" + Text(key))},
                 {L"FNeedSave", needSave},
                 {L"FVisible", visible},
                 {L"FLookUpType", lookUpType}});
}

Value Null() {
  Value null;
  null.InPlace()->vt = VT_NULL;
  return null;
}

class VariablesTest : public LibraryTest {
 protected:
  VariablesTest() { message.ClassType(Record({})); }

  // Field information with these records on the header page.
  void Fields(std::initializer_list<Field> fields) {
    const auto info = Record(fields);
    const auto page = Dictionary::New();
    for (const auto& field : fields) page.Set(Key(field.key), Value(1));
    info.Set(L"Page1"_key, page);
    message.TableInfo(info);
  }
  std::string Lists() { return Show(message.GetVariableList()) + " " + Show(message.GetVariableUser()); }

  Message message;
};

TEST_F(VariablesTest, StoredAndVisibleHeaderFieldsAreVariables) {
  Fields({{L"a", FieldOf(L"a", 1, 4, Null())},
          {L"b", FieldOf(L"b", Null(), 4, 7)},
          {L"b2", FieldOf(L"b", 1, Null(), 0)},
          {L"c", FieldOf(L"c", true, 12, 7)},
          {L"d", FieldOf(L"d", -1, 0, L"7")},
          {L"e", FieldOf(L"e", L"1", L"8", 7.0)},
          {L"f", FieldOf(L"a", Short(1), Short(1), 6)}});
  message.RefreshVariableList();
  EXPECT_EQ(Lists(), R"({a: {FName: "a", FCaption: "名a"}, e: {FName: "e", FCaption: "名e"}} )"
                     R"({c: {FName: "c", FCaption: "名c"}, )"
                     R"(d: {FName: "d", FCaption: "名d"}, e: {FName: "e", FCaption: "名e"}})");
  message.TableInfo(Record({{L"Page2", Record({{L"a", 1}})}}));
  message.RefreshVariableList();
  EXPECT_EQ(Lists(), "{} {}");
}

TEST_F(VariablesTest, AddedVariableReplacesThatOfItsName) {
  Fields({{L"a", FieldOf(L"a", 1, 1, 0)}});
  ForeignRecord foreign(Record({{L"FName", 5}, {L"FCaption", L"五"}}));
  EXPECT_TRUE(message.AddVariable(foreign.Handle()));
  const auto given = Record({{L"FName", L"a"}, {L"FCaption", L"新"}, {L"FValue", Record({})}, {L"FMore", 1}});
  EXPECT_TRUE(message.AddVariable(given));
  EXPECT_EQ(Lists(), R"({a: {FName: "a", FCaption: "新", FValue: {}}, 5: {FName: 5, FCaption: "五", FValue: ""}} {})");
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.Message.AddVariable 向消息变元列表中增加变元 1");
}

TEST_F(VariablesTest, ValuesComeFromTheHeaderPage) {
  const auto looked = [](const Item& shown, const Item& stored) {
    return Record({{L"FKey", L"a"}, {L"FNeedSave", 1}, {L"FVisible", 1}, {L"FDSP", shown}, {L"FFLD", stored}});
  };
  const auto record = Record({{L"FName", L"张三"}, {L"FItemID", 3}});
  const auto plain = FieldOf(L"a", 1, 1, 0);
  auto onEntry = FieldOf(L"a", 1, 1, 0);
  onEntry.Set(L"FEntryType"_key, Value(Short(1)));
  const struct {
    Dictionary field;
    Dictionary page;
    const char* value;
  } cases[] = {
      {plain, Record({{L"a", Short(5)}}), ", FValue: 5s"},
      {plain, Record({{L"b", 5}}), ""},
      {onEntry, Record({{L"a", 5}}), ""},
      {looked(L"FName", L"FItemID"), Record({{L"a", record}}), R"(, FValue: "张三")"},
      {looked(L"FNumber", L"FItemID"), Record({{L"a", record}}), ", FValue: 3"},
      {looked(Null(), L"FItemID"), ForeignRecord(Record({{L"a", record}})).Handle(), ", FValue: 3"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    Fields({{L"a", c.field}});
    message.RefreshVariableList();
    PackageAt(message.GetVariableList(), L"a"_key).Set(L"FValue"_key, Value(L"old"));
    message.AddVariable(Record({{L"FName", L"own"}, {L"FCaption", L""}, {L"FValue", 1}}));
    EXPECT_TRUE(message.RefreshVariableValue(Record({{L"FID", 77}, {L"Page1", c.page}})));
    const auto caption = Show(*PackageAt(message.GetVariableList(), L"a"_key).Get(L"FCaption"_key));
    EXPECT_EQ(Show(message.GetVariableList()), R"({a: {FName: "a", FCaption: )" + caption + c.value +
                                                   R"(}, own: {FName: "own", FCaption: "", FValue: 1}})");
  }
}

}  // namespace
}  // namespace tavio::test
