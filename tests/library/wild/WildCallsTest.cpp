// Calls that nobody meant, on a wild platform: nothing crashes, nothing leaks, and whatever is shown or answered is something
// that the library may show or answer. TAVIO_WILD_CALLS asks for more of them than the 20,000 of every run, TAVIO_WILD_SEED
// for those of a session that failed.

#include <TavioClassBillAction.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "companion/recorder/Recording.h"
#include "foundation/packages/Component.h"
#include "foundation/values/OwnModule.h"
#include "tests/library/wild/WildPlatform.h"
#include "tests/support/Held.h"
#include "tests/support/LibraryTest.h"
#include "tests/support/Passed.h"
#include "tests/support/Server.h"

namespace tavio::test::wild {
namespace {

constexpr std::uint32_t kCalls = 20'000, kCallsOfSession = 200;
constexpr int kDeepest = 2;  // calls within calls
constexpr std::int32_t kRecordedEntries = 100;
constexpr SIZE_T kGrowth = 1 << 20;  // bytes that a heap may take, and not give back, without a leak

struct Class {
  CLSID id;
  IID interfaceId;
  std::vector<Member> members = {};
};

std::vector<Class> classes = {{__uuidof(::BillActions), __uuidof(_BillActions)},
                              {__uuidof(::PredefineActions), __uuidof(_PredefineActions)},
                              {__uuidof(::BillEnvironments), __uuidof(_BillEnvironments)},
                              {__uuidof(::Message), __uuidof(_Message)}};
std::vector<ComPtr<IDispatch>> objects;  // one of each class
HMODULE library = nullptr;

std::uint32_t seed = 20260101, call = 0, succeeded = 0;
int depth = 0;
std::string calling;

std::string Where() { return calling + ", call " + std::to_string(call) + ", TAVIO_WILD_SEED=" + std::to_string(seed); }

bool IsAssignment(const Member& member) { return member.kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF); }

Value Zero(VARTYPE type) {
  Value zero;
  *zero.InPlace() = {};
  zero.InPlace()->vt = type;
  return zero;
}

// Of the type that a compiled caller is made to pass.
Value OfType(const Parameter& parameter) {
  if (parameter.isResult) return Zero(parameter.type);
  Value value = values.Any(parameter.type), converted;
  if (parameter.type == VT_VARIANT) return value;
  const HRESULT result = VariantChangeType(converted.InPlace(), value.InPlace(), 0, parameter.type);
  return SUCCEEDED(result) ? std::move(converted) : Zero(parameter.type);
}

// As compiled hosts do it; what is by reference, the result too, may be null.
HRESULT CallEarly(const ComPtr<IDispatch>& object, const Member& member) {
  const auto count = member.parameters.size();
  std::vector<Value> held;
  std::vector<VARIANT> passed(count);
  std::vector<VARTYPE> types;
  std::vector<VARIANTARG*> pointers;
  for (const auto& parameter : member.parameters) held.push_back(OfType(parameter));
  for (std::size_t i = 0; i < count; ++i) {
    const auto& [type, byReference, isResult, otherwise] = member.parameters[i];
    const auto reference = Reference(type, dice.OneIn(4) ? nullptr : &held[i].InPlace()->byref);
    passed[i] = byReference ? reference : held[i].Raw();
    types.push_back(byReference ? reference.vt : type);
    pointers.push_back(&passed[i]);
  }
  VARIANT result = {};
  Check(DispCallFunc(object.Get(), member.place, CC_STDCALL, VT_ERROR, static_cast<UINT>(count), types.data(),
                     pointers.data(), &result));
  for (auto& value : held) values.Keep(std::move(value));
  return result.scode;
}

VARIANT Passed(Value& value) {
  if (dice.OneIn(30)) return Reference(dice.OneIn(2) ? VARTYPE{VT_VARIANT} : value.Type(), nullptr);
  const auto way = dice.Below(3);
  if (way == 0) return value.Raw();
  return way == 1 && IsDeclarable(value.Type()) ? Typed(value) : Variable(value);
}

// As script hosts do it. Three calls in four are as the member is meant to be called, with any arguments.
HRESULT CallLate(const ComPtr<IDispatch>& object, const Member& member) {
  const bool meant = !dice.OneIn(4), assigns = meant && IsAssignment(member);
  auto count = static_cast<std::size_t>(std::ranges::count(member.parameters, false, &Parameter::isResult));
  if (!assigns && dice.OneIn(3)) count = dice.Below(meant ? count + 1 : 6);
  std::vector<Value> held;
  std::vector<VARIANT> passed;
  for (std::size_t i = 0; i < count; ++i) {
    const bool likely = i < member.parameters.size() && !dice.OneIn(4);
    held.push_back(values.Any(likely ? member.parameters[i].type : VARTYPE{VT_VARIANT}));
  }
  for (auto& value : held) passed.push_back(Passed(value));
  for (const auto& argument : passed) calling += " " + std::to_string(argument.vt);
  DISPID names[] = {DISPID_PROPERTYPUT, 0, 1, 2, 3, 4};
  const auto named = assigns ? 1 : meant || dice.OneIn(2) ? 0 : dice.Below(count + 1);
  DISPPARAMS parameters = {passed.data(), names + (assigns ? 0 : dice.Below(2)), static_cast<UINT>(count),
                           static_cast<UINT>(named)};
  const WORD flags = meant ? member.kind : static_cast<WORD>(dice.Below(16));
  Value result;
  EXCEPINFO info = {};
  UINT wrong = 0;
  HRESULT outcome = object->Invoke(member.id, IID_NULL, 0, flags, &parameters,
                                   dice.OneIn(8) ? nullptr : result.InPlace(), &info, dice.OneIn(8) ? nullptr : &wrong);
  if (outcome == DISP_E_EXCEPTION) outcome = Error::FromInvoke(outcome, info).Number();
  for (auto& value : held) values.Keep(std::move(value));
  values.Keep(std::move(result));
  return outcome;
}

// What a host can be told: of its arguments, of the member, of a platform or package that fails while it is read.
bool IsDocumented(HRESULT outcome) {
  constexpr HRESULT kOfTypes[] = {DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW};
  constexpr HRESULT kOfCall[] = {DISP_E_BADPARAMCOUNT, DISP_E_PARAMNOTOPTIONAL, DISP_E_PARAMNOTFOUND, E_POINTER};
  constexpr HRESULT kOfPackages[] = {DISP_E_MEMBERNOTFOUND, DISP_E_UNKNOWNNAME, E_OUTOFMEMORY, E_FAIL, kPlatformError};
  const auto isOf = [&](const auto& known) { return std::ranges::count(known, outcome) > 0; };
  return outcome == S_OK || isOf(kOfTypes) || isOf(kOfCall) || isOf(kOfPackages);
}

// Within a call, the object that works may be let go.
void CallAnything() {
  if (depth >= kDeepest) return;
  ++depth;
  const auto which = dice.Below(classes.size());
  if (dice.OneIn(20)) objects[which] = Make(library, classes[which].id);
  const auto& members = classes[which].members;
  const auto* member = &members[dice.Below(members.size())];
  if (IsAssignment(*member) && !dice.OneIn(6)) member = &members[dice.Below(members.size())];
  const bool early = dice.OneIn(4);
  const auto outer = std::exchange(calling, (early ? "early " : "late ") + member->name);
  const HRESULT outcome = early ? CallEarly(objects[which], *member) : CallLate(objects[which], *member);
  EXPECT_TRUE(IsDocumented(outcome)) << "answered " << std::hex << outcome << " in " << Where();
  succeeded += outcome == S_OK;
  for (std::size_t i = 0; depth == 1 && i < objects.size(); ++i) {
    EXPECT_EQ(objects[i]->AddRef(), 2u) << "references kept in " << Where();
    objects[i]->Release();
  }
  calling = outer;
  --depth;
}

// As a host is meant to begin.
void Bind() {
  ++depth;
  calling = "binding";
  for (const auto& object : {Component(objects.front()), Component(objects.back())}) {
    object.Assign(L"ClassTypeID", Value(std::int32_t{7}));
    object.Assign(L"ClassType", Template().AsValue());
    object.Assign(L"TableInfo", FieldInfo().AsValue());
    object.Assign(L"ClassTypeEntry", List({}).AsValue());
  }
  const Component message(objects.back());
  for (const auto* property : {L"Data", L"GroupInfo", L"SelectedUser"}) message.Assign(property, Bill().AsValue());
  message.Call(L"RefreshVariableValue", Bill());
  message.Call(L"SetMessage", Package().AsValue());
  message.Call(L"RefreshVariableList");
  --depth;
}

// "TavioClassBillAction.Message : SendMessage": a member, or one of the few operations below them.
bool IsLabel(const std::string& line) {
  const auto is = [&](std::string_view name) {
    return line.ends_with(name) || line.ends_with(std::string(name) + " ");
  };
  if (!line.starts_with("TavioClassBillAction.")) return false;
  for (const auto* inner : {" : Initialize", " : Lookup", " : SortList", " : AssignRightMask", " : ExcludeUsers"}) {
    if (is(inner)) return true;
  }
  return std::ranges::any_of(classes, [&](const Class& known) {
    return std::ranges::any_of(known.members, [&](const Member& member) { return is(" : " + member.name); });
  });
}

// A failure's box starts with its label, or has the description alone; all other texts are localised.
int WINAPI AnswerBox(HWND owner, LPCWSTR given, LPCWSTR title, UINT style) {
  const std::string text = Utf8(given);
  const auto plain = style & ~static_cast<UINT>(MB_TASKMODAL);
  const bool asks =
      plain == (MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) || plain == (MB_YESNO | MB_ICONINFORMATION | MB_DEFBUTTON2);
  const bool localised = text.empty() || text.starts_with("«") || text.starts_with(" ") || text == "断开";
  const auto end = text.find("\r\n");
  EXPECT_TRUE(asks || plain == MB_ICONWARNING) << style << " in " << Where();
  EXPECT_TRUE(owner || style & MB_TASKMODAL) << "nothing is kept from the user in " << Where();
  EXPECT_TRUE(end == text.npos ? localised : !asks && IsLabel(text.substr(0, end))) << text << " in " << Where();
  EXPECT_TRUE(*title == 0 || Utf8(title) == "«Morla提示»") << Utf8(title) << " in " << Where();
  if (dice.OneIn(4)) CallAnything();
  return !asks ? IDOK : dice.OneIn(2) ? IDYES : IDNO;
}

LONG WINAPI TellOfCrash(EXCEPTION_POINTERS* crash) {
  const auto& record = *crash->ExceptionRecord;
  std::printf("FAILED: exception %08lx at %p in %s\n", record.ExceptionCode, record.ExceptionAddress, Where().c_str());
  std::fflush(stdout);
  TerminateProcess(GetCurrentProcess(), 1);
  return EXCEPTION_EXECUTE_HANDLER;
}

std::uint32_t Asked(const char* variable, std::uint32_t otherwise) {
  const char* asked = std::getenv(variable);
  return asked ? static_cast<std::uint32_t>(std::atoll(asked)) : otherwise;
}

// The library in a folder of its own, in which it leaves files.
class WildCallsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    SetUnhandledExceptionFilter(TellOfCrash);
    library = LoadLibraryW((folder + L"TavioClassBillAction.dll").c_str());
    ASSERT_TRUE(library);
    for (auto& each : classes) each.members = MembersOf(folder + L"TavioClassBillAction.dll", each.interfaceId);
    platform = std::make_unique<WildPlatform>(library, AnswerBox, CallAnything);
    // What the library keeps for good is made before a recording could stand in front of it.
    depth = kDeepest;
    values.Renew();
    for (int i = 0; i < 10; ++i) Component(Make(library, classes.back().id)).Call(L"NewMessage");
    EndSession();
  }
  static void TearDownTestSuite() { platform.reset(); }
  ~WildCallsTest() override {
    std::filesystem::current_path(home_);
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(folder))) {
      if (entry.path().extension() != L".dll") std::filesystem::remove_all(entry.path());
    }
  }

  // Of each three sessions one is traced, and one is a dry run.
  static std::shared_ptr<companion::Recording> Recording() {
    using companion::Recording;
    if (seed % 3 == 0) return nullptr;
    const auto mode = seed % 3 == 1 ? Recording::Mode::kTrace : Recording::Mode::kDryRun;
    auto recording = std::make_shared<Recording>(mode, kRecordedEntries);
    recording->Start();
    return recording;
  }

  static void RunSession() {
    dice.Seed(seed);
    values.Renew();
    auto recording = Recording();
    for (const auto& each : classes) objects.push_back(Make(library, each.id));
    for (call = 0; call < kCallsOfSession && !HasFailure(); ++call) {
      if (dice.OneIn(12)) Bind();
      CallAnything();
    }
    recording.reset();
    EndSession();
  }

  static void EndSession() {
    depth = kDeepest;  // nobody calls back from here on
    objects.clear();
    values.Clear();
    platform->Forget();
    depth = 0;
    for (const auto& file :
         {folder + L"TavioClassBillAction.dll", folder + L"Vexo10.dll", GetAppFolder() + L"Vexo10.dll"}) {
      EXPECT_EQ(CanUnload(file), S_OK) << "objects are alive in " << Utf8(file) << " after " << Where();
    }
    EXPECT_EQ(LivingFakes(), WildPlatform::kKept) << "after " << Where();
  }

  static inline const Text folder = GetAppFolder() + L"wild\\";
  static inline std::unique_ptr<WildPlatform> platform;

 private:
  std::filesystem::path home_ = std::filesystem::current_path();
};

TEST_F(WildCallsTest, NothingCrashesLeaksOrIsMadeUp) {
  const auto sessions = std::max(Asked("TAVIO_WILD_CALLS", kCalls) / kCallsOfSession, 1u);
  seed = Asked("TAVIO_WILD_SEED", seed);
  Held before = {};
  for (std::uint32_t session = 0; session < sessions; ++session, ++seed) {
    RunSession();
    if (HasFailure()) return;
    if (session == sessions / 4) before = HeldNow();
  }
  const Held after = HeldNow();
  EXPECT_LE(after.memory, before.memory + kGrowth);
  EXPECT_LE(after.handles, before.handles);
  EXPECT_GT(succeeded, sessions * kCallsOfSession / 2) << "else the calls stop at their arguments";
}

}  // namespace
}  // namespace tavio::test::wild
