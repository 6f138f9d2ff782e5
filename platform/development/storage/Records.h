#pragma once

#include <initializer_list>
#include <span>

#include "development/storage/Database.h"
#include "foundation/packages/Vector.h"

namespace tavio::development {

// One field of a record read from a table: the key in the record is the name of the column.
struct Field {
  const wchar_t* name;
  bool isFlag = false;  // stored as 0 or 1, a Boolean in the record
};

using Fields = std::span<const Field>;

// Reads the fields of all rows that `clause` ("FROM ... WHERE ... ORDER BY ...") selects, as records in that order.
Vector ReadRecords(Database& database, Fields fields, TextView clause, std::span<const Value> values = {});

// The same, as a package of records keyed by the text of one of the fields.
Dictionary ReadKeyedRecords(Database& database, Fields fields, const wchar_t* key, TextView clause,
                            std::span<const Value> values = {});

}  // namespace tavio::development
