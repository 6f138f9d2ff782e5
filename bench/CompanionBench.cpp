#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>

#include "bench/Bench.h"
#include "bench/Recipients.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/packages/Vector.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Error.h"

// The companion over the development platform, all of it registered.
//
// CompanionBench [PART]     measures everything, or the lines whose work's name holds PART
// CompanionBench --check    only checks results, on a hundredth of the sizes

namespace tavio::bench {
namespace {

constexpr std::int32_t kType = 1005, kBill = 5001;
constexpr std::int32_t kPeople = 1000, kFirstUser = 20001;
constexpr std::int32_t kVariables = 60;
constexpr std::int32_t kMessages = 500;
constexpr std::int32_t kCalls = 1000;

Component ClassInfo() { return Component::Create(L"TavioMClass.ClassInfo"); }

Text Props() {
  const auto store = Component::Create(L"TavioSharedProps.PropStore");
  return store.Call(L"GetProperty", std::int32_t{0}, L"PropsString").ToText();
}

void Run(const Text& sql) { ClassInfo().Call(L"GetData", Props(), sql); }

std::int32_t CountOf(const wchar_t* table) {
  const RecordSet rows(ClassInfo().Call(L"GetData", Props(), L"select count(*) as n from " + Text(table)));
  return rows.Field(L"n").ToInt32();
}

// People with an address and a number, whom the platform says must be told.
void Employ(std::int32_t count) {
  const Text numbers = L" with recursive n(i) as (select " + std::to_wstring(kFirstUser) +
                       L" union all select i + 1 from n where i < " + std::to_wstring(kFirstUser + count - 1) + L") ";
  Run(L"insert into t_Emp (FItemID, FNumber, FName, FMobilePhone, FEmail)" + numbers +
      L"select i, 'E' || i, 'N' || i, '139000' || i, 'user' || i || '@example.com' from n");
  Run(L"insert into t_User (FUserID, FName, FEmpID, FForbidden)" + numbers + L"select i, 'N' || i, i, 0 from n");
  Run(L"insert into t_UserNeedSend (FUserID, FKind, FIsNeedSend)" + numbers + L"select i, 3, 1 from n");
}

// A host's message to all of them on each channel, with variables of the host's own.
Component MessageTo(std::int32_t people, std::int32_t variables) {
  const auto info = ClassInfo();
  const auto message = Component::Create(L"TavioClassBillAction.Message");
  message.Assign(L"ClassTypeID", Value(kType));
  message.Assign(L"ClassType", info.Call(L"GetClassType", Props(), kType));
  message.Assign(L"TableInfo", info.Call(L"GetTableInfo", Props(), kType));
  message.Call(L"RefreshVariableList");
  message.Call(L"NewMessage");
  const auto bill = info.Call(L"GetBillData", Props(), kType, kBill);
  message.Assign(L"Data", bill);
  message.Call(L"RefreshVariableValue", bill);
  Text content;
  for (std::int32_t i = 0; i < variables; ++i) {
    const auto variable = Dictionary::New();
    const Text name = L"FOwn" + std::to_wstring(i);
    for (const auto* field : {L"FName", L"FCaption", L"FValue"})
      variable.Set(Key(TextView(field)), Value(TextView(name)));
    message.Call(L"AddVariable", variable.AsValue());
    content += L"[" + name + L"] ";
  }
  const Dictionary package(message.Call(L"GetMessage"));
  package.Set(L"FTitle"_key, Value(L"title"));
  package.Set(L"FMessage"_key, Value(TextView(content)));
  for (const auto* list : {L"MessageUsers", L"EmailUsers", L"SMSUsers"})
    package.Set(Key(TextView(list)), Recipients(kFirstUser, people));
  return message;
}

bool SendByAll(const Component& message) {
  bool sent = message.Call(L"SendMessage").ToBool();
  sent = message.Call(L"SendEmail", Value(ComPtr<IDispatch>())).ToBool() && sent;
  sent = message.Call(L"SendShortMessage").ToBool() && sent;
  return message.Call(L"SendSMS").ToBool() && sent;
}

std::int32_t WhoGetIt(const Component& preview, const Component& message) {
  const Dictionary result(preview.Call(L"OfMessage", Value(message.Object())));
  const auto channels = PackageAt(result, L"Channels"_key);
  std::int32_t count = 0;
  for (const auto& channel : Entries(channels)) {
    const auto record = channel.Record();
    for (const auto& person : Records(Vector(*record.Get(L"People"_key)))) {
      const auto user = person.Get(L"FUserID"_key)->ToInt32();
      count += user >= kFirstUser && person.Get(L"FReason"_key)->EqualsText(L"gets it");
    }
  }
  return count;
}

void MeasurePreview(Bench& bench) {
  constexpr Work kWork = {"a preview, 1,000 people, 60 variables", "the four sendings themselves", 2};
  if (!bench.IsAsked(kWork)) return;
  const auto people = bench.Size(kPeople);
  Employ(people);
  const auto message = MessageTo(people, bench.Size(kVariables));
  const auto preview = Component::Create(L"TavioCompanion.Preview");
  const auto before = CountOf(L"t_MailOutbox");
  Bench::Require(WhoGetIt(preview, message) == 4 * people && CountOf(L"t_MailOutbox") == before, kWork);
  Bench::Require(SendByAll(message) && CountOf(L"t_MailOutbox") == before + 1, kWork);
  bench.Time(
      kWork, [&] { return WhoGetIt(preview, message); }, [&] { return SendByAll(message); });
}

void MeasureRecording(Bench& bench) {
  constexpr Work kWork = {"1,000 scalar calls, recorded", "the calls"};
  const auto calls = bench.Size(kCalls);
  std::optional<Component> recorder, loader;
  const auto start = [&] {
    recorder.reset();
    recorder = Component::Create(L"TavioCompanion.Recorder");
    recorder->Call(L"Trace");
    loader = Component::Create(L"TavioResLoader.Loader");
  };
  const auto recorded = [&] {
    for (std::int32_t i = 0; i < calls; ++i) loader->Read(L"LanguageID");
    return calls;
  };
  start();
  recorded();
  std::int32_t listed = 0;
  for (const auto& entry : Records(Vector(recorder->Read(L"Calls")))) {
    listed += entry.Get(L"FMember"_key)->EqualsText(L"LanguageID");
  }
  Bench::Require(listed == calls, kWork);
  bench.Limit(kWork.name, 0.005, OnNew(start, recorded));
  recorder->Call(L"Stop");
}

// Stores that many messages under one action of the bill type, each of which has one fault.
void StoreMessages(std::int32_t count) {
  const auto info = ClassInfo();
  const Dictionary actions(info.Call(L"GetBillActions", Props(), kType));
  const auto action = actions.At(1).Record(), messages = Dictionary::New();
  for (std::int32_t i = 1; i <= count; ++i) {
    const auto message = Dictionary::New(), entry = Dictionary::New();
    message.Set(L"FTitle"_key, Value(L"title"));
    message.Set(L"FMessage"_key, Value(TextView(L"[FBillNo] [FNoSuchName] " + std::to_wstring(i))));
    message.Set(L"MessageUsers"_key, Recipients(kFirstUser, 1));
    entry.Set(L"FEnvironment"_key, Value(i));
    entry.Set(L"Message"_key, message);
    messages.Set(Key(i), entry);
  }
  action.Set(L"Messages"_key, messages);
  action.Set(L"FStatus"_key, Value(std::int32_t{2}));
  Dictionary stored = actions, classType;
  std::int32_t type = kType;
  Component::Create(L"TavioMClass.ClassDefineUpdate")
      .Call(L"SaveBillActions", Props(), ByRef(type), ByRef(stored), ByRef(classType));
}

void MeasureCheck(Bench& bench) {
  constexpr Work kWork = {"a check of 500 messages", "one finding for each"};
  if (!bench.IsAsked(kWork)) return;
  const auto count = bench.Size(kMessages);
  StoreMessages(count);
  const auto checker = Component::Create(L"TavioCompanion.Checker");
  const auto check = [&] { return Vector(checker.Call(L"OfType", kType)); };
  std::int32_t unknown = 0;
  for (const auto& finding : Records(check())) {
    unknown += finding.Get(L"FWhat"_key)->EqualsText(L"[FNoSuchName]");
  }
  Bench::Require(unknown == count, kWork);
  bench.Limit(kWork.name, 2, [&] { return check().Count(); });
}

void MeasureCompanion(Bench& bench) {
  bench.Heading("The companion, on the development platform");
  // Who holds a component that has been at the database keeps its connection open for all.
  const auto connected = ClassInfo();
  connected.Call(L"getpredefineactions", Props());
  MeasureRecording(bench);
  MeasurePreview(bench);
  MeasureCheck(bench);
}

}  // namespace
}  // namespace tavio::bench

int main(int count, char** arguments) {
  const auto folder = std::filesystem::temp_directory_path() / "CompanionBench.data";
  std::filesystem::remove_all(folder);
  SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", folder.c_str());
  return tavio::bench::RunBench("CompanionBench", count, arguments, tavio::bench::MeasureCompanion);
}
