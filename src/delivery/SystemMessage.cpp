#include "delivery/SystemMessage.h"

#include <algorithm>
#include <array>
#include <string>

#include "delivery/MessageFile.h"
#include "delivery/RandomSequence.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/environment/modFunction.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/DecimalText.h"

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

// Receivers take control character 20 for the end of a line of a title; the line feed beside it stays.
Text PreparedTitle(Text title) {
  std::replace(title.begin(), title.end(), L'\r', static_cast<wchar_t>(20));
  return title.substr(0, kTitleLimit);
}

Text CommandText(std::int32_t classTypeId, std::int32_t billId) {
  const auto bill = std::to_wstring(billId);
  if (IsInList<std::int32_t>(classTypeId, kObjectsWithOwnFunction)) {
    return L"FUNCID:63510509|FFlag:1|FInterID:" + bill;
  }
  return L"FUNCID:-1|FFlag:" + std::to_wstring(classTypeId) + L"|FInterID:" + bill;
}

}  // namespace

std::vector<std::int32_t> UserIdsOf(const Dictionary& recipients) {
  std::vector<std::int32_t> users;
  for (const auto& recipient : EntriesIn16Bits(recipients)) users.push_back(UserId(recipient.KeyView()));
  return users;
}

void SendSystemMessage(const SystemMessage& message, bool& sent) {
  const auto properties = PropertyTable::ParseProps(GetPropsString());
  auto sender = properties.GetCurrentUserID();
  const MessageFile file(std::to_wstring(sender) + std::to_wstring(FileNumbers().NextFileNumber()));
  file.WriteTempFile(message.content);
  std::int32_t length = std::max(file.GetTempFileSize(), kLineEnd) - kLineEnd;
  // The reader takes the carriage return along, so the array is one byte longer than the length passed beside it.
  auto bytes = Value::Bytes(file.ReadTempFile(length));
  auto users = Value::Integers(message.users);
  Text command = CommandText(message.classTypeId, message.billId);
  Component::Create(L"TavioAppCommand.Command")
      .Call(L"SendMessage", properties.GetProp(L"ConnectString"), ByRef(bytes), ByRef(length),
            PreparedTitle(message.title), ByRef(users), ByRef(sender), std::int16_t{0}, std::int16_t{1},
            ByRef(command));
  sent = true;
  file.Delete();
}

}  // namespace tavio
