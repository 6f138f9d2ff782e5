#include <array>
#include <string>

#include "delivery/MessageFile.h"
#include "delivery/RandomSequence.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/environment/modFunction.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/DecimalText.h"
#include "message/Message.h"

namespace tavio {
namespace {

constexpr std::size_t kTitleLimit = 50;
constexpr std::int32_t kLineEnd = 2;
// The business object whose messages open a function of their own.
constexpr std::array<std::int32_t, 1> kObjectsWithOwnFunction = {1003000};

RandomSequence& FileNumbers() noexcept {
  static RandomSequence sequence;
  return sequence;
}

std::int32_t UserId(TextView key) {
  const auto plain = ReadDecimal(key);
  return plain ? *plain : Value(key).ToInt32();
}

std::vector<std::int32_t> UserIds(const Dictionary& recipients) {
  const auto count = CountedIn16Bits(recipients.Count());
  std::vector<std::int32_t> users(static_cast<std::size_t>(count));
  for (std::int32_t i = 1; i <= count; ++i) {
    users[static_cast<std::size_t>(i - 1)] = UserId(recipients.At(i).KeyView());
  }
  return users;
}

// Receivers take control character 20 for the end of a line of a title; the line feed beside it stays.
Text PreparedTitle(Text title) {
  std::replace(title.begin(), title.end(), L'\r', static_cast<wchar_t>(20));
  return title.substr(0, kTitleLimit);
}

}  // namespace

Text Message::CommandText() const {
  const auto bill = std::to_wstring(billId_);
  if (IsInList<std::int32_t>(classTypeId_, kObjectsWithOwnFunction)) {
    return L"FUNCID:63510509|FFlag:1|FInterID:" + bill;
  }
  return L"FUNCID:-1|FFlag:" + std::to_wstring(classTypeId_) + L"|FInterID:" + bill;
}

// The recipients that are left for this sending; unset where the package has no list.
Dictionary Message::SettleRecipients(const Dictionary& given) {
  if (given) return RemoveExcludedUsers(given);
  const auto stored = PackageAt(message_, L"MessageUsers"_key);
  if (!stored) return {};
  // A copy: the stored list outlives this sending.
  auto recipients = RemoveExcludedUsers(stored.CloneAll());
  if (mustSelectMsgUser_) {
    ConfirmRecipients(recipients);
    selectedUser_ = recipients;
  }
  return recipients;
}

bool Message::SendMessage(const Dictionary& given) noexcept {
  return Operation<bool>({.log = L"TavioClassBillAction.Message.SendMessage 解析消息,发送给接收者",
                          .report = L"TavioClassBillAction.Message : SendMessage",
                          .resultAfterFailure = Labels::kKept,
                          .outcomeAfterFailure = 1},
                         [&](bool& sent, std::int32_t& outcome) {
                           const auto nobody = [&] { outcome = 0; };
                           if (!message_ || (!given && !PackageAt(message_, L"MessageUsers"_key))) return nobody();
                           const auto recipients = WithVariableUsers(SettleRecipients(given));
                           if (recipients.Count() == 0) return nobody();
                           Deliver(recipients, sent);
                         });
}

void Message::Deliver(const Dictionary& recipients, bool& sent) {
  const Text content = TransValues(message_.Get(L"FMessage"_key)->ToText());
  const Text title = message_.GetValue(L"FTitle"_key)->ToText();
  auto users = Value::Integers(UserIds(recipients));
  const auto properties = PropertyTable::ParseProps(GetPropsString());
  auto sender = properties.GetCurrentUserID();
  const MessageFile file(std::to_wstring(sender) + std::to_wstring(FileNumbers().NextFileNumber()));
  file.WriteTempFile(content);
  std::int32_t length = std::max(file.GetTempFileSize() - kLineEnd, std::int32_t{0});
  // The reader takes the carriage return along, so the array is one byte longer than the length passed beside it.
  auto bytes = Value::Bytes(file.ReadTempFile(length));
  Text command = CommandText();
  Component::Create(L"TavioAppCommand.Command")
      .Call(L"SendMessage", properties.GetProp(L"ConnectString"), ByRef(bytes), ByRef(length), PreparedTitle(title),
            ByRef(users), ByRef(sender), std::int16_t{0}, std::int16_t{1}, ByRef(command));
  sent = true;
  file.Delete();
}

}  // namespace tavio
