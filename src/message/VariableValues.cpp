#include "message/VariableValues.h"

#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio {
namespace {

// What a field shows of the record it refers to: the member that its template names for display, else the one it
// stores. Empty if the record has neither.
StoredValue ShownOf(const Dictionary& record, const Dictionary& field) {
  for (const auto* naming : {L"FDSP", L"FFLD"}) {
    const auto member = TextAt(field, Key(TextView(naming)));
    const Key key{TextView(member)};
    if (!member.empty() && record.Lookup(key)) return record.Get(key);
  }
  return StoredValue(Value());
}

// The record of a header or entry field; unset for a variable that the host added.
Dictionary FieldOf(const Dictionary& tableInfo, const Key& key) {
  const auto field = tableInfo.GetValue(key);
  return field->IsObject() ? Dictionary(*field) : Dictionary();
}

void FillVariable(const Key& name, const Dictionary& variable, const Dictionary& field, const Dictionary& page) {
  const bool onHeader = !field || NumberAt(field, L"FEntryType"_key, 0) == 0;
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

}  // namespace

void FillVariables(const Dictionary& variables, const Dictionary& tableInfo, const Dictionary& page) {
  for (const auto& variable : Entries(variables)) {
    const auto name = variable.BorrowKey();
    FillVariable(name, variable.Record(), FieldOf(tableInfo, name), page);
  }
}

}  // namespace tavio
