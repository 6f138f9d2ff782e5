#pragma once

#include "companion/Packages.h"
#include "companion/tavio/Verbs.h"

namespace tavio {

using companion::Json;

// Prints records with the same fields: as a table with a head, or as JSON.
void PrintRecords(const Json& records, const Run& run);

// The rows that the platform's database answers to "SELECT <columns> <rest>", as records with those names, since
// databases fold the names of columns in ways of their own. Raises Error in the platform's words.
struct Column {
  const char* name;
  const wchar_t* expression;
};
Json Query(std::initializer_list<Column> columns, const Text& rest);

// A field of a record for JSON; packages are left out.
Json FieldOf(const Value& value);

}  // namespace tavio
