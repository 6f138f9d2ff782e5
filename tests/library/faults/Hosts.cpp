#include "tests/library/faults/Hosts.h"

#include "com/BillActionsShell.h"
#include "com/BillEnvironmentsShell.h"
#include "com/MessageShell.h"
#include "com/PredefineActionsShell.h"

namespace tavio::test {
namespace {

std::string Lines(std::initializer_list<Item> items) {
  std::string lines;
  for (const auto& item : items) lines += Show(item.value) + "\n";
  return lines;
}

template <class Shell>
Component New() {
  ComPtr<IDispatch> object;
  Check(com::Make<Shell>(IID_PPV_ARGS(&object)));
  return Component(object);
}

Dictionary HeaderField(const wchar_t* key, std::int32_t lookUp) {
  return Named(
      L"field",
      Record({{L"FKey", key}, {L"FCaption", L"单号"}, {L"FNeedSave", 1}, {L"FVisible", 1}, {L"FLookUpType", lookUp}}));
}

}  // namespace

Host::Host()
    : actions(New<com::BillActionsShell>()),
      catalogue(New<com::PredefineActionsShell>()),
      scenarios(New<com::BillEnvironmentsShell>()) {
  actions.Assign(L"ClassType", Named(L"template", Record({{L"FID", 7}, {L"FBillTypeID", 1}})).AsValue());
  actions.Assign(L"vctPredefineAction", List({3}).AsValue());
  actions.Assign(L"ClassTypeEntry", List({1, 2}).AsValue());
  actions.Call(L"SetBillActions", Named(L"collection", Record({{L"Save", Action(L"action", L"Save", 0)},
                                                               {L"Check", Action(L"action", L"Check", 8)}})));
  actions.Assign(L"TableInfo", Record({{L"FID", 9}}).AsValue());
}

std::string Host::State() const {
  return Lines(
      {actions.Call(L"GetBillActions"), actions.Call(L"GetAppendVariables"), given, actions.Read(L"ClassTypeID")});
}

const Component& Host::Object(const std::wstring& name) const {
  return name == L"catalogue." ? catalogue : name == L"scenarios." ? scenarios : actions;
}

std::wstring Host::ClassOf(const std::wstring& name) {
  return name == L"catalogue." ? L"PredefineActions" : name == L"scenarios." ? L"BillEnvironments" : L"BillActions";
}

Sender::Sender() : message(New<com::MessageShell>()) {
  tableInfo = Named(L"fields", Record({{L"FBillNo", HeaderField(L"FBillNo", 0)},
                                       {L"FManager", HeaderField(L"FManager", 7)},
                                       {L"Page1", Named(L"page", Record({{L"FBillNo", 1}, {L"FManager", 1}}))}}));
  const auto manager = Named(L"manager", Record({{L"FEmpID", 41}}));
  const auto page = Named(L"bill page", Record({{L"FBillNo", L"CG001"}, {L"FManager", manager}}));
  bill = Named(L"bill", Record({{L"FID", 77}, {L"Page1", page}}));
  message.Assign(L"ClassTypeID", Value(5));
  message.Assign(L"ClassType", Named(L"template", Record({})).AsValue());
  message.Assign(L"TableInfo", tableInfo.AsValue());
  message.Call(L"RefreshVariableList");
  message.Call(L"RefreshVariableValue", bill);
  Named(L"variable users", Dictionary(message.Call(L"GetVariableUser")));
  const auto variables = Named(L"variables", Dictionary(message.Call(L"GetVariableList")));
  for (const auto* entry : {L"FBillNo", L"FManager"}) Named(L"variable", PackageAt(variables, Key(TextView(entry))));
  message.Assign(L"ExcludeUser", Named(L"excluded", List({5})).AsValue());
  message.Assign(L"GroupInfo", Named(L"group", Record({{L"FBillNo", 7}})).AsValue());
  message.Call(L"SetMessage", Named(L"package", Record({{L"FID", 1},
                                                        {L"FTitle", L"标题"},
                                                        {L"FMessage", L"单号 [FBillNo]"},
                                                        {L"FAccessoryForEmail", true},
                                                        {L"MessageUsers", Users(L"users", {1, 5})},
                                                        {L"EmailUsers", Users(L"users", {1, 5})},
                                                        {L"SMSUsers", Users(L"users", {1, 5})}})));
}

std::string Sender::State() const {
  return Lines({message.Call(L"GetMessage"), message.Call(L"GetVariableList"), message.Call(L"GetVariableUser"),
                message.Read(L"SelectedUser"), message.Read(L"MustSelectMsgUser"), recipients});
}

}  // namespace tavio::test
