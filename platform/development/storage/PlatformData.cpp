#include "development/storage/PlatformData.h"

#include <algorithm>

#include "development/storage/Settings.h"
#include "development/storage/Storage.h"
#include "development/storage/Tables.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

constexpr char kVersion[] = "t_PlatformVersion";
constexpr const char* kIdentity[] = {"FID", "FCode", "FClassTypeID", "FBillTypeID"};

// What must answer no row once the data is stored: the place that is then told, and the query.
struct Rule {
  const wchar_t* place;
  const wchar_t* broken;
};

constexpr Rule kRules[] = {
    {L"t_User.FEmpID", L"SELECT FEmpID FROM t_User WHERE FEmpID NOT IN (SELECT FItemID FROM t_Emp)"},
    {L"t_SharedProperty.UserID",
     L"SELECT FValue FROM t_SharedProperty WHERE FName = 'UserID' "
     L"AND FValue NOT IN (SELECT CAST(FUserID AS VARCHAR(20)) FROM t_User)"},
    {L"t_BillAction.FCode", L"SELECT FCode FROM t_BillAction GROUP BY FClassTypeID, FCode HAVING COUNT(*) > 1"},
    {L"t_ObjectAccessType.FActionID",
     L"SELECT FActionID FROM t_ObjectAccessType WHERE FActionID <> 0 "
     L"AND FActionID NOT IN (SELECT FID FROM t_BillAction)"},
};

[[noreturn]] void Refuse(const Text& why) { throw Error(E_INVALIDARG, L"TavioDevPlatform.Data", why); }

// The rows of one table, ready to be stored.
struct TableRows {
  const Table& table;
  std::vector<std::vector<Value>> rows;
};

Text Sql(const Table& table, const std::string& before, const std::string& after) {
  std::string names;
  for (const auto& column : table.columns) names += (names.empty() ? "" : ", ") + column.name;
  return FromUtf8(before + names + after);
}

bool Fits(const TableColumn& column, const Json& value) {
  switch (column.kind) {
    case TableColumn::Kind::kInteger:
      return value.is_number_integer() && FromJson(value).Type() == VT_I4;
    case TableColumn::Kind::kPackage:
      return value.is_structured() && FromJson(value).HoldsObject();
    default:
      return value.is_string() && FromUtf8(value.get_ref<const std::string&>()).size() <= column.length;
  }
}

// What a package and its row both say of themselves is the same.
bool Agree(const Json& package, const Json& row) {
  return std::ranges::all_of(kIdentity, [&](const char* key) {
    const bool both = package.contains(key) && row.contains(key);
    return !both || FromJson(package[key]).ToText() == FromJson(row[key]).ToText();
  });
}

Value Cell(const TableColumn& column, const Json& row) try {
  const auto found = row.find(column.name);
  if (found == row.end() || found->is_null()) {
    if (column.isRequired) Refuse(L"缺少值");
    return Value::Null();
  }
  if (!Fits(column, *found)) Refuse(L"值不合适");
  if (column.kind != TableColumn::Kind::kPackage) return FromJson(*found);
  if (!Agree(*found, row)) Refuse(L"与其他列不符");
  return Value(TextView(ToColumn(*found)));
} catch (const Error& error) {
  Refuse(FromUtf8(column.name) + L" " + error.Description());
} catch (const Json::exception& error) {
  Refuse(FromUtf8(column.name) + L" " + FromUtf8(error.what()));
}

std::vector<Value> RowOf(const Table& table, const Json& row) {
  if (!row.is_object()) Refuse(L"不是记录");
  std::vector<Value> cells;
  for (const auto& column : table.columns) cells.push_back(Cell(column, row));
  for (const auto& [name, value] : row.items()) {
    const auto known = [&](const TableColumn& column) { return column.name == name; };
    if (std::none_of(table.columns.begin(), table.columns.end(), known)) Refuse(L"未知的列 " + FromUtf8(name));
  }
  if (table.name == "t_Setting") CheckSetting(cells[0].ToText(), cells[1].ToText());
  return cells;
}

TableRows RowsOf(const std::string& name, const Json& rows) {
  const auto& tables = DataTables();
  const auto found = std::find_if(tables.begin(), tables.end(), [&](const Table& table) { return table.name == name; });
  if (found == tables.end()) Refuse(L"未知的表 " + FromUtf8(name));
  if (!rows.is_array()) Refuse(FromUtf8(name) + L" 不是列表");
  TableRows read{*found, {}};
  for (const auto& row : rows) {
    try {
      read.rows.push_back(RowOf(*found, row));
    } catch (const Error& error) {
      Refuse(FromUtf8(name) + L" 第" + std::to_wstring(read.rows.size() + 1) + L"行: " + error.Description());
    }
  }
  return read;
}

void CheckVersion(const Json& data) {
  const auto found = data.find(kVersion);
  const bool told = found != data.end() && found->is_array() && found->size() == 1 && (*found)[0].is_object() &&
                    (*found)[0].contains("FVersion") && (*found)[0]["FVersion"].is_number_integer();
  if (!told) Refuse(L"数据没有版本 (t_PlatformVersion)");
  const auto version = (*found)[0]["FVersion"].get<std::int64_t>();
  if (version < 1 || version > kTablesVersion) {
    Refuse(L"数据的版本是 " + std::to_wstring(version) + L",本程序只能处理到版本 " + std::to_wstring(kTablesVersion));
  }
}

std::vector<TableRows> Read(const Json& data) {
  if (!data.is_object()) Refuse(L"数据不是以表名为键的对象");
  CheckVersion(data);
  std::vector<TableRows> tables;
  for (const auto& [name, rows] : data.items()) {
    if (name != kVersion) tables.push_back(RowsOf(name, rows));
  }
  return tables;
}

void Replace(Database& database, const TableRows& data) {
  std::string places = ") VALUES (?";
  for (std::size_t i = 1; i < data.table.columns.size(); ++i) places += ", ?";
  const Text insert = Sql(data.table, "INSERT INTO " + data.table.name + " (", places + ")");
  database.Execute(FromUtf8("DELETE FROM " + data.table.name));
  for (const auto& row : data.rows) database.Execute(insert, std::span<const Value>(row));
}

// Numbers that are given out lie above those that are stored; a collection that was loaded before is not saved over what
// was imported.
void GoOnFrom(Database& database) {
  database.Execute(
      L"UPDATE t_Identity SET FNext = (SELECT MAX(FID) + 1 FROM t_BillAction) "
      L"WHERE FName = 'BillAction' AND FNext <= (SELECT MAX(FID) FROM t_BillAction)");
  database.Execute(L"UPDATE t_BillActionVersion SET FVersion = FVersion + 1");
  database.Execute(
      L"INSERT INTO t_BillActionVersion (FClassTypeID, FVersion) SELECT DISTINCT FClassTypeID, 1 FROM t_BillAction "
      L"WHERE FClassTypeID NOT IN (SELECT FClassTypeID FROM t_BillActionVersion)");
}

void CheckRules(Database& database) {
  for (const auto& rule : kRules) {
    const Value broken = database.FirstCell(rule.broken);
    if (!broken.IsEmpty()) Refuse(Text(L"数据不一致: ") + rule.place + L" " + broken.ToText());
  }
}

void Store(Database& database, const std::vector<TableRows>& tables) {
  for (const auto& table : tables) Replace(database, table);
  GoOnFrom(database);
  CheckRules(database);
}

// Of all columns that can be compared, so that the same data is always the same text.
std::string Order(const Table& table) {
  std::string order;
  for (const auto& column : table.columns) {
    if (column.kind != TableColumn::Kind::kPackage) order += (order.empty() ? " ORDER BY " : ", ") + column.name;
  }
  return order;
}

Json RowFrom(const Table& table, const std::vector<Value>& cells) {
  Json row = Json::object();
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const bool isPackage = table.columns[i].kind == TableColumn::Kind::kPackage;
    row[table.columns[i].name] = isPackage ? FromColumn(cells[i]) : ToJson(cells[i]);
  }
  return row;
}

}  // namespace

Json ExportData(Database& database) {
  const Transaction moment(database, Transaction::Kind::kOneMoment);
  Json data;
  data[kVersion] = Json::array({{{"FVersion", kTablesVersion}}});
  for (const auto& table : DataTables()) {
    Json& stored = data[table.name] = Json::array();
    const Rows rows = database.Query(Sql(table, "SELECT ", " FROM " + table.name + Order(table)));
    for (const auto& row : rows.cells) stored.push_back(RowFrom(table, row));
  }
  return data;
}

void ImportData(Database& database, const Json& data) {
  const auto tables = Read(data);
  Transaction transaction(database);
  ReserveIds(database, L"BillAction", 0);  // saves and other imports wait here
  Store(database, tables);
  transaction.Commit();
}

void FillData(Database& database) { Store(database, Read(ParseData(Seed()))); }

void ResetData(Database& database) {
  Transaction transaction(database);
  ReserveIds(database, L"BillAction", 0);
  for (const auto& table : DataTables()) database.Execute(FromUtf8("DELETE FROM " + table.name));
  for (const auto* sent : {L"t_Log", L"t_Inbox", L"t_MailOutbox", L"t_SmsOutbox"}) {
    database.Execute(Text(L"DELETE FROM ") + sent);
  }
  FillData(database);
  transaction.Commit();
}

Json ParseData(std::string_view text) try { return ParseJson(text); } catch (const Json::exception& error) {
  Refuse(L"不是有效的 JSON: " + FromUtf8(error.what()));
}

std::string DataText(const Json& data) {
  std::string text = "{";
  for (const auto& [name, rows] : data.items()) {
    text += (text.size() > 1 ? ",\n " : "\n ") + Json(name).dump() + ": [";
    for (const auto& row : rows) text += (&row == &rows.front() ? "\n  " : ",\n  ") + row.dump();
    text += "\n ]";
  }
  return text + "\n}\n";
}

}  // namespace tavio::development
