#include "message/Message.h"

#include "foundation/environment/Operation.h"
#include "foundation/environment/modMorlaLogMsg.h"
#include "foundation/packages/Fields.h"
#include "message/Recipients.h"
#include "message/Translation.h"
#include "message/VariableList.h"
#include "message/VariableValues.h"

namespace tavio {
namespace {

void RequireTemplate(const MessageState& state, const wchar_t* source) {
  if (state.classType && state.tableInfo) return;
  throw Error::NotBound(source, L"请先设置本组件关联的业务对象模板信息!");
}

// What a new package holds.
void FillNew(const Dictionary& package) {
  package.Set(L"FID"_key, Value(std::int16_t{0}));
  package.Set(L"FTitle"_key, Value(L""));
  package.Set(L"FMessage"_key, Value(L""));
  package.Set(L"FMessageDescriptions"_key, Value(L""));
  package.Set(L"FSendType"_key, Value(std::int16_t{1}));
  const auto empty = Dictionary::New();
  package.Set(L"MessageUsers"_key, empty.Clone());
  package.Set(L"EmailUsers"_key, empty.Clone());
  package.Set(L"SMSUsers"_key, empty.Clone());
}

// The list of the package, or a new one that the package does not know yet.
Dictionary UsersOf(const Dictionary& package) {
  auto users = PackageAt(package, L"MessageUsers"_key);
  return users ? users : Dictionary::New();
}

}  // namespace

void Message::NewMessage() noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.NewMessage 新建消息",
                           .report = L"TavioClassBillAction.Message : NewMessage"};
  Operation(kLabels, [&] {
    RequireTemplate(state_, L"TavioClassBillAction.Message.NewMessage");
    state_.package = Dictionary();  // gone too if no new one can be made
    const auto package = Dictionary::New();
    state_.package = package;
    FillNew(package);
  });
}

bool Message::SetMessage(const Dictionary& message) noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.Message : SetMessage", .resultAfterFailure = Labels::kKept};
  return Operation<bool>(kLabels, [&](bool& accepted) {
    RequireTemplate(state_, L"TavioClassBillAction.Message.SetMessage");
    state_.package = message;
    accepted = true;
    if (!message || message.Count() == 0) return NewMessage();
    bool caption = true, value = false, name = false;
    auto shown = TransMessage(message.Get(L"FMessage"_key)->OrEmpty().ToText(), caption, value, name);
    message.Set(L"FMessageDescriptions"_key, Value(std::move(shown)));
  });
}

void Message::RefreshVariableList() noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.RefreshVariableList 刷新消息变元列表"};
  Operation(kLabels, [&] {
    RequireTemplate(state_, L"TavioClassBillAction.Message.RefreshVariableList");
    const auto tableInfo = state_.tableInfo;
    state_.variables = Dictionary();
    state_.variableUsers = Dictionary();
    const auto variables = Dictionary::New();
    state_.variables = variables;
    ListVariables(tableInfo, variables);
    const auto users = Dictionary::New();
    state_.variableUsers = users;
    ListVariableUsers(tableInfo, users);
  });
}

bool Message::AddVariable(const Dictionary& variable) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.AddVariable 向消息变元列表中增加变元",
                           .report = L"TavioClassBillAction.Message : AddVariable",
                           .resultAfterFailure = Labels::kKept};
  return Operation<bool>(kLabels, [&](bool& added) {
    if (!IsVariable(variable)) return;
    if (!state_.variables) RefreshVariableList();
    const auto variables = state_.variables;
    StoreVariable(variables, variable);
    added = true;
  });
}

bool Message::RefreshVariableValue(const Dictionary& data) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.RefreshVariableValue 刷新消息可用变元内容",
                           .report = L"TavioClassBillAction.Message : RefreshVariableValue"};
  return Operation<bool>(kLabels, [&](bool& refreshed) {
    RequireTemplate(state_, L"TavioClassBillAction.Message.RefreshVariableValue");
    state_.billId = NumberAt(data, L"FID"_key, 0);
    state_.bill = data;
    if (!state_.variables) RefreshVariableList();
    const auto variables = state_.variables, tableInfo = state_.tableInfo;
    FillVariables(variables, tableInfo, PackageAt(data, L"Page1"_key));
    refreshed = true;
  });
}

BString Message::TransMessage(TextView text, bool& transCaption, bool& transValue, bool& transName) noexcept {
  TranslationFlags flags{transCaption, transValue, transName};
  const auto variables = state_.variables, group = state_.groupInfo;
  auto translation = Translate(text, flags, variables, group);
  transCaption = flags.caption;
  transValue = flags.value;
  transName = flags.name;
  return translation;
}

bool Message::CallsBeforeTranslating() const noexcept {
  return IsLogCalled() || (state_.variables && !state_.variables.IsReadInPlace());
}

bool Message::AddUser(std::int32_t user) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.AddUser 向消息用户列表中加入用户",
                           .report = L"TavioClassBillAction.Message : AddUser"};
  return Operation<bool>(kLabels, [&](bool& added) {
    if (!state_.package) NewMessage();
    const auto package = state_.package;
    const auto users = UsersOf(package);
    AddRecipient(users, user, package);
    package.Set(L"MessageUsers"_key, users.Clone());
    added = true;
  });
}

bool Message::RemoveUser(std::int32_t user) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.RemoveUser 从消息用户列表中删除用户",
                           .report = L"TavioClassBillAction.Message : RemoveUser",
                           .resultAfterFailure = Labels::kKept};
  return Operation<bool>(kLabels, [&](bool& removed) {
    if (!state_.package) NewMessage();
    const auto package = state_.package;
    const auto users = UsersOf(package);
    removed = RemoveRecipient(users, user);
    package.Set(L"MessageUsers"_key, users.Clone());
  });
}

bool Message::RemoveAllUsers() noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.Message : RemoveAllUsers"};
  Operation(kLabels, [&] {
    const auto package = state_.package;
    if (package) package.Set(L"MessageUsers"_key, Dictionary::New());
  });
  return false;  // hosts have learnt not to look at it
}

}  // namespace tavio
