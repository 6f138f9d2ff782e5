#include <filesystem>
#include <fstream>

#include "actions/BillActions.h"
#include "foundation/values/OwnModule.h"
#include "tests/support/Foreign.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

namespace fs = std::filesystem;

const wchar_t kQuestion[] = L"如果删除全部操作，系统会重新加载预定义操作给单据，仍然确定要删除吗?";

class BillActionEditingTest : public LibraryTest {
 protected:
  // The collection of the object, which stays bound.
  void Hold(const Dictionary& collection) {
    actions.SetBillActions(collection);
    boxes.Take();
    actions.ClassTypeID(7);
  }
  std::string Held() { return Show(actions.GetBillActions()); }

  BillActions actions;
};

TEST_F(BillActionEditingTest, StoresACopyWithTheStoredIdentity) {
  const auto stored = [](const Item& status) {
    return Record({{L"Save", Record({{L"FCode", L"Save"}, {L"FID", 5}, {L"FStatus", status}})}});
  };
  const auto save = Record({{L"FCode", L"Save"}});
  const auto withMessages = Record({{L"FCode", L"Save"}, {L"Messages", Record({{L"new", 1}})}});
  const auto renamed = Record({{L"FCode", L"Keep"}, {L"FCode_Old", L"Save"}, {L"FID", 9}});
  const auto known = Record({{L"x", Record({{L"FCode", L"Save"}, {L"FID", 5}, {L"Messages", Record({{L"old", 1}})}})}});
  const std::string unknown = R"({Save: {FCode: "Save", Messages: {new: 1}, FID: 0, FStatus: 1}})";
  const std::string edited = R"({Save: {FCode: "Save", FID: 5, FStatus: 2, Messages: none}})";
  const std::tuple<const char*, Dictionary, Dictionary, std::string, std::string> cases[] = {
      {"unknown", {}, save, R"({Save: {FCode: "Save", FID: 0, FStatus: 1, Messages: none}})", "as AddNew"},
      {"unknown, with messages", {}, withMessages, unknown, "as AddNew"},
      {"known, a host's record", stored(0), ForeignRecord(save).Handle(), edited, "as AddNew"},
      {"removed", stored(6), save, edited, "as AddNew"},
      {"a null for the status and the old code", stored(Value::Null()),
       Record({{L"FCode", L"Save"}, {L"FCode_Old", Value::Null()}}),
       R"({Save: {FCode: "Save", FCode_Old: null, FID: 5, FStatus: 2, Messages: none}})", "as AddNew"},
      {"known under another key, with messages", known, withMessages,
       R"({Save: {FCode: "Save", Messages: {old: 1}, FID: 5, FStatus: 2}})",
       R"({x: {FCode: "Save", FID: 5, Messages: {old: 1}}, )"
       R"(Save: {FCode: "Save", Messages: {new: 1}, FID: 5, FStatus: 2}})"},
      {"renamed", stored(0), renamed,
       R"({Keep: {FCode: "Keep", FCode_Old: "Save", FID: 5, FStatus: 2, Messages: none}})",
       R"({Save: {FCode: "Save", FID: 5, FStatus: 0}, )"
       R"(Keep: {FCode: "Keep", FCode_Old: "Save", FID: 0, FStatus: 1, Messages: none}})"},
  };
  for (const auto& [row, collection, action, afterAddNew, afterUpdate] : cases) {
    SCOPED_TRACE(row);
    const auto before = Show(action);
    Hold(collection ? collection.Clone() : Dictionary());
    EXPECT_TRUE(actions.AddNew(action));
    EXPECT_EQ(Held(), afterAddNew);
    Hold(collection);
    EXPECT_TRUE(actions.Update(action));
    EXPECT_EQ(Held(), afterUpdate == "as AddNew" ? afterAddNew : afterUpdate);
    EXPECT_EQ(Show(action), before) << "the caller's package";
  }
}

TEST_F(BillActionEditingTest, RefusedEditLosesNothing) {
  const auto named = [](const wchar_t* code) { return Record({{L"FCode", code}, {L"FCode_Old", L"Save"}}); };
  const std::tuple<const char*, Dictionary, Boxes> cases[] = {
      {"no code", named(L""), Boxes(2, Warning(L"操作代码不能为空！"))},
      {"a null for a code", Record({{L"FCode", Value::Null()}}), Boxes(2, Warning(L"操作代码不能为空！"))},
      {"no letter first, but in upper case", named(L"ıtem"), Boxes(2, Warning(L"操作代码必须以字符开头！"))},
      {"a blank", named(L"A B"), Boxes(2, Warning(L"操作代码中间不能包含空格！"))},
      {"another sign", named(L"Aſ"), Boxes(2, Warning(L"操作代码只能由字符和数字组成！"))},
      {"nothing", {}, {}},
  };
  Hold(Record({{L"Save", Record({{L"FCode", L"Save"}, {L"FID", 5}})}}));
  const auto before = Held();
  for (const auto& [row, action, shown] : cases) {
    SCOPED_TRACE(row);
    EXPECT_FALSE(actions.AddNew(action));
    EXPECT_FALSE(actions.Update(action));
    EXPECT_EQ(boxes.Take(), shown);
    EXPECT_EQ(Held(), before);
  }
  for (const auto& entry : log->entries) EXPECT_FALSE(entry.ends_with(" 0")) << entry;
}

TEST_F(BillActionEditingTest, RemoveAsksBeforeTheLastLiveAction) {
  const UINT style = MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2;
  const auto action = [](const wchar_t* code, std::int32_t status) {
    return Record({{L"FCode", code}, {L"FStatus", status}});
  };
  const struct {
    const char* row;
    std::int32_t first, second;  // the status of "Save" and of the other one
    const wchar_t* code;
    int answer;  // 0 if nothing is asked
    bool removed;
    std::int32_t status;
  } cases[] = {
      {"one of two", 2, 2, L"Save", 0, true, 6},
      {"removed before", 5, 0, L"Save", 0, true, 5},
      {"the last, refused", 0, 4, L"Save", IDNO, false, 0},
      {"the last, agreed", 0, 6, L"Save", IDYES, true, 4},
      {"another letter case", 0, 0, L"save", 0, false, 0},
  };
  for (const auto& [row, first, second, code, answer, removed, status] : cases) {
    SCOPED_TRACE(row);
    const auto save = action(L"Save", first);
    Hold(Record({{L"Save", save}, {L"SAVE", action(L"SAVE", 0)}, {L"Check", action(L"Check", second)}}));
    if (answer) boxes.AnswerWith(answer);
    EXPECT_EQ(actions.Remove(code), removed);
    EXPECT_EQ(boxes.Take(), answer ? Boxes{Localised(kQuestion, style)} : Boxes{});
    EXPECT_EQ(Show(*save.Get(L"FStatus"_key)), std::to_string(status));
  }
}

// As a host does whose window goes on while its user is asked.
TEST_F(BillActionEditingTest, ActionMayVanishWhileItIsRemoved) {
  const auto held = Record({{L"Save", Record({{L"FCode", L"Save"}})}});
  const std::function<void()> vanishings[] = {[&] { held.Remove(L"Save"_key); }, [&] { actions.SetBillActions({}); }};
  for (const auto& vanish : vanishings) {
    ForeignRecord check(Record({{L"FCode", L"Check"}}));
    check.On(L"GetValue", [&] {
      vanish();
      return 0;
    });
    const auto collection = held.Clone();
    held.Set(L"Check"_key, check.Handle());
    Hold(held);
    EXPECT_FALSE(actions.Remove(L"Save"));
    held.Set(L"Save"_key, *collection.Get(L"Save"_key));
  }
}

TEST_F(BillActionEditingTest, RemoveAllAlwaysAsks) {
  const Box question = Localised(kQuestion, MB_YESNO | MB_ICONINFORMATION | MB_DEFBUTTON2);
  const auto of = [](const Item& status) { return Record({{L"FStatus", status}}); };
  const auto null = of(Value::Null());
  Hold(Record({{L"a", Record({})}, {L"b", of(4)}, {L"c", of(2)}, {L"null", null}, {L"d", 1}}));
  boxes.AnswerWith(IDNO);
  actions.RemoveAll();
  EXPECT_EQ(Held(), "{a: {}, b: {FStatus: 4}, c: {FStatus: 2}, null: {FStatus: null}, d: 1}");
  boxes.AnswerWith(IDYES);
  actions.GetBillActions().Remove(L"d"_key);
  actions.RemoveAll();
  EXPECT_EQ(Held(), "{a: {FStatus: 5}, b: {FStatus: 4}, c: {FStatus: 6}, null: {FStatus: 5}}");
  texts->On(L"LoadString", [&](Arguments& a) { return actions.SetBillActions({}), Localised(a.At(0).ToText()); });
  actions.RemoveAll();
  EXPECT_EQ(boxes.Take(), Boxes(3, question));
}

TEST_F(BillActionEditingTest, AppendVariablesReplaceThoseOfTheirKey) {
  const auto first = Record({{L"Items", Record({{L"a", 1}})}, {L"More", List({1, 2})}});
  ForeignRecord second(Record({{L"Items", List({})}, {L"None", Dictionary()}}));
  EXPECT_FALSE(actions.AddAppendVariables(Record({})) || actions.GetAppendVariables());
  EXPECT_FALSE(actions.AddAppendVariables(first));
  const auto held = actions.GetAppendVariables();
  EXPECT_NE(held.Object().Get(), first.Object().Get());
  EXPECT_EQ(held.Get(L"Items"_key)->ToObject().Get(), first.Get(L"Items"_key)->ToObject().Get());
  for (const auto& variables : {second.Handle(), held, Record({}), Dictionary()}) {
    EXPECT_FALSE(actions.AddAppendVariables(variables));
    EXPECT_EQ(actions.GetAppendVariables().Object().Get(), held.Object().Get());
    EXPECT_EQ(Show(held), "{Items: [], More: [1, 2], None: none}");
  }
}

TEST_F(BillActionEditingTest, DownloadLeavesOneFileInTheFolder) {
  const auto before = fs::current_path();
  const Text temp = GetAppFolder() + L"temp";
  const auto bytes = Value::Bytes(std::as_bytes(std::span("\0\x1A\n\xFF", 4)));
  for (const auto* name : {L"Temp.tmp", L"附件.bin"}) {
    const auto path = actions.DownloadFile(bytes, name);
    EXPECT_EQ(path, temp + L"\\" + name);
    std::ifstream file(fs::path(path), std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), std::string("\0\x1A\n\xFF", 4));
    EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(temp)), {}), 1);
    EXPECT_EQ(fs::current_path(), fs::path(temp));
  }
  EXPECT_EQ(actions.DownloadFile(bytes, L"none\\a"), L"");
  EXPECT_EQ(actions.DownloadFile(Value(L"text"), L"a"), L"");
  fs::current_path(before);
  fs::remove_all(fs::path(temp));
}

}  // namespace
}  // namespace tavio::test
