#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio::development {

// The tables as the schema describes them, which is a resource of this server.

// What the schema makes. Raise it with each section that is added to the schema.
inline constexpr std::int32_t kTablesVersion = 2;

struct TableColumn {
  enum class Kind { kInteger, kText, kPackage };

  std::string name;
  Kind kind = Kind::kText;
  std::size_t length = 0;  // the longest text
  bool isRequired = false;
};

struct Table {
  std::string name;
  std::vector<TableColumn> columns;
};

// The tables that hold what a platform is: all but those of what was sent and logged, and of versions and numbers given
// out. In the schema's order.
const std::vector<Table>& DataTables();

// The statements that make the tables of version `from` those of kTablesVersion; from 0 they make all of them.
std::vector<Text> StatementsSince(std::int32_t from);

// The data that new tables are filled with, as JSON.
std::string_view Seed();

}  // namespace tavio::development
