#pragma once

#include "foundation/packages/Component.h"
#include "foundation/values/NoWindowsMacros.h"

namespace tavio {

// The message of one action in one scenario: its package, the variables and recipients that belong to it, and its
// delivery. Packages are held by reference. Every operation traps its own failures, shows them in a box where its
// comment does not say otherwise, and answers its empty result.
class Message {
 public:
  void ClassTypeID(std::int32_t value) noexcept { classTypeId_ = value; }
  std::int32_t ClassTypeID() const noexcept { return classTypeId_; }
  // The data of the bill that is sent about.
  void Data(Dictionary value) noexcept { data_ = std::move(value); }
  // Template and field information must be set before any operation on the package or its variables.
  void ClassType(Dictionary value) noexcept { classType_ = std::move(value); }
  void TableInfo(Dictionary value) noexcept { tableInfo_ = std::move(value); }
  void ClassTypeEntry(Vector value) noexcept { classTypeEntry_ = std::move(value); }
  // Whether the user confirms the recipients before a system message is sent.
  void MustSelectMsgUser(bool value) noexcept { mustSelectMsgUser_ = value; }
  bool MustSelectMsgUser() const noexcept { return mustSelectMsgUser_; }
  // Values by variable name, with the code of the action under FCode.
  void GroupInfo(Dictionary value) noexcept { groupInfo_ = std::move(value); }
  // The IDs of users who must not receive the message.
  void ExcludeUser(Vector value) noexcept { excludeUser_ = std::move(value); }
  const Dictionary& SelectedUser() const noexcept { return selectedUser_; }
  void SelectedUser(Dictionary value) noexcept { selectedUser_ = std::move(value); }

  // Starts an empty package.
  void NewMessage() noexcept;
  // Takes the package itself and writes its FMessageDescriptions. An unset or empty package is replaced by a new one.
  // Answers false only where template or field information is missing.
  bool SetMessage(const Dictionary& message) noexcept;
  // The package itself; unset before NewMessage or SetMessage.
  const Dictionary& GetMessage() const noexcept { return message_; }

  // Rebuilds the variables and the variable users from the header fields. Reports nothing.
  void RefreshVariableList() noexcept;
  // Adds or replaces the variable FName; false, without a box, where FName or FCaption is missing.
  bool AddVariable(const Dictionary& variable) noexcept;
  // Gives each variable its FValue from the header page of a bill, and keeps the bill's FID for sending.
  bool RefreshVariableValue(const Dictionary& data) noexcept;
  const Dictionary& GetVariableList() const noexcept { return variables_; }
  const Dictionary& GetVariableUser() const noexcept { return variableUsers_; }
  // The text with each bracketed variable name replaced. The flags choose the replacement; those that are not followed
  // come back false.
  Text TransMessage(TextView text, bool& transCaption, bool& transValue, bool& transName) noexcept;

  // The recipients of the system message. Each edit gives the package a new list object.
  bool AddUser(std::int32_t user) noexcept;
  // Whether the user was a recipient.
  bool RemoveUser(std::int32_t user) noexcept;
  // Always answers false.
  bool RemoveAllUsers() noexcept;

  // Sends a system message to the given recipients, from which excluded users are removed in place, or, where they are
  // unset, to those of the package. Whether the platform's command was called without a failure.
  bool SendMessage(const Dictionary& recipients) noexcept;
  // Sends a mail to the EmailUsers of the package who are not excluded and have an address, with the printed bill where
  // FAccessoryForEmail asks for it. `dataService` is the host's, for the print. Whether the platform's mail gateway
  // took it, or, where there is no gateway, the mail server that is set. Reports what these two refuse, and nothing
  // else.
  bool SendEmail(const Component& dataService) noexcept;
  // Sends a short message to the SMSUsers of the package who are not excluded and have a number. Whether the platform's
  // gateway was called without a failure. Reports nothing.
  bool SendShortMessage() noexcept;
  // Sends a short message about a bill in multi-level approval: to those of the MessageUsers whom the platform says
  // must be told. Otherwise as SendShortMessage.
  bool SendSMS() noexcept;

 private:
  void RequireTemplate(TextView operation) const;
  Dictionary FieldOf(const Key& key) const;
  void BuildVariables();
  void BuildVariableUsers();
  void FillVariable(const Key& name, const Dictionary& variable, const Dictionary& page) const;
  Text TransValues(TextView text) noexcept;
  Dictionary MessageUsersOfPackage() const;
  void RemoveFrom(const Dictionary& recipients) const;
  Dictionary ExcludeUsers(const Dictionary& recipients) const noexcept;
  Dictionary RemoveExcludedUsers(const Dictionary& recipients) const noexcept;
  Dictionary WithVariableUsers(const Dictionary& recipients) const;
  std::int32_t UserOf(const Value& held) const;
  Dictionary SettleRecipients(const Dictionary& given);
  void ConfirmRecipients(Dictionary& recipients) const;
  void Deliver(const Dictionary& recipients, bool& sent);
  Text CommandText() const;
  Text AddressesOf(const Key& list, const Key& field, wchar_t separator) const;
  Dictionary MailRequest(const Text& addresses);
  Text PrintBill(const Component& dataService) const noexcept;
  void SendToNumbers(const Text& numbers);
  Vector NoticeCandidates() const;

  std::int32_t classTypeId_ = 0;
  Dictionary classType_;
  Dictionary tableInfo_;
  Vector classTypeEntry_;
  Dictionary data_;
  Dictionary message_;
  bool mustSelectMsgUser_ = false;
  Dictionary variables_;
  Dictionary variableUsers_;
  Dictionary selectedUser_;
  Dictionary groupInfo_;
  Vector excludeUser_;
  // The bill last given to RefreshVariableValue, and its FID.
  Dictionary bill_;
  std::int32_t billId_ = 0;
};

}  // namespace tavio
