#include "companion/preview/Compose.h"

#include "companion/Members.h"
#include "companion/Words.h"
#include "companion/boxes/BoxCollector.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/DecimalText.h"

namespace tavio::companion {
namespace {

constexpr int kMostNamed = 12;

// Texts joined for a message, cut if there are many.
class Named {
 public:
  void Add(TextView name) {
    if (++count_ <= kMostNamed) text_ += (text_.empty() ? L"" : L", ") + Text(name);
    if (count_ == kMostNamed + 1) text_ += L", …";
  }
  Text Joined() const { return text_.empty() ? L"-" : text_; }

 private:
  int count_ = 0;
  Text text_;
};

Error Unknown(const Word& what, const Text& given, const Named& known) {
  return Refused(Say(what) + L" '" + given + L"'; " + Say(words::kThereAre) + L" " + known.Joined());
}

Named BillTypes() {
  Named types;
  const Dictionary menu(Component::Create(L"TavioMClass.ClassInfo").Call(L"GetClassMenu", GetPropsString()));
  for (const auto& entry : Entries(menu)) {
    const auto item = entry.Record();
    const auto type = TextAt(item, L"FClassTypeID"_key);
    if (!type.empty() && type != L"0") types.Add(type + L" " + TextAt(item, L"FName"_key));
  }
  return types;
}

// As far as the platform keeps bills in a table of that name.
Named Bills(std::int32_t type) {
  Named bills;
  const Text sql = L"SELECT FID FROM t_Bill WHERE FClassTypeID = " + std::to_wstring(type) + L" ORDER BY FID";
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  for (const RecordSet rows(classInfo.Call(L"GetData", GetPropsString(), sql)); !rows.EndReached(); rows.MoveNext()) {
    bills.Add(rows.Field(L"FID").ToText());
  }
  return bills;
}

template <class Collect>
Named OrNone(Collect&& collect) {
  try {
    return collect();
  } catch (const Error&) {
    return {};
  }
}

Named Codes(const Dictionary& actions) {
  Named codes;
  for (const auto& action : Entries(actions)) codes.Add(TextAt(action.Record(), L"FCode"_key));
  return codes;
}

struct Scenario {
  std::int32_t mask = 0;
  Text name;
};

Scenario FindScenario(const Value& given, const BoxCollector& boxes) {
  const Component environments = Component::Create(L"TavioClassBillAction.BillEnvironments");
  const Dictionary list(environments.Call(L"GetList"));
  if (!list) boxes.Raise();
  const Text text = given.ToText();
  const auto number = ReadDecimal(text);
  Named known;
  for (const auto& entry : Entries(list)) {
    const auto record = entry.Record();
    const auto mask = NumberAt(record, L"FMask"_key);
    const auto name = TextAt(record, L"FName"_key);
    if (number ? mask == *number : name == text) return {mask, name};
    known.Add(std::to_wstring(mask) + L" " + name);
  }
  if (number && *number != 0) return {*number, {}};
  throw Unknown(words::kUnknownScenario, text, known);
}

Named ScenariosOf(const Component& actions, const Text& action) {
  Named scenarios;
  const Dictionary record(actions.Call(L"Item", action));
  const auto messages = record ? PackageAt(record, L"Messages"_key) : Dictionary();
  if (!messages) return scenarios;
  for (const auto& entry : Entries(messages)) scenarios.Add(entry.KeyView());
  return scenarios;
}

Dictionary MessagePackage(const Component& actions, const Text& action, const Scenario& scenario) {
  if (!actions.Call(L"LookUp", action).ToBool()) {
    throw Unknown(words::kUnknownAction, action, Codes(Dictionary(actions.Call(L"GetBillActions"))));
  }
  const Dictionary package(actions.Call(L"GetMessage", action, scenario.mask));
  if (package) return package;
  const Text given =
      action + L" " + std::to_wstring(scenario.mask) + (scenario.name.empty() ? L"" : L" ") + scenario.name;
  throw Unknown(words::kHasNoMessage, given, ScenariosOf(actions, action));
}

Text HeadingOf(const Dictionary& classType, std::int32_t type, const Text& action, const Scenario& scenario,
               std::int32_t bill) {
  Text name = TextAt(classType, Key(TextView(L"FName_" + GetPropValue(L"Language"))));
  if (!name.empty()) name += L" ";
  return name + std::to_wstring(type) + L", " + action + L", " + std::to_wstring(scenario.mask) +
         (scenario.name.empty() ? L"" : L" ") + scenario.name + L", " + Say(words::kBill) + L" " +
         std::to_wstring(bill);
}

}  // namespace

Templates::Templates() : props_(GetPropsString()), classInfo_(Component::Create(L"TavioMClass.ClassInfo")) {}

template <class... Arguments>
Value Templates::Ask(const wchar_t* member, const Arguments&... arguments) const {
  if (!HasMember(classInfo_.Object().Get(), member)) throw Refused(Say(words::kMissingMember) + L" " + member);
  return classInfo_.Call(member, props_, arguments...);
}

Dictionary Templates::ClassType(std::int32_t type) const try {
  return Dictionary(Ask(L"GetClassType", type));
} catch (const Error& error) {
  if (error.Source() == L"TavioCompanion") throw;
  throw Unknown(words::kUnknownType, std::to_wstring(type), OrNone(&BillTypes));
}

Dictionary Templates::TableInfo(std::int32_t type) const { return Dictionary(Ask(L"GetTableInfo", type)); }

Vector Templates::Entries(std::int32_t type) const { return Vector(Ask(L"GetClassTypeEntry", type)); }

Dictionary Templates::Bill(std::int32_t type, std::int32_t bill) const try {
  return Dictionary(Ask(L"GetBillData", type, bill));
} catch (const Error& error) {
  if (error.Source() == L"TavioCompanion") throw;
  throw Unknown(words::kUnknownBill, std::to_wstring(bill), OrNone([&] { return Bills(type); }));
}

Component LoadedActions(std::int32_t type) {
  const auto actions = Component::Create(L"TavioClassBillAction.BillActions");
  const BoxCollector boxes(actions.Object().Get());
  actions.Assign(L"ClassTypeID", Value(type));
  actions.Call(L"Initialize");
  boxes.Raise();
  return actions;
}

Composed Compose(std::int32_t type, const Text& action, const Value& scenario, std::int32_t bill) {
  const Templates templates;
  const auto classType = templates.ClassType(type);
  const auto actions = LoadedActions(type);
  const BoxCollector boxes(actions.Object().Get());
  const auto chosen = FindScenario(scenario, boxes);
  const auto package = MessagePackage(actions, action, chosen);
  Composed composed{Component::Create(L"TavioClassBillAction.Message"), templates.Bill(type, bill),
                    templates.TableInfo(type), HeadingOf(classType, type, action, chosen, bill)};
  const auto& message = composed.message;
  message.Assign(L"ClassTypeID", Value(type));
  message.Assign(L"ClassType", classType.AsValue());
  message.Assign(L"TableInfo", composed.tableInfo.AsValue());
  message.Assign(L"ClassTypeEntry", templates.Entries(type).AsValue());
  message.Call(L"RefreshVariableList");
  message.Call(L"SetMessage", package);
  message.Assign(L"Data", composed.bill.AsValue());
  message.Call(L"RefreshVariableValue", composed.bill);
  boxes.Raise();
  return composed;
}

}  // namespace tavio::companion
