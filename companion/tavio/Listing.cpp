#include "companion/tavio/Listing.h"

#include "companion/TextTable.h"
#include "companion/tavio/Console.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/values/CodePage.h"

namespace tavio {
namespace {

Text CellOf(const Json& field) { return field.is_null() ? Text() : companion::ToText(field); }

}  // namespace

Json FieldOf(const Value& value) {
  if (value.Type() == VT_BOOL) return value.ToBool();
  if (value.Type() == VT_I2 || value.Type() == VT_I4) return value.ToInt32();
  Text text;
  if (!value.IsObject()) value.AppendTo(text);
  return ToUtf8(text);
}

void PrintRecords(const Json& records, const Run& run) {
  if (run.json) return console::Print(FromUtf8(records.dump(2)) + L"\n");
  if (records.empty()) return;
  std::vector<companion::Cells> rows(1);
  for (const auto& [key, value] : records.front().items()) rows.front().push_back(FromUtf8(key));
  for (const auto& record : records) {
    rows.emplace_back();
    for (const auto& field : record) rows.back().push_back(CellOf(field));
  }
  console::Print(companion::TextTable(rows));
}

Json Query(std::initializer_list<Column> columns, const Text& rest) {
  Text sql;
  for (const auto& column : columns) {
    sql += sql.empty() ? L"SELECT " : L", ";
    sql += column.expression;
  }
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  const Component records(classInfo.Call(L"GetData", GetPropsString(), sql + L" " + rest).ToObject());
  Json rows = Json::array();
  for (; !records.Read(L"EOF").ToBool(); records.Call(L"MoveNext")) {
    const Component fields(records.Read(L"Fields").ToObject());
    Json row = Json::object();
    std::int32_t index = 0;
    for (const auto& column : columns) {
      row[column.name] = FieldOf(Component(fields.Call(L"Item", index++).ToObject()).Read(L"Value"));
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace tavio
