#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "bench/Bench.h"
#include "bench/Library.h"
#include "bench/Recipients.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/OwnModule.h"
#include "foundation/values/SystemHandle.h"
#include "foundation/values/Text.h"
#include "tests/support/FakeComponent.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kEveryday = 20;
constexpr std::int32_t kVariables = 12;
constexpr std::int32_t kFew = 1000;
constexpr std::int32_t kMany = 10000;
constexpr std::int32_t kAdded = 2000;
constexpr std::int32_t kFirstUser = 10000;
constexpr std::int32_t kClass = 1005;
constexpr wchar_t kTitle[] = L"单据已审核";
constexpr wchar_t kCommand[] = L"FUNCID:-1|FFlag:1005|FInterID:0";

// The platform as both sides call it. What went out last is kept, whole.
class Platform {
 public:
  Platform() {
    log_.On(L"IsEnabled", [this] { return logs; });
    log_.On(L"LogStart", [] { return 1; });
    log_.On(L"LogEnd", [] {});
    props_.On(L"GetProperty", [] { return L"UserID=16394;ConnectString={Server=x};"; });
    command_.On(L"SendMessage", [this](test::Arguments& a) {
      sent.clear();
      for (std::size_t i = 0; i < a.Count(); ++i) sent += AsText(a.At(i)) + L"|";
    });
    users_.On(L"GetUserInfo", [this] { return known; });
    users_.On(L"GetIsUserNeedSend", [this] { return told; });
    mail_.On(L"MorlaSendMail", [this](test::Arguments& a) {
      sent = Dictionary(a.At(0)).Get(L"Addrecipients"_key)->ToText();
      return L"";
    });
    mobile_.On(L"SmsSendForBillCheck",
               [this](test::Arguments& a) { sent = Vector(a.At(0)).Record(1).Get(L"Recipients"_key)->ToText(); });
    classInfo_.On(L"GetData", [this] {
      row_ = 0;
      return rows_.New();
    });
    rows_.On(L"EOF", [this] { return row_ == known.Count(); });
    rows_.On(L"MoveNext", [this] { ++row_; });
    rows_.On(L"Fields", [this] { return fields_.New(); });
    fields_.On(L"Item", [this] { return field_.New(); });
    field_.On(L"Value", [this] { return known.Record(row_ + 1).Get(L"Mobile"_key)->Copy(); });
  }

  bool logs = true;
  Text sent;
  Vector known = Vector::New();
  Vector told = Vector::New();

 private:
  static Text AsText(const Value& value) {
    if (value.Type() == (VT_ARRAY | VT_UI1)) return std::to_wstring(value.ToBytes().size());
    if (value.Type() != (VT_ARRAY | VT_I4)) return value.ToText();
    Text text;
    for (const auto user : value.ToIntegers()) text += std::to_wstring(user) + L",";
    return text;
  }

  std::int32_t row_ = 0;
  test::FakeComponent log_{L"MorlaLogMsg.Log"};
  test::FakeComponent props_{L"TavioSharedProps.PropStore"};
  test::FakeComponent command_{L"TavioAppCommand.Command"};
  test::FakeComponent users_{L"TavioMSmsManager.clsBillUseInfo"};
  test::FakeComponent mail_{L"MorlaMobileOpen.MorlaSendMail"};
  test::FakeComponent mobile_{L"MorlaMobileOpen.MobileOpen"};
  test::FakeComponent classInfo_{L"TavioMClass.ClassInfo"};
  test::FakeObject rows_, fields_, field_;
};

Text NameOf(std::int32_t i) { return L"FField" + std::to_wstring(i); }
Text ValueOf(std::int32_t i) { return L"value " + std::to_wstring(i); }
Text AddressOf(std::int32_t user) { return L"User" + std::to_wstring(user) + L"@mail.example.com"; }
Text MobileOf(std::int32_t user) { return L"139000" + std::to_wstring(user); }

struct Everyday {
  ComPtr<_Message> message;
  std::unordered_map<std::wstring, std::wstring> values;
  Text content;
};

Dictionary PackageOf(const ComPtr<_Message>& message) {
  ComPtr<IDispatch> package;
  Check(message->GetMessage(&package));
  return Dictionary(package);
}

Everyday EverydayMessage() {
  Everyday everyday{NewBoundMessage(), {}, {}};
  Check(everyday.message->put_ClassTypeID(kClass));
  for (std::int32_t i = 0; i < kVariables; ++i) {
    AddVariable(everyday.message, NameOf(i), NameOf(i), ValueOf(i));
    everyday.values[NameOf(i)] = ValueOf(i);
    everyday.content += L"字段 [" + NameOf(i) + L"]\r\n";
  }
  const auto package = PackageOf(everyday.message);
  package.Set(L"FTitle"_key, Value(kTitle));
  package.Set(L"FMessage"_key, Value(TextView(everyday.content)));
  package.Set(L"MessageUsers"_key, Recipients(kFirstUser, kEveryday));
  return everyday;
}

Text Translated(const Everyday& everyday) {
  Text result;
  result.reserve(everyday.content.size());
  std::size_t plain = 0;
  for (;;) {
    const auto open = everyday.content.find(L'[', plain);
    if (open == Text::npos) return result.append(everyday.content, plain);
    const auto close = everyday.content.find(L']', open);
    result.append(everyday.content, plain, open - plain);
    result += everyday.values.find(everyday.content.substr(open + 1, close - open - 1))->second;
    plain = close + 1;
  }
}

std::int32_t BeginEntry(const Component& log, const wchar_t* label) {
  return log.Call(L"IsEnabled").ToBool() ? log.Call(L"LogStart", label).ToInt32() : 0;
}

void EndEntry(const Component& log, std::int32_t handle) {
  std::int32_t outcome = 1;
  if (log.Call(L"IsEnabled").ToBool()) log.Call(L"LogEnd", ByRef(handle), ByRef(outcome));
}

Text ReadProps() {
  auto process = static_cast<std::int32_t>(GetCurrentProcessId());
  Text name(L"PropsString");
  const auto store = Component::Create(L"TavioSharedProps.PropStore");
  store.Call(L"GetProperty", ByRef(process), ByRef(name));
  return store.Call(L"GetProperty", ByRef(process), ByRef(name)).ToText();
}

// The bytes of a text, by way of the file that the platform wants and the size that its component tells.
std::vector<std::byte> BytesByFile(const Text& path, const Text& content) {
  const auto text = ToCodePage(CP_ACP, content) + "\r\n";
  DWORD done = 0;
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &done, nullptr);
  CloseHandle(file);
  const auto files = Component::Create(L"Scripting.FileSystemObject");
  const auto size = Component(files.Call(L"GetFile", path).ToObject()).Read(L"Size").ToInt32();
  std::vector<std::byte> bytes(static_cast<std::size_t>(size - 1));
  file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
  CloseHandle(file);
  return bytes;
}

// The calls of one sending, and its file, in plain C++.
const Text& SendPlainly(const Platform& platform, const Component& log, const Everyday& everyday) {
  const auto sending = BeginEntry(log, L"TavioClassBillAction.Message.SendMessage 解析消息,发送给接收者");
  const auto translation = BeginEntry(log, L"TavioClassBillAction.Message.TransMessage 翻译消息");
  const auto content = Translated(everyday);
  EndEntry(log, translation);
  std::vector<std::int32_t> ids;
  for (std::int32_t i = 0; i < kEveryday; ++i) ids.push_back(kFirstUser + i);
  auto users = Value::Integers(ids);
  const auto props = ReadProps();
  const Text path = GetAppFolder() + L"temp1.tmp";
  auto bytes = Value::Bytes(BytesByFile(path, content));
  auto length = static_cast<std::int32_t>(bytes.ToBytes().size()) - 1, sender = std::int32_t{16394};
  Text command(kCommand);
  Component::Create(L"TavioAppCommand.Command")
      .Call(L"SendMessage", L"Server=x", ByRef(bytes), ByRef(length), kTitle, ByRef(users), ByRef(sender),
            std::int16_t{0}, std::int16_t{1}, ByRef(command));
  DeleteFileW(path.c_str());
  EndEntry(log, sending);
  return platform.sent;
}

void MeasureEveryday(Bench& bench, const Platform& platform) {
  const auto everyday = EverydayMessage();
  const auto log = Component::Create(L"MorlaLogMsg.Log");
  bench.Compare(
      {"SendMessage: 20 recipients, 12 variables, log on", "the calls and the file that it must make", 1.0},
      [&]() -> const Text& {
        VARIANT_BOOL sent = VARIANT_FALSE;
        Check(everyday.message->SendMessage(nullptr, &sent));
        return platform.sent;
      },
      [&]() -> const Text& { return SendPlainly(platform, log, everyday); });
}

// A message to that many, who all have an address and a number of their own.
struct Crowd {
  ComPtr<_Message> message;
  Vector users = Vector::New();
  Vector told = Vector::New();
  std::vector<std::wstring> addresses = {}, numbers = {};
};

Crowd CrowdOf(std::int32_t count) {
  Crowd crowd{NewBoundMessage()};
  const auto package = PackageOf(crowd.message);
  for (const auto& list : {L"EmailUsers", L"SMSUsers", L"MessageUsers"}) {
    package.Set(Key(TextView(list)), Recipients(kFirstUser, count));
  }
  for (std::int32_t user = kFirstUser; user < kFirstUser + count; ++user) {
    crowd.addresses.push_back(AddressOf(user));
    crowd.numbers.push_back(MobileOf(user));
    const auto record = Dictionary::New(), told = Dictionary::New();
    record.Set(L"Email"_key, Value(TextView(AddressOf(user))));
    record.Set(L"Mobile"_key, Value(TextView(MobileOf(user))));
    crowd.users.Add(record);
    told.Set(L"FUserID"_key, Value(user));
    told.Set(L"FIsNeedSend"_key, Value(true));
    crowd.told.Add(told);
  }
  return crowd;
}

Text JoinBySet(const std::vector<std::wstring>& addresses, wchar_t separator) {
  std::unordered_set<std::wstring> known;
  Text joined;
  for (const auto& address : addresses) {
    if (!known.insert(ToUpper(address)).second) continue;
    if (!joined.empty()) joined += separator;
    joined += address;
  }
  return joined;
}

using Sending = HRESULT (*)(const ComPtr<_Message>& message, VARIANT_BOOL* sent);

struct Channel {
  Work beside, growth;
  std::vector<std::wstring> Crowd::*addresses;
  wchar_t separator;
  Sending send;
};

const Channel kChannels[] = {
    {{"SendEmail to 1,000", "joining the same addresses by a set", 10},
     {"SendEmail to 10,000", "to 1,000", 12},
     &Crowd::addresses,
     L';',
     [](const auto& message, auto* sent) { return message->SendEmail(nullptr, sent); }},
    {{"SendShortMessage to 1,000", "joining the same numbers by a set", 10},
     {"SendShortMessage to 10,000", "to 1,000", 12},
     &Crowd::numbers,
     L',',
     [](const auto& message, auto* sent) { return message->SendShortMessage(sent); }},
    {{"SendSMS (approval notice) to 1,000", "joining the same numbers by a set"},
     {"SendSMS (approval notice) to 10,000", "to 1,000", 12},
     &Crowd::numbers,
     L',',
     [](const auto& message, auto* sent) { return message->SendSMS(sent); }},
};

void MeasureChannel(Bench& bench, Platform& platform, const Channel& channel, const Crowd& few, const Crowd& many) {
  const auto to = [&](const Crowd& crowd) {
    return [&]() -> const Text& {
      VARIANT_BOOL sent = VARIANT_FALSE;
      platform.known = crowd.users;
      platform.told = crowd.told;
      Check(channel.send(crowd.message, &sent));
      return platform.sent;
    };
  };
  const auto plain = [&](const Crowd& crowd) {
    return [&] { return JoinBySet(crowd.*channel.addresses, channel.separator); };
  };
  bench.Compare(channel.beside, to(few), plain(few));
  if (!bench.IsAsked(channel.growth)) return;
  Bench::Require(to(many)() == plain(many)(), channel.growth);
  bench.Time(channel.growth, to(many), to(few));
}

// Each edit of the recipients gives the package a new list, which a host that holds the old one can tell.
void MeasureAddition(Bench& bench) {
  const auto count = bench.Size(kAdded);
  bench.Compare(
      {"AddUser of 2,000, one by one", "a clone of the growing list for each", 2},
      [&] {
        const auto message = NewBoundMessage();
        for (LONG user = kFirstUser; user < kFirstUser + count; ++user) {
          VARIANT_BOOL added = VARIANT_FALSE;
          LONG given = user;
          Check(message->AddUser(&given, &added));
        }
        return Dictionary(*PackageOf(message).Get(L"MessageUsers"_key)).Count();
      },
      [&] {
        auto list = Dictionary::New();
        for (std::int32_t user = kFirstUser; user < kFirstUser + count; ++user) {
          const auto entry = Dictionary::New();
          entry.Set(L"FUserID"_key, Value(user));
          entry.Set(L"FMessageID"_key, Value(std::int16_t{0}));
          list.Set(Key(user), entry);
          list = list.Clone();
        }
        return list.Count();
      });
}

}  // namespace

void MeasureSending(Bench& bench) {
  Platform platform;
  bench.Heading("Sending");
  MeasureEveryday(bench, platform);
  platform.logs = false;
  const auto few = CrowdOf(bench.Size(kFew)), many = CrowdOf(bench.Size(kMany));
  for (const auto& channel : kChannels) MeasureChannel(bench, platform, channel, few, many);
  MeasureAddition(bench);
}

}  // namespace tavio::bench
