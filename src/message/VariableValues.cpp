#include "foundation/environment/Operation.h"
#include "foundation/packages/Fields.h"
#include "message/Message.h"

namespace tavio {
namespace {

// What a field shows of the record it refers to: the member that its template names for display, else the one it
// stores. Empty where the record has neither.
StoredValue ShownOf(const Dictionary& record, const Dictionary& field) {
  for (const auto* naming : {L"FDSP", L"FFLD"}) {
    const auto member = field.GetValue(Key(TextView(naming)))->OrEmpty().ToText();
    const Key key{TextView(member)};
    if (!member.empty() && record.Lookup(key)) return record.Get(key);
  }
  return StoredValue(Value());
}

}  // namespace

// The record of a header or entry field; unset for a variable that the host added.
Dictionary Message::FieldOf(const Key& key) const {
  const auto field = tableInfo_.GetValue(key);
  return field->IsObject() ? Dictionary(*field) : Dictionary();
}

void Message::FillVariable(const Key& name, const Dictionary& variable, const Dictionary& page) const {
  const auto field = FieldOf(name);
  const bool onHeader = !field || field.GetValue(L"FEntryType"_key, Value(std::int32_t{0}))->OrEmpty().ToInt32() == 0;
  if (onHeader && page && page.Lookup(name)) {
    const auto held = page.Get(name);
    if (!held->HoldsObject()) return variable.Set(L"FValue"_key, *held);
    const auto record = Dictionary(*held);
    const auto shown = field ? ShownOf(record, field) : StoredValue(Value());
    if (!shown->IsEmpty()) return variable.Set(L"FValue"_key, *shown);
  }
  // No value is known: that is not the same as an empty one. A host's own variable keeps what the host gave it.
  if (field && variable.Lookup(L"FValue"_key)) variable.Remove(L"FValue"_key);
}

bool Message::RefreshVariableValue(const Dictionary& data) noexcept {
  return Operation<bool>({.log = L"TavioClassBillAction.Message.RefreshVariableValue 刷新消息可用变元内容",
                          .report = L"TavioClassBillAction.Message : RefreshVariableValue"},
                         [&](bool& refreshed) {
                           RequireTemplate(L"RefreshVariableValue");
                           billId_ = data.GetValue(L"FID"_key, Value(std::int32_t{0}))->ToInt32();
                           bill_ = data;
                           if (!variables_) RefreshVariableList();
                           const auto page = PackageAt(data, L"Page1"_key);
                           const auto count = variables_.Count();
                           for (std::int32_t i = 1; i <= count; ++i) {
                             const auto entry = variables_.At(i);
                             FillVariable(entry.BorrowKey(), Dictionary(entry.Stored()), page);
                           }
                           refreshed = true;
                         });
}

}  // namespace tavio
