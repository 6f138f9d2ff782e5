#include <cstdio>
#include <filesystem>

#include "com/server/Dispatch.h"
#include "com/server/ModuleUse.h"
#include "companion/boxes/ImportPatch.h"
#include "foundation/environment/ProcessState.h"
#include "tests/library/faults/FaultRules.h"
#include "tests/library/faults/Hosts.h"

namespace tavio::test {
namespace {

namespace fs = std::filesystem;

// A dialog whose user agrees, in place of the system's: it is never seen.
INT_PTR WINAPI Agree(HINSTANCE, LPCDLGTEMPLATEW, HWND, DLGPROC procedure, LPARAM details) {
  static const HWND window = [] {
    WNDCLASSW kind = {};
    kind.lpfnWndProc = &DefWindowProcW;
    kind.cbWndExtra = DLGWINDOWEXTRA;
    kind.lpszClassName = L"Agree";
    RegisterClassW(&kind);
    return CreateWindowW(L"Agree", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  }();
  SetWindowLongPtrW(window, DWLP_USER, details);
  procedure(window, WM_COMMAND, IDOK, 0);
  return IDOK;
}

// Calls of a member.
template <class World>
Value Alone(World&, const Component& on, const wchar_t* member) {
  return on.Call(member);
}

Value Confirmed(Sender&, const Component& on, const wchar_t* member) {
  const companion::ImportPatch dialog(GetModuleHandleW(nullptr), "DialogBoxIndirectParamW",
                                      reinterpret_cast<void*>(&Agree));
  on.Assign(L"MustSelectMsgUser", Value(true));
  return on.Call(member);
}

// An operation that goes well, and what is usual when it does not. What stands behind a blank tells a variant; the one
// that touches most is the first.
template <class World>
struct Act {
  std::wstring name;     // of the member, behind its object's if that is not the world's own
  const wchar_t* label;  // of its box; null if there is none
  const char* log;       // what its label there says; null if it is not logged
  std::string result;    // what it starts with
  Value (*run)(World& w, const Component& on, const wchar_t* member) = Alone;
  std::pair<int, int> outcomes = {1, 0};  // there, of a success and of a failure
  std::vector<std::wstring> absent = {};
  std::string leaves = {};  // stands in the packages afterwards

  std::wstring Object() const { return name.substr(0, name.find(L'.') + 1); }
  std::wstring Member() const {
    return name.substr(Object().size(), name.find(L' ') == name.npos ? name.npos : name.find(L' ') - Object().size());
  }
  // Of the operations that load what they need.
  bool IsFirst() const { return name.ends_with(L"first"); }
  // SetMessage alone keeps what it has.
  std::string Failed() const {
    const std::pair<char, const char*> failures[] = {{'t', "false"}, {'"', R"("")"}, {'{', "none"}, {'[', "none"}};
    for (const auto& [first, failed] : failures) {
      if (result[0] == first && name != L"SetMessage") return failed;
    }
    return result;
  }
};

#define WITH(...) \
  []([[maybe_unused]] auto& w, const Component& on, const wchar_t* member) { return on.Call(member, __VA_ARGS__); }

const std::wstring kLog = L"MorlaLogMsg.Log", kGateway = L"MorlaMobileOpen.MorlaSendMail";
const std::vector<std::wstring> kNoClient = {kGateway, L"TavioClientBase.UserProfile"};
const wchar_t kTemplate[] = L"a[FBillNo][单号]b";
const char kSending[] = "解析消息,发送给接收者";

const Act<Host> kHostActs[] = {
    {L"Initialize", L"Initialize", "业务对象操作初始化", "empty"},
    {L"Save", L"Save", "操作集合保存", "true"},
    {L"SetBillActions", L"SetBillActions", nullptr, "empty", WITH(w.actions.Call(L"GetBillActions"))},
    {L"NewBill", L"NewBill", "加载该业务对象所属类别的默认操作", "empty"},
    {L"Item", L"Item ", nullptr, R"({FCode: "Check", FID: 5,)", WITH(w.Lent(L"Check"))},
    {L"GetEnvironmentItems", L"GetEnvironmentItems ", nullptr, R"({Save: {FCode: "Save")", WITH(1)},
    {L"LookUp", L"Lookup ", nullptr, "true", WITH(w.Lent(L"Check"))},
    {L"LookUp of none", L"Lookup ", nullptr, "false", WITH(L"none")},
    {L"GetMessage", L"Item ", "", R"({FTitle: "标题"})", WITH(w.Lent(L"Check"), 1)},
    {L"GetMessage of none", L"Item ", "", "none", WITH(L"Check", 4)},
    {L"AddNew", L"AddNew ", "加入操作集合", "true", WITH(w.given)},
    {L"Update", L"Update ", "更新操作数据包", "true", WITH(w.given)},
    {L"Remove", L"Remove ", "从操作集合中移去指定的操作", "true", WITH(ByRef(w.code = w.Lent(L"Save")))},
    {L"RemoveAll", L"RemoveAll ", "清空所有操作", "empty", Alone, {1, 0}, {}, "\n7\n"},
    {L"AddAppendVariables", L"AddAppendVariables", "", "false", WITH(w.actions.Call(L"GetBillActions"))},
    {L"DownloadFile", nullptr, "", "\"", WITH(Value::Bytes(std::as_bytes(std::span("ab", 2))), w.Lent(L"a.bin"))},
    {L"GetBillActions", nullptr, nullptr, R"({Save: {FCode: "Save")"},
    {L"GetAppendVariables", nullptr, nullptr, "none"},
    {L"catalogue.Item", L"Item", nullptr, R"({FCode: "Check")", WITH(w.Lent(L"Check"))},
    {L"catalogue.LookUp", L"LookUp", nullptr, "true", WITH(w.Lent(L"Check"))},
    {L"catalogue.LookUp of none", L"LookUp", nullptr, "false", WITH(L"none")},
    {L"catalogue.GetDefaultActions", L"GetDefaultActions", nullptr, R"([{FCode: "Save")", WITH(1)},
    {L"catalogue.LookupRightMask", nullptr, nullptr, "true", WITH(8)},
    {L"scenarios.GetSortList first", L"SortList ", nullptr, "[{FMask: 3"},
    {L"catalogue.GetList first", nullptr, nullptr, R"([{FCode: "Save")"},
    {L"scenarios.GetList", L"GetList ", nullptr, "{1: {FMask: 1", WITH(1)},
    {L"scenarios.GetList by ID", L"GetList ", nullptr, "{3: {FMask: 3", WITH(0, 103)},
    {L"scenarios.GetSortList", L"GetSortList ", nullptr, "[{FMask: 1", WITH(1)},
    {L"scenarios.GetSortList by ID", L"GetSortList ", nullptr, "[{FMask: 1", WITH(0, 101)},
    {L"scenarios.GetSortListMsg", L"GetSortListMsg ", nullptr, "[{FMask: 3", WITH(1)},
    {L"scenarios.GetSortListMsg by ID", L"GetSortListMsg ", nullptr, "[{FMask: 1", WITH(0, 101)},
    {L"scenarios.GetBillTypeList", L"GetBillTypeList ", "", "{1: {FMask: 1", WITH(1), {0, 0}},
    {L"scenarios.GetItem", L"GetItem ", "", "{FMask: 3", WITH(3)},
    {L"scenarios.GetItem by ID", L"GetItem ", "", "{FMask: 3", WITH(0, 103)},
    {L"scenarios.GetClassMenu", L"GetClassMenu ", nullptr, R"({FName: "菜单"})"},
};

const Act<Sender> kSenderActs[] = {
    {L"ClassTypeID", nullptr, nullptr, "5"},
    {L"NewMessage", L"NewMessage", "新建消息", "empty"},
    {L"SetMessage", L"SetMessage", nullptr, "true", WITH(w.message.Call(L"GetMessage"))},
    {L"RefreshVariableList", nullptr, "刷新消息变元列表", "empty"},
    {L"AddVariable", L"AddVariable", "向消息变元列表中增加变元", "true", WITH(w.variable)},
    {L"RefreshVariableValue", L"RefreshVariableValue", "刷新消息可用变元内容", "true", WITH(w.bill)},
    {L"TransMessage to captions", L"TransMessage", "翻译消息", R"("a[单号][单号]b")", WITH(kTemplate, true)},
    {L"TransMessage to values", L"TransMessage", "翻译消息", R"("aCG001[单号]b")", WITH(kTemplate, false, true)},
    {L"TransMessage to names", L"TransMessage", "翻译消息", R"("a[FBillNo][FBi)", WITH(kTemplate, false, false, true)},
    {L"AddUser", L"AddUser", "向消息用户列表中加入用户", "true", WITH(3), {1, 0}, {}, "\n{FBillNo: {"},
    {L"RemoveUser", L"RemoveUser", "从消息用户列表中删除用户", "true", WITH(1)},
    {L"RemoveAllUsers", L"RemoveAllUsers", nullptr, "false", Alone, {1, 0}, {}, "MessageUsers: {}, EmailUsers: {1: {"},
    {L"SendMessage confirmed", L"SendMessage", kSending, "true", Confirmed, {1, 1}, {}, "}}\ntrue\n"},
    {L"SendMessage", L"SendMessage", kSending, "true", Alone, {1, 1}, {}, "\nnone\nfalse\n"},
    {L"SendMessage to given", L"SendMessage", kSending, "true", WITH(w.recipients), {1, 1}},
    {L"SendEmail by SMTP", nullptr, nullptr, "true", WITH(w.service.New()), {}, {kGateway}},
    {L"SendEmail by the server", nullptr, nullptr, "true", WITH(w.service.New()), {}, kNoClient},
    {L"SendEmail", nullptr, nullptr, "true", WITH(w.service.New())},
    {L"SendShortMessage", nullptr, nullptr, "true", Alone, {1, 0}, {}, "\n{FManager: {"},
    {L"SendSMS", nullptr, "多级审核消息", "true", Alone, {1, 1}},
};

#undef WITH

// What a run left.
struct Left {
  Boxes boxes;
  std::string result;
  std::string state;
  std::size_t files = 0;
  Strings log = {};  // the operation's own

  bool operator==(const Left&) const = default;
};
// A healthy run, with the packages as they were at each touch.
struct Healthy {
  Left left;
  std::vector<std::string> states;
};
std::ostream& operator<<(std::ostream& out, const Left& outcome) {
  for (const auto& box : outcome.boxes) out << box << "\n";
  return out << "result " << outcome.result << ", " << outcome.files << " files, packages\n"
             << outcome.state << ::testing::PrintToString(outcome.log) << "\n";
}

// Told by what nobody survives.
std::string tried;
LONG CALLBACK Tell(EXCEPTION_POINTERS*) {
  std::printf("fault table: crashed at %s\n", tried.c_str());
  return EXCEPTION_CONTINUE_SEARCH;
}

class FaultTable : public LibraryTest {
 protected:
  FaultTable() {
    SetUnhandledExceptionFilter(&Tell);
    boxes.AnswerWith(BoxWatcher::kAny);
    props->props = L"Language=chs;ConnectString=x;UserID=16394;";
    RemoveMessageFiles();
  }
  ~FaultTable() override {
    fs::current_path(folder_);
    com::Dispatch::ForgetAll();
  }

  template <class World, std::size_t count>
  void Run(const Act<World> (&acts)[count], bool hostContainers);

 private:
  template <class World>
  Left RunOnce(const Act<World>& act, World& world, Fault& fault);
  template <class World>
  std::unique_ptr<World> NewWorld(const Act<World>& act);
  template <class World>
  void TryAct(const Act<World>& act, Fault& fault);
  template <class World>
  void TryCell(const Act<World>& act, const Cell& cell, const Healthy& healthy, Fault& fault);
  std::string OpenLabels() const;

  fs::path folder_ = fs::current_path();
  Platform platform_;
  bool hostContainers_ = false;
  std::size_t cells_ = 0;
  std::map<std::wstring_view, Broken> broken_;  // by operation
};

std::wstring_view OperationOf(std::wstring_view act) { return act.substr(0, act.find(L' ')); }

template <class World>
Left FaultTable::RunOnce(const Act<World>& act, World& world, Fault& fault) {
  log->Forget();
  texts->fileName = texts->language = {};
  Value result;
  const auto refused = Outcome([&] {
    return fault.Count([&] { result = act.run(world, world.Object(act.Object()), act.Member().c_str()); }), Value();
  });
  Left outcome{boxes.Take(), refused == "empty" ? Show(result) : refused, world.State(), RemoveMessageFiles()};
  if (act.log && !log->entries.empty()) outcome.log = {log->entries.front(), log->entries.back()};
  platform_.Forget();
  return outcome;
}

std::string FaultTable::OpenLabels() const {
  std::map<std::string, int> open;
  for (const auto& entry : log->entries) {
    const bool begins = entry.starts_with("begin ");
    const auto label = begins ? entry.substr(6) : entry.substr(4, entry.rfind(' ') - 4);
    open[label] += begins ? 1 : -1;
  }
  std::string labels;
  for (const auto& [label, count] : open) {
    const bool closesWithBegin = label.ends_with("BillActions.GetMessage");
    if (count != (closesWithBegin ? 2 : 0)) labels += label + " ";
  }
  return labels;
}

template <class World>
Strings LogOf(const Act<World>& act, bool succeeds) {
  if (!act.log) return {};
  const auto label = "TavioClassBillAction." + Utf8(World::ClassOf(act.Object()) + L"." + act.Member()) +
                     (*act.log ? " " : "") + act.log;
  const auto outcome = std::to_string(succeeds ? act.outcomes.first : act.outcomes.second);
  const bool closesWithBegin = label.ends_with("BillActions.GetMessage");
  return {"begin " + label, closesWithBegin ? "begin " + label : "end " + label + " " + outcome};
}

// A broken loader gives the question of a healthy run, or its title, another text.
void Mistranslate(const Cell& cell, Boxes& boxes) {
  const bool isText = cell.touch.member == L"LoadString" || cell.touch.kind == Touch::kCreation;
  if (boxes.empty() || cell.touch.object != L"TavioResLoader.Loader" || !isText || cell.way == kWritesBack) return;
  const bool isTitle = cell.touch.member == L"LoadString" && cell.touch.left == 0;
  (isTitle ? boxes.at(0).title : boxes.at(0).text) = cell.way == kNumber ? L"9" : cell.way == kText ? L"rubbish" : L"";
}

template <class World>
Left Expected(const Act<World>& act, const Cell& cell, const Left& healthy, const std::string& atTouch,
              const Left& outcome) {
  if (cell.touch.isRefused && cell.way == kMissing) return {{}, "«类型不匹配»", atTouch, 0};
  const auto words = DescriptionOf(cell);
  const Effect& effect = EffectOf(act.name, cell, !words);
  Left expected = healthy;
  Mistranslate(cell, expected.boxes);
  const bool begun = effect.result == Result::kBegun && !outcome.result.empty() &&
                     healthy.result.starts_with(outcome.result.substr(0, outcome.result.size() - 1));
  if (effect.result != Result::kHealthy) expected.result = begun ? outcome.result : act.Failed();
  if (effect.state == State::kAtTouch) expected.state = atTouch;
  if (effect.state == State::kEmptied) expected.state = "{}" + atTouch.substr(atTouch.find('\n'));
  if (effect.state == State::kAny) expected.state = outcome.state;
  const auto [from, to] = effect.instead;
  for (auto at = expected.state.find(from); !from.empty() && at != std::string::npos; at = expected.state.find(from)) {
    expected.state.replace(at, from.size(), to);
  }
  expected.files = effect.files;
  const bool isReported =
      std::any_of(effect.boxes.begin(), effect.boxes.end(), [](auto& b) { return b.label == kOwn; });
  expected.log = LogOf(act, !isReported && (act.label || effect.result != Result::kFailed));
  if (cell.touch.object == kLog)
    expected.log = cell.touch.member == L"IsEnabled" && cell.way == kEmpty ? Strings() : outcome.log;
  for (const auto& [label, ownWords] : effect.boxes) {
    if (label == kOwn && !act.label) continue;
    const Text shown = label == kOwn ? World::ClassOf(act.Object()) + L" : " + act.label : Text(label);
    const Text described = ownWords ? ownWords : words.value_or(L"?");
    const Box report = Report(shown, described);
    expected.boxes.push_back(!shown.empty() ? report : Box{described, report.title, report.style});
  }
  return expected;
}

template <class World>
std::unique_ptr<World> FaultTable::NewWorld(const Act<World>& act) {
  auto made = std::make_unique<World>();
  if (hostContainers_ && !act.IsFirst()) made->Load();
  Process() = {};
  return made;
}

template <class World>
void FaultTable::TryAct(const Act<World>& act, Fault& fault) {
  auto world = NewWorld(act);
  Healthy healthy;
  fault.absent = act.absent;
  fault.before = [&] { healthy.states.push_back(world->State()), *world->lent = L'x'; };
  healthy.left = RunOnce(act, *world, fault);
  fault.before = nullptr;
  world.reset();
  Process() = {};
  EXPECT_TRUE(healthy.left.result.starts_with(act.result)) << Utf8(act.name) << ": " << healthy.left.result;
  EXPECT_NE(healthy.left.state.find(act.leaves), std::string::npos) << Utf8(act.name) << ": " << healthy.left.state;
  EXPECT_EQ(healthy.left.log, LogOf(act, true));
  for (const auto& cell : CellsOf(fault.Touches(), hostContainers_, broken_[OperationOf(act.name)])) {
    std::ostringstream told;
    told << Utf8(act.name) << ", " << cell;
    tried = told.str();
    const auto objects = com::ModuleUse();
    TryCell(act, cell, healthy, fault);
    Process() = {};
    if (com::ModuleUse() != objects) ADD_FAILURE() << tried << ": leaks " << com::ModuleUse() - objects;
    ++cells_;
  }
}

template <class World>
void FaultTable::TryCell(const Act<World>& act, const Cell& cell, const Healthy& healthy, Fault& fault) {
  auto world = NewWorld(act);
  fault.Break(cell.touch, cell.way);
  const auto left = RunOnce(act, *world, fault);
  const auto open = OpenLabels();
  if (!fault.Heal()) ADD_FAILURE() << tried << ": is not touched again";
  const auto expected = Expected(act, cell, healthy.left, healthy.states[cell.number], left);
  if (left != expected) ADD_FAILURE() << tried << "\nexpected:\n" << expected << "but:\n" << left;
  if (!open.empty() && cell.touch.object != kLog) ADD_FAILURE() << tried << ": not ended: " << open;
  auto process = std::exchange(Process(), {});
  if (act.IsFirst() || left.state != healthy.states.front()) world = NewWorld(act);
  Process() = std::move(process);
  auto again = RunOnce(act, *world, fault);
  if (cell.touch.object == kLog) again.log = healthy.left.log;  // which has been given up
  if (again != healthy.left) ADD_FAILURE() << tried << ": does not work afterwards\n" << again;
}

template <class World, std::size_t count>
void FaultTable::Run(const Act<World> (&acts)[count], bool hostContainers) {
  std::optional<HostContainers> containers;
  if (hostContainers) containers.emplace();
  hostContainers_ = hostContainers;
  Fault fault(hostContainers);
  for (const auto& act : acts) TryAct(act, fault);
  std::printf("fault table: %zu %s cells\n", cells_, hostContainers ? "container" : "component");
}

TEST_F(FaultTable, ComponentsOfDesign) { Run(kHostActs, false); }
TEST_F(FaultTable, ComponentsOfSending) { Run(kSenderActs, false); }
TEST_F(FaultTable, ContainersOfDesign) { Run(kHostActs, true); }
TEST_F(FaultTable, ContainersOfSending) { Run(kSenderActs, true); }

}  // namespace
}  // namespace tavio::test
