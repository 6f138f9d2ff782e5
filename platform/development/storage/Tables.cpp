#include "development/storage/Tables.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>

#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio::development {
namespace {

constexpr std::string_view kNoData[] = {"t_PlatformVersion",   "t_Identity",   "t_Log",      "t_Inbox",
                                        "t_BillActionVersion", "t_MailOutbox", "t_SmsOutbox"};
constexpr std::string_view kSection = "-- Version ", kCreate = "CREATE TABLE ", kBlanks = " \r\n";

std::string_view Embedded(const wchar_t* name) {
  const HMODULE module = OwnModule();
  const HRSRC found = FindResourceW(module, name, reinterpret_cast<LPCWSTR>(RT_RCDATA));
  if (!found) throw Error(E_FAIL, L"DevPlatform", Text(L"缺少资源 ") + name);
  const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module, found)));
  return {bytes, SizeofResource(module, found)};
}

// What stands before the next `mark`, which is taken off `rest` with it.
std::string_view Next(std::string_view& rest, std::string_view mark) {
  const std::size_t end = std::min(rest.find(mark), rest.size());
  const std::string_view piece = rest.substr(0, end);
  rest.remove_prefix(std::min(end + mark.size(), rest.size()));
  return piece;
}

std::string_view Word(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  const std::string_view word = rest.substr(0, rest.find_first_of(" (\r\n"));
  rest.remove_prefix(word.size());
  return word;
}

TableColumn ColumnOf(std::string_view name, std::string_view definition) {
  TableColumn column{std::string(name)};
  column.isRequired = definition.find("NOT NULL") != std::string_view::npos;
  const std::string_view type = Word(definition);
  if (type == "INTEGER") column.kind = TableColumn::Kind::kInteger;
  if (type == "TEXT") column.kind = TableColumn::Kind::kPackage;
  if (type == "VARCHAR") column.length = std::strtoul(definition.data() + 1, nullptr, 10);
  return column;
}

// A table from its CREATE TABLE, of which the verb has been read.
Table TableOf(std::string_view statement) {
  Table table{std::string(Word(statement)), {}};
  Next(statement, "(");
  while (!statement.empty()) {
    std::string_view definition = Next(statement, ",");
    const std::string_view name = Word(definition);
    if (name == "PRIMARY") break;  // it comes last
    table.columns.push_back(ColumnOf(name, definition));
  }
  return table;
}

std::vector<Table> ReadDataTables() {
  std::vector<Table> tables;
  std::string_view rest = Embedded(L"SCHEMA");
  for (Next(rest, kCreate); !rest.empty(); Next(rest, kCreate)) {
    Table table = TableOf(rest.substr(0, rest.find(';')));
    if (std::ranges::find(kNoData, table.name) == std::end(kNoData)) tables.push_back(std::move(table));
  }
  return tables;
}

}  // namespace

const std::vector<Table>& DataTables() {
  static const std::vector<Table> tables = ReadDataTables();
  return tables;
}

std::vector<Text> StatementsSince(std::int32_t from) {
  std::vector<Text> statements;
  std::string_view rest = Embedded(L"SCHEMA");
  for (Next(rest, kSection); !rest.empty();) {
    std::string_view section = Next(rest, kSection);
    const bool isNew = std::atoi(section.data()) > from;
    for (Next(section, "\n"); isNew && section.find(';') != std::string_view::npos;) {
      statements.push_back(FromUtf8(Next(section, ";")));
    }
  }
  return statements;
}

std::string_view Seed() { return Embedded(L"SEED"); }

}  // namespace tavio::development
