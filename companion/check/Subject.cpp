#include "companion/check/Subject.h"

#include "companion/preview/Compose.h"
#include "companion/preview/People.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio::companion {
namespace {

constexpr std::int32_t kLookUpUser = 7;
constexpr std::int32_t kForThePlatform = 12;
constexpr std::int32_t kDeleted = 4;
constexpr const wchar_t* kLists[] = {L"MessageUsers", L"EmailUsers", L"SMSUsers"};

CheckedField FieldFrom(const Dictionary& field, TextView page) {
  CheckedField checked{TextAt(field, L"FKey"_key), TextAt(field, L"FCaption"_key), Text(page)};
  const bool header = page == L"Page1" && NumberAt(field, L"FNeedSave"_key) != 0;
  const auto visible = NumberAt(field, L"FVisible"_key);
  checked.isVariable = header && visible != 0 && visible != kForThePlatform;
  checked.holdsUser = header && NumberAt(field, L"FLookUpType"_key) == kLookUpUser;
  return checked;
}

CheckedMessage MessageFrom(const Dictionary& entry) {
  CheckedMessage checked{NumberAt(entry, L"FEnvironment"_key, 0)};
  const auto message = PackageAt(entry, L"Message"_key);
  if (!message) return checked;
  checked.title = TextAt(message, L"FTitle"_key);
  checked.text = TextAt(message, L"FMessage"_key);
  for (const auto* list : kLists) {
    const auto recipients = PackageAt(message, Key(TextView(list)));
    if (!recipients || recipients.Count() == 0) continue;
    auto& users = checked.recipients[list];
    for (const auto& listed : ListedIn(recipients, list != kLists[0])) {
      if (listed.isNumber && ToUpper(listed.type) == L"U") users.push_back(listed.id);
    }
  }
  return checked;
}

CheckedAction ActionFrom(const Dictionary& action) {
  CheckedAction checked{TextAt(action, L"FCode"_key), NumberAt(action, L"FEnvironment"_key, 0),
                        NumberAt(action, L"FRightMask"_key, 0)};
  const auto messages = PackageAt(action, L"Messages"_key);
  if (!messages) return checked;
  for (const auto& entry : Entries(messages)) checked.messages.push_back(MessageFrom(entry.Record()));
  return checked;
}

}  // namespace

// The fields stand under their own keys, and every page lists its own.
std::vector<CheckedField> FieldsFrom(const Dictionary& tableInfo) {
  std::vector<CheckedField> fields;
  for (const auto& page : Entries(tableInfo)) {
    if (!page.KeyView().starts_with(L"Page") || !page.Stored().HoldsObject()) continue;
    for (const auto& field : Entries(page.Record())) {
      const auto record = PackageAt(tableInfo, field.BorrowKey());
      if (record) fields.push_back(FieldFrom(record, page.KeyView()));
    }
  }
  return fields;
}

std::vector<CheckedAction> ActionsFrom(const Dictionary& actions) {
  std::vector<CheckedAction> checked;
  for (const auto& entry : Entries(actions)) {
    const auto action = entry.Record();
    if ((NumberAt(action, L"FStatus"_key, 0) & kDeleted) == 0) checked.push_back(ActionFrom(action));
  }
  return checked;
}

std::vector<std::int32_t> CatalogueScenarios() {
  std::vector<std::int32_t> masks;
  const Dictionary list(Component::Create(L"TavioClassBillAction.BillEnvironments").Call(L"GetList"));
  if (!list) return masks;
  for (const auto& scenario : Entries(list)) masks.push_back(NumberAt(scenario.Record(), L"FMask"_key));
  return masks;
}

Subject SubjectOf(std::int32_t type) {
  const Templates templates;
  templates.ClassType(type);  // tells of an unknown type
  Subject subject;
  subject.fields = FieldsFrom(templates.TableInfo(type));
  subject.actions = ActionsFrom(Dictionary(LoadedActions(type).Call(L"GetBillActions")));
  subject.scenarios = CatalogueScenarios();
  return subject;
}

}  // namespace tavio::companion
