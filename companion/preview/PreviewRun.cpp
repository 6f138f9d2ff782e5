#include "companion/preview/PreviewRun.h"

#include <limits>

#include "companion/Members.h"
#include "companion/boxes/BoxCollector.h"
#include "companion/preview/Channels.h"
#include "companion/preview/Compose.h"
#include "companion/preview/Variables.h"
#include "companion/recorder/PlatformCalls.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/packages/Walk.h"

namespace tavio::companion {
namespace {

constexpr std::size_t kTitleLimit = 50;

// A preview asks nobody: the dialog is off for its time.
class WithoutDialog {
 public:
  explicit WithoutDialog(const Component& message)
      : message_(message), before_(message.Read(L"MustSelectMsgUser").ToBool()) {
    if (before_) message_.Assign(L"MustSelectMsgUser", Value(false));
  }
  ~WithoutDialog() {
    try {
      if (before_) message_.Assign(L"MustSelectMsgUser", Value(true));
    } catch (...) {
      // The object takes a flag, or it would not have taken the other.
    }
  }
  WithoutDialog(const WithoutDialog&) = delete;
  WithoutDialog& operator=(const WithoutDialog&) = delete;

 private:
  const Component& message_;
  bool before_;
};

// The operations in a dry run, from its beginning to its end.
class DryRun {
 public:
  explicit DryRun(const Component& message)
      : message_(message),
        recording_(std::make_shared<Recording>(Recording::Mode::kDryRun, std::numeric_limits<std::int32_t>::max())),
        boxes_(message.Object().Get()) {
    recording_->Start();
    // A server that is loaded the first time may put class objects of its own in our place.
    for (int time = 0; time < 2; ++time) RefuseUnlessSeen();
  }
  ~DryRun() { recording_->Stop(); }
  DryRun(const DryRun&) = delete;
  DryRun& operator=(const DryRun&) = delete;

  template <class Send>
  Sending Run(Send&& send) {
    const auto first = recording_->Calls().size();
    boxes_.boxes.clear();
    Sending sending;
    sending.answered = send().ToBool();
    const auto& calls = recording_->Calls();
    for (auto i = first; i < calls.size(); ++i) sending.calls.push_back(&calls[i]);
    for (const auto& box : boxes_.boxes) sending.boxes.push_back(box.text);
    return sending;
  }

  Recording& Recorded() noexcept { return *recording_; }

 private:
  void RefuseUnlessSeen() const {
    for (const auto* progId : GuardedComponents()) {
      if (!recording_->StandsBefore(progId)) throw Refused(Say(words::kNotSeen) + L" " + progId);
    }
  }

  const Component& message_;
  std::shared_ptr<Recording> recording_;
  BoxCollector boxes_;
};

std::int32_t NumberIn(const Value& held) {
  try {
    return held.Type() == VT_BOOL ? 0 : held.OrEmpty().ToInt32();
  } catch (const Error&) {
    return 0;
  }
}

std::int32_t UserOfEmployee(std::int32_t employee) {
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  const Text sql = L"select FUserID from t_User where FEmpID=" + std::to_wstring(employee) + L" and FForbidden <> 1";
  const RecordSet rows(classInfo.Call(L"GetData", GetPropsString(), sql));
  return rows.EndReached() ? 0 : rows.Field(L"FUserID").ToInt32();
}

// What identifies nobody, or cannot be asked about, brings nobody in: if that fails the operation too, its box tells.
std::int32_t UserIn(const Value& held) try {
  if (!held.HoldsObject()) return held.IsObject() ? 0 : NumberIn(held);
  const Dictionary record(held);
  const auto user = NumberIn(*record.GetValue(L"FUserID"_key));
  const auto employee = user ? 0 : NumberIn(*record.GetValue(L"FEmpID"_key));
  return employee ? UserOfEmployee(employee) : user;
} catch (const Error&) {
  return 0;
}

// The bill fields that can hold a user, by caption, and the users that they hold in this bill.
struct Fields {
  std::vector<Text> captions;
  std::vector<FieldUser> users;
};

Fields FieldsOf(const Component& message, const Dictionary& bill) {
  Fields fields;
  const Dictionary names(message.Call(L"GetVariableUser"));
  const auto page = bill ? PackageAt(bill, L"Page1"_key) : Dictionary();
  if (!names) return fields;
  for (const auto& field : Entries(names)) {
    auto caption = TextAt(field.Record(), L"FCaption"_key);
    fields.captions.push_back(caption);
    const auto user = page ? UserIn(*page.GetValue(field.BorrowKey())) : 0;
    if (user) fields.users.push_back({std::move(caption), user});
  }
  return fields;
}

// What the platform can add to what the host has given.
void Complete(Context& context, const Component& message, const Sending& systemMessage) {
  const auto type = message.Read(L"ClassTypeID").ToInt32();
  try {
    if (!context.tableInfo) context.tableInfo = Templates().TableInfo(type);
  } catch (const Error&) {
    // Then nobody tells the bill's fields from the host's own variables.
  }
  const auto* call = FindCall(systemMessage, L"TavioAppCommand.Command", L"SendMessage");
  if (context.bill || !call || call->arguments.size() != 9) return;
  const Text command = call->arguments[8].ToText();
  try {
    const auto bill = Value(TextView(command).substr(command.rfind(L':') + 1)).ToInt32();
    context.bill = Templates().Bill(type, bill);
  } catch (const Error&) {
    // Then it is not known which field brings a user in.
  }
}

Text SentTitle(const Sending& systemMessage, const Text& title) {
  const auto* call = FindCall(systemMessage, L"TavioAppCommand.Command", L"SendMessage");
  return call && call->arguments.size() == 9 ? call->arguments[3].ToText() : title.substr(0, kTitleLimit);
}

}  // namespace

Result PreviewOf(const Component& message, const Context& given) {
  const Dictionary package(message.Call(L"GetMessage"));
  if (!package) throw Refused(Say(words::kNoMessage));
  const Text text = TextAt(package, L"FMessage"_key);
  const WithoutDialog withoutDialog(message);
  DryRun run(message);
  const auto systemMessage = run.Run([&] { return message.Call(L"SendMessage"); });
  const auto mail = run.Run([&] { return message.Call(L"SendEmail", Value(given.dataService)); });
  const auto shortMessage = run.Run([&] { return message.Call(L"SendShortMessage"); });
  const auto approval = run.Run([&] { return message.Call(L"SendSMS"); });
  Context context = given;
  Complete(context, message, systemMessage);

  Result result;
  result.heading = context.heading;
  result.title = TextAt(package, L"FTitle"_key);
  result.sentTitle = SentTitle(systemMessage, result.title);
  result.namesInTitle = NamesIn(result.title);
  result.captions = Translate(message, text, Translation::kCaptions);
  result.values = Translate(message, text, Translation::kValues);
  result.variables = VariablesOf(message, text, context.tableInfo);
  result.lost = LostIn(result.values);
  run.Recorded().Stop();

  const Secrets secrets(run.Recorded().Calls());
  const auto fields = FieldsOf(message, context.bill);
  Users users;
  const ChannelInput input{package, secrets, users, fields.users, fields.captions};
  result.channels = {SystemMessageOf(systemMessage, input), MailOf(mail, input), ShortMessageOf(shortMessage, input),
                     ApprovalOf(approval, input)};
  return result;
}

}  // namespace tavio::companion
