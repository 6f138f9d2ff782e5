#include "message/VariableValues.h"

#include <optional>

#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio {
namespace {

// What a field shows of the record it refers to: the member that its template names for display, else the one it
// stores. A member that is there and empty is a value.
std::optional<Value> ShownOf(const Dictionary& record, const Dictionary& field) {
  for (const auto* naming : {L"FDSP", L"FFLD"}) {
    const auto member = TextAt(field, Key(TextView(naming)));
    if (member.empty()) continue;
    if (const auto shown = record.Find(Key(TextView(member)))) return (*shown)->Copy();
  }
  return std::nullopt;
}

// The record of a header or entry field; unset for a variable that the host added.
Dictionary FieldOf(const Dictionary& tableInfo, const Key& key) {
  const auto field = tableInfo.GetValue(key);
  return field->IsObject() ? Dictionary(*field) : Dictionary();
}

// What a header page says of a variable.
std::optional<Value> ValueOn(const Dictionary& page, const Key& name, const Dictionary& field) {
  const bool onHeader = !field || NumberAt(field, L"FEntryType"_key, 0) == 0;
  const auto held = onHeader && page ? page.Find(name) : std::nullopt;
  if (!held) return std::nullopt;
  if (!(*held)->HoldsObject()) return (*held)->Copy();
  return field ? ShownOf(Dictionary(**held), field) : std::nullopt;
}

void FillVariable(const Key& name, const Dictionary& variable, const Dictionary& field, const Dictionary& page) {
  if (const auto value = ValueOn(page, name, field)) return variable.Set(L"FValue"_key, *value);
  // No value is known: that is not the same as an empty one. A host's own variable keeps what the host gave it.
  if (field && variable.Lookup(L"FValue"_key)) variable.Remove(L"FValue"_key);
}

}  // namespace

void FillVariables(const Dictionary& variables, const Dictionary& tableInfo, const Dictionary& page) {
  KeyBuffer buffer;  // the host's packages may change the list while they are read
  for (const auto& variable : Entries(variables)) {
    const auto name = buffer.Borrow(variable.KeyView());
    const auto entry = variable.Record();
    FillVariable(name, entry, FieldOf(tableInfo, name), page);
  }
}

}  // namespace tavio
