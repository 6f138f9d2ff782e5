#pragma once

#include "foundation/packages/Component.h"
#include "foundation/values/NoWindowsMacros.h"

namespace tavio {

// All that a message consists of: copying it copies handles.
struct MessageState {
  std::int32_t classTypeId = 0;
  Dictionary classType;
  Dictionary tableInfo;
  Vector classTypeEntry;
  Dictionary data;
  Dictionary package;
  bool mustSelectMsgUser = false;
  Dictionary variables;
  Dictionary variableUsers;
  Dictionary selectedUser;
  Dictionary groupInfo;
  Vector excludeUser;
  // The bill last given to RefreshVariableValue, and its FID.
  Dictionary bill;
  std::int32_t billId = 0;
};

// The message of one action in one scenario: its package, the variables and recipients that belong to it, and its
// delivery. Packages are held by reference. Every operation traps its own failures, shows them in a box if its comment
// does not say otherwise, and answers its empty result. An operation works with what it finds at its start, whatever
// the host sets meanwhile: components, containers and the dialog let host code run.
class Message {
 public:
  void ClassTypeID(std::int32_t value) noexcept { state_.classTypeId = value; }
  std::int32_t ClassTypeID() const noexcept { return state_.classTypeId; }
  // The data of the bill that is sent about.
  void Data(Dictionary value) noexcept { state_.data = std::move(value); }
  // Template and field information must be set before any operation on the package or its variables.
  void ClassType(Dictionary value) noexcept { state_.classType = std::move(value); }
  void TableInfo(Dictionary value) noexcept { state_.tableInfo = std::move(value); }
  void ClassTypeEntry(Vector value) noexcept { state_.classTypeEntry = std::move(value); }
  // Whether the user confirms the recipients before a system message is sent.
  void MustSelectMsgUser(bool value) noexcept { state_.mustSelectMsgUser = value; }
  bool MustSelectMsgUser() const noexcept { return state_.mustSelectMsgUser; }
  // Values by variable name, with the code of the action under FCode.
  void GroupInfo(Dictionary value) noexcept { state_.groupInfo = std::move(value); }
  // The IDs of users who must not receive the message.
  void ExcludeUser(Vector value) noexcept { state_.excludeUser = std::move(value); }
  const Dictionary& SelectedUser() const noexcept { return state_.selectedUser; }
  void SelectedUser(Dictionary value) noexcept { state_.selectedUser = std::move(value); }

  // Starts an empty package.
  void NewMessage() noexcept;
  // Takes the package itself and writes its FMessageDescriptions. An unset or empty package is replaced by a new one.
  // Answers false only if template or field information is missing.
  bool SetMessage(const Dictionary& message) noexcept;
  // The package itself; unset before NewMessage or SetMessage.
  const Dictionary& GetMessage() const noexcept { return state_.package; }

  // Rebuilds the variables and the variable users from the header fields. Reports nothing.
  void RefreshVariableList() noexcept;
  // Adds or replaces the variable FName; false, without a box, if FName or FCaption is missing.
  bool AddVariable(const Dictionary& variable) noexcept;
  // Gives each variable its FValue from the header page of a bill, and keeps the bill's FID for sending.
  bool RefreshVariableValue(const Dictionary& data) noexcept;
  const Dictionary& GetVariableList() const noexcept { return state_.variables; }
  const Dictionary& GetVariableUser() const noexcept { return state_.variableUsers; }
  // The text with each bracketed variable name replaced. The flags choose the replacement; those that are not followed
  // come back false.
  BString TransMessage(TextView text, bool& transCaption, bool& transValue, bool& transName) noexcept;
  // Whether TransMessage meets foreign code before it reads the text. Later it copies the text before it does.
  bool CallsBeforeTranslating() const noexcept;

  // The recipients of the system message. Each edit gives the package a new list object.
  bool AddUser(std::int32_t user) noexcept;
  // Whether the user was a recipient.
  bool RemoveUser(std::int32_t user) noexcept;
  // Always answers false.
  bool RemoveAllUsers() noexcept;

  // Sends a system message to the given recipients, from which excluded users are removed in place, or, if they are
  // unset, to those of the package. Whether the platform's command was called without a failure.
  bool SendMessage(const Dictionary& recipients) noexcept;
  // Sends a mail to the EmailUsers of the package who are not excluded and have an address, with the printed bill if
  // FAccessoryForEmail asks for it. `dataService` is the host's, for the print. Whether the platform's mail gateway
  // took it, or, if there is no gateway, the mail server that is set. Reports what these two refuse, and nothing
  // else.
  bool SendEmail(const Component& dataService) noexcept;
  // Sends a short message to the SMSUsers of the package who are not excluded and have a number. Whether the platform's
  // gateway was called without a failure. Reports nothing.
  bool SendShortMessage() noexcept;
  // Sends a short message about a bill in multi-level approval: to those of the MessageUsers whom the platform says
  // must be told. Otherwise as SendShortMessage.
  bool SendSMS() noexcept;

 private:
  // The recipients of the package that are left for this sending.
  Dictionary SettleRecipients(const MessageState& sending);

  MessageState state_;
};

}  // namespace tavio
