#include "companion/check/Findings.h"
#include "companion/exchange/Exchange.h"
#include "tests/companion/Platform.h"

namespace tavio::test {
namespace {

using companion::CheckedAction;
using companion::CheckedMessage;
using companion::Subject;

Subject Sound() {
  Subject subject;
  subject.fields = {{L"FBillNo", L"单据编号", L"Page1", true, false}, {L"FDept", L"部门", L"Page1", true, false}};
  subject.scenarios = {1, 2, 3, 8};
  subject.known = {L"FHost"};
  subject.actions = {{L"Save", 3, 2, {{1, L"标题", L"[FBillNo] [FDept]", {{L"MessageUsers", {16395}}}}}}};
  return subject;
}

CheckedMessage& MessageOf(Subject& subject) { return subject.actions[0].messages[0]; }

std::string Show(const companion::Findings& findings) {
  std::string text;
  for (const auto& finding : findings) {
    text += std::string(finding.rule) + "|" + Utf8(finding.action) + " " + std::to_string(finding.scenario) + "|" +
            Utf8(finding.place) + "|" + Utf8(finding.what) + "|" + Utf8(finding.todo) + "\n";
  }
  return text;
}

void AddMessage(Subject& subject, std::int32_t mask) {
  auto& messages = subject.actions[0].messages;
  messages.push_back(messages[0]);
  messages.back().mask = mask;
}

void AddAction(Subject& subject, const wchar_t* code, std::int32_t rights) {
  subject.actions.push_back({code, 3, rights, {}});
}

const std::tuple<const char*, void (*)(Subject&), std::string> kRows[] = {
    {"sound", [](Subject&) {}, ""},
    {"a name that is none", [](Subject& s) { MessageOf(s).text += L"[FBilNo]"; },
     "unknown variable|Save 1|FMessage|[FBilNo]|也许应为 [FBillNo]"},
    {"a caption for a name", [](Subject& s) { MessageOf(s).text += L"[部门]"; },
     "unknown variable|Save 1|FMessage|[部门]|也许应为 [FDept]"},
    {"a name that nobody can guess", [](Subject& s) { MessageOf(s).text += L"[Xyz]"; },
     "unknown variable|Save 1|FMessage|[Xyz]|改名,或者告知它由宿主程序加入"},
    {"a name that hosts add", [](Subject& s) { MessageOf(s).text += L"[FHost]"; }, ""},
    {"a bracket", [](Subject& s) { MessageOf(s).text += L"[FDept"; }, "unclosed bracket|Save 1|FMessage|[FDept|补上 ]"},
    {"a title of 51", [](Subject& s) { MessageOf(s).title = Text(51, L'x'); },
     "long title|Save 1|FTitle|51|缩短到50个字符"},
    {"a title of 50", [](Subject& s) { MessageOf(s).title = Text(50, L'x'); }, ""},
    {"a character", [](Subject& s) { MessageOf(s).text += L"\u20bf"; },
     "outside code page|Save 1|FMessage|\u20bf (U+20BF)|换一个系统代码页中的字符"},
    {"gone", [](Subject& s) { MessageOf(s).recipients[L"MessageUsers"] = {1}; },
     "recipient gone|Save 1|MessageUsers|1|从名单中移去"},
    {"nobody", [](Subject& s) { MessageOf(s).recipients.clear(); }, "no recipient|Save 1|||加入接收人"},
    {"never", [](Subject& s) { MessageOf(s).mask = 8; },
     "never fires|Save 8|FEnvironment|3|与操作的业务场景没有交集,请改变"},
    {"hidden by a greater mask but for a scenario that is not the action's",
     [](Subject& s) {
       s.scenarios.push_back(16);
       s.actions[0].mask = 8;
       MessageOf(s).mask = 24;
       AddMessage(s, 40);
     },
     "hidden|Save 24|FEnvironment|40|在每个业务场景中都被掩码更大的消息代替"},
    {"hidden in one scenario, sent in another", [](Subject& s) { AddMessage(s, 2); }, ""},
    {"doubled code", [](Subject& s) { AddAction(s, L"Save", 4); },
     "doubled code|Save 0|FCode|Save|改变其中一个操作代码"},
    {"doubled right", [](Subject& s) { AddAction(s, L"Copy", 3); },
     "doubled right|Copy 0|FRightMask|2|权限与此操作重复: Save"},
};

TEST(CheckTest, FindsEachFaultAndNothingElse) {
  for (const auto& [name, spoil, finding] : kRows) {
    auto subject = Sound();
    spoil(subject);
    companion::Users users;
    EXPECT_EQ(Show(companion::Check(subject, users)), finding.empty() ? "" : finding + "\n") << name;
  }
  const WithoutUserColumn gone(L"FName");
  companion::Users users;
  EXPECT_EQ(Show(companion::Check(Sound(), users)), "recipients not checked| 0||t_User|读不到用户表 t_User\n");
}

TEST(CheckTest, ComparesWithAnOlderState) {
  auto older = Sound(), present = Sound();
  older.fields.push_back({L"FOld", L"摘要", L"Page1", true, false});
  older.fields.push_back({L"FGone", L"数量", L"Page1", true, false});
  present.fields.push_back({L"FElsewhere", L"数量", L"Page2", false, false});
  present.fields.push_back({L"FNew", L"摘要", L"Page1", true, false});
  older.actions.push_back({L"Close", 64, 0, {}});
  older.actions[0].messages.push_back({2, L"另一个"});
  MessageOf(present).text = L"[FOld] [FBillNo] [FOld";
  EXPECT_EQ(Show(companion::CheckAgainst(older, present)),
            "renamed field| 0|FOld|FNew|字段已改名\n"
            "broken by rename|Save 1|FMessage|[FOld]|改为: [FNew] [FBillNo] [FOld\n"
            "lost field| 0|FGone|数量|已不存在\n"
            "lost message|Save 2||另一个|已不存在\n"
            "lost action|Close 0||Close|已不存在\n");
}

constexpr std::int32_t kType = 1005;

std::string File() { return companion::Utf8(companion::ToFile(companion::ExportOf(kType))); }

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
  const auto found = text.find(what);
  return found == std::string::npos ? text : text.replace(found, what.size(), by);
}

TEST(ExchangeTest, RefusesWhatIsNoExportOfTheBillTypeWithLineAndColumn) {
  const std::tuple<const char*, std::string, const char*> rows[] = {
      {"nothing", "", "1:1: 不是导出文件"},
      {"broken", "{\n  \"format\": ,", "2:13: 不是导出文件"},
      {"another program's", "{\n \"format\": \"x\"}", "2:2: 不是导出文件"},
      {"a list", "[]", "1:1: 不是导出文件"},
      {"another bill type", Replaced(File(), "\"classTypeId\": 1005", "\"classTypeId\": 77"),
       "106:3: 导出文件属于另一业务对象: 77"},
      {"another version", Replaced(File(), "\"version\": 1", "\"version\": 2"), "316:3: 导出文件的版本不同"},
      {"too large a number", "{\n \"x\": 5000000000}", "2:16: 数据包中不能有这个值: 5000000000"},
      {"a longer one", "[1,100000000000000000000]", "1:24: 数据包中不能有这个值: 1e+20"},
      {"a mark without its value", "[\n{\"$i2\": \"x\"}]", "2:12: 数据包中不能有这个值: {\"$i2\":\"x\"}"},
      {"deeply nested", std::string(30000, '['), "1:42: 嵌套过深"},
      {"a message that is a text", Replaced(File(), "\"Message\": {", "\"Message\": 5, \"x\": {"),
       "14:5: 不是导出文件"},
  };
  for (const auto& [name, file, refusal] : rows) {
    EXPECT_EQ(Raised([&] { companion::ReadExport(file, kType); }), refusal) << name;
  }
}

TEST(ExchangeTest, TakesOverWhatTheFileHasAndKeepsTheRest) {
  const auto before = File();
  const auto changed = Replaced(Replaced(before, "采购申请待审核", "请审核"), "\"FAccessoryForEmail\": true,", "");
  const auto rights = Replaced(before, "\"FCode\": \"Close\"", "\"FCode\": \"Close\", \"FRightMask\": 5");
  EXPECT_EQ(companion::ReadExport(rights, kType), companion::ReadExport(before, kType)) << "another database's";
  companion::Import import(kType, companion::ReadExport(changed, kType));
  EXPECT_EQ(import.Changes().dump(),
            R"([{"FOperation":"replace","FPath":"/MultiCheck/Messages/8/Message/FTitle","FValue":"请审核"}])");
  EXPECT_EQ(File(), before);
  import.Save();
  EXPECT_EQ(File(), Replaced(before, "采购申请待审核", "请审核"));

  companion::Import back(kType, companion::ReadExport(before, kType));
  companion::Import late(kType, companion::ReadExport(before, kType));
  back.Save();
  EXPECT_EQ(File(), before);
  EXPECT_NE(Raised([&] { late.Save(); }), "") << "somebody saved meanwhile";
  EXPECT_EQ(companion::Import(kType, companion::ReadExport(before, kType)).Changes().size(), 0u);
}

}  // namespace
}  // namespace tavio::test
