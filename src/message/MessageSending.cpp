#include "delivery/ApprovalNotice.h"
#include "delivery/BillPrint.h"
#include "delivery/Mail.h"
#include "delivery/RecipientExpansion.h"
#include "delivery/ShortMessage.h"
#include "delivery/SystemMessage.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Fields.h"
#include "message/Message.h"
#include "message/Recipients.h"
#include "message/Translation.h"
#include "message/VariableUsers.h"
#include "message/dialog/ConfirmRecipients.h"

namespace tavio {
namespace {

// A box of the exclusion's own shows the description alone; SendMessage reports the missing list once more.
Dictionary WithoutExcluded(const MessageState& sending, const Dictionary& recipients) {
  return ExcludeUsers(recipients, sending.excludeUser, kDescriptionOnly);
}

// Excluded users are not let in again.
Dictionary WithVariableUsers(const MessageState& sending, const Dictionary& recipients) {
  const auto& bill = sending.data ? sending.data : sending.bill;
  if (!sending.variableUsers || !bill) return recipients;
  const auto page = PackageAt(bill, L"Page1"_key);
  if (!page) return recipients;
  AddVariableUsers(recipients, sending.variableUsers, page, sending.package);
  return ExcludeUsers(recipients, sending.excludeUser, L"TavioClassBillAction.Message : ExcludeUsers");
}

Text ContentOf(const MessageState& sending) {
  const auto content = sending.package.Get(L"FMessage"_key)->OrEmpty().ToText();
  return Text(TranslateToValues(content, sending.variables, sending.groupInfo).View());
}

// The users of a list of the package who are not excluded, as a copy: the stored list outlives the sending. Unset if the
// package has no such list.
Dictionary UsersIn(const MessageState& sending, const Key& list) {
  const auto stored = PackageAt(sending.package, list);
  if (!stored) return {};
  const auto users = stored.CloneAll();
  RemoveRecipients(users, sending.excludeUser);
  return users;
}

Value SubjectOf(const MessageState& sending) {
  const auto title = sending.package.GetValue(L"FTitle"_key);
  return title->IsNull() ? Value(L"") : title->Copy();
}

Mail MailOf(const MessageState& sending, const Text& addresses) {
  return {.props = GetPropsString(),
          .addresses = addresses,
          .subject = SubjectOf(sending),
          .body = ContentOf(sending),
          .attachment = {}};
}

bool WantsAttachment(const MessageState& sending) { return FlagAt(sending.package, L"FAccessoryForEmail"_key); }

void SendTo(const Text& numbers, const MessageState& sending) {
  Text content;
  sending.package.GetValue(L"FTitle"_key)->AppendTo(content);
  content += L" : " + ContentOf(sending);
  SendShortMessage({numbers, content, sending.classTypeId, sending.billId});
}

}  // namespace

bool Message::SendMessage(const Dictionary& given) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.SendMessage 解析消息,发送给接收者",
                           .report = L"TavioClassBillAction.Message : SendMessage",
                           .resultAfterFailure = Labels::kKept,
                           .outcomeAfterFailure = 1};
  const auto sending = state_;
  return Operation<bool>(kLabels, [&](bool& sent, std::int32_t& outcome) {
    const auto nobody = [&] { outcome = 0; };
    if (!sending.package || (!given && !PackageAt(sending.package, L"MessageUsers"_key))) return nobody();
    const auto settled = given ? WithoutExcluded(sending, given) : SettleRecipients(sending);
    const auto recipients = WithVariableUsers(sending, settled);
    if (recipients.Count() == 0) return nobody();
    SendSystemMessage({.content = ContentOf(sending),
                       .title = TextAt(sending.package, L"FTitle"_key),
                       .users = UserIdsOf(recipients),
                       .classTypeId = sending.classTypeId,
                       .billId = sending.billId},
                      sent);
  });
}

Dictionary Message::SettleRecipients(const MessageState& sending) {
  const Dictionary stored(*sending.package.Get(L"MessageUsers"_key));
  auto recipients = WithoutExcluded(sending, stored.CloneAll());
  if (sending.mustSelectMsgUser) {
    ConfirmRecipients(recipients, sending.package);
    SelectedUser(recipients);
  }
  return recipients;
}

bool Message::SendEmail(const Component& dataService) noexcept {
  const auto sending = state_;
  return Operation<bool>({}, [&](bool& sent) {
    const auto addresses = MailAddressesOf(UsersIn(sending, L"EmailUsers"_key));
    if (addresses.empty()) return;
    auto mail = MailOf(sending, addresses);
    if (WantsAttachment(sending)) {
      mail.attachment = PrintBill({dataService, sending.classType, sending.tableInfo, sending.billId});
    }
    sent = SendMail(mail);
  });
}

bool Message::SendShortMessage() noexcept {
  const auto sending = state_;
  return Operation<bool>({}, [&](bool& sent) {
    const auto numbers = MobileNumbersOf(UsersIn(sending, L"SMSUsers"_key));
    if (numbers.empty()) return;
    SendTo(numbers, sending);
    sent = true;
  });
}

// An approval notice may concern the recipients of the system message.
bool Message::SendSMS() noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.SendSMS 多级审核消息", .outcomeAfterFailure = 1};
  const auto sending = state_;
  return Operation<bool>(kLabels, [&](bool& sent) {
    const auto numbers = NumbersToNotify(UsersIn(sending, L"MessageUsers"_key), sending.billId);
    if (numbers.empty()) return;
    SendTo(numbers, sending);
    sent = true;
  });
}

}  // namespace tavio
