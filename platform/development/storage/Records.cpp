#include "development/storage/Records.h"

namespace tavio::development {
namespace {

Rows Select(Database& database, Fields fields, TextView clause, std::span<const Value> values) {
  Text sql = L"SELECT ";
  for (const Field& field : fields) sql += (&field == fields.data() ? L"" : L", ") + Text(field.name);
  return database.Query(sql + L" " + Text(clause), values);
}

Dictionary RecordOf(Fields fields, const std::vector<Value>& row) {
  const Dictionary record = Dictionary::New();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    record.Set(Key(TextView(fields[i].name)), fields[i].isFlag ? Value(row[i].ToInt32() != 0) : row[i].Copy());
  }
  return record;
}

}  // namespace

Vector ReadRecords(Database& database, Fields fields, TextView clause, std::span<const Value> values) {
  const Rows rows = Select(database, fields, clause, values);
  const Vector list = Vector::New();
  for (const auto& row : rows.cells) list.Add(RecordOf(fields, row));
  return list;
}

Dictionary ReadKeyedRecords(Database& database, Fields fields, const wchar_t* key, TextView clause,
                            std::span<const Value> values) {
  const Rows rows = Select(database, fields, clause, values);
  const std::size_t keyed = rows.Find(key).value();
  const Dictionary records = Dictionary::New();
  for (const auto& row : rows.cells) records.Set(Key(row[keyed].ToText()), RecordOf(fields, row));
  return records;
}

}  // namespace tavio::development
