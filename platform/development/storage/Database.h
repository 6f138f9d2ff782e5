#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "foundation/values/SystemHandle.h"
#include "foundation/values/Value.h"

namespace tavio::development {

// One column of a result, as the database names it.
struct Column {
  enum class Kind { kText, kInteger, kNumber };

  Text name;
  Kind kind = Kind::kText;
};

// A result read to its end. Cells are text, 32-bit integers, doubles or database nulls; an integer that needs more than
// 32 bits is a double.
struct Rows {
  std::vector<Column> columns;
  std::vector<std::vector<Value>> cells;

  std::size_t Count() const noexcept { return cells.size(); }
  bool IsEmpty() const noexcept { return cells.empty(); }
  // A column by its name, matched without regard to letter case, since databases differ in how they fold names.
  std::optional<std::size_t> Find(TextView column) const;
};

// Handles of ODBC; what they are for the driver manager's header is known where they are used.
struct OdbcEnvironmentKind {
  using Handle = void*;
  static Handle None() noexcept { return nullptr; }
  static void Close(Handle environment) noexcept;
};
struct OdbcConnectionKind {
  using Handle = void*;
  static Handle None() noexcept { return nullptr; }
  static void Close(Handle connection) noexcept;
};

// A connection to an ODBC database. Every failure raises Error with the driver's own text.
class Database {
 public:
  // `connection` is an ODBC connection string, driver included.
  explicit Database(const Text& connection);

  // What the connection leads to, for people: "SQLite C:\...\platform.db".
  Text Name();

  // Runs one statement whose "?" marks stand for `values`, and answers how many rows it changed. A value is bound as
  // integer, number or text; an empty one as null.
  template <class... Values>
  std::int32_t Execute(TextView sql, const Values&... values) {
    const std::array<Value, sizeof...(Values)> bound = {AsParameter(values)...};
    return Execute(sql, std::span<const Value>(bound));
  }
  std::int32_t Execute(TextView sql, std::span<const Value> values);

  // As Execute, for a statement that answers rows.
  template <class... Values>
  Rows Query(TextView sql, const Values&... values) {
    const std::array<Value, sizeof...(Values)> bound = {AsParameter(values)...};
    return Query(sql, std::span<const Value>(bound));
  }
  Rows Query(TextView sql, std::span<const Value> values);

  // The first cell of what Query answers; empty if there is no row.
  template <class... Values>
  Value FirstCell(TextView sql, const Values&... values) {
    Rows rows = Query(sql, values...);
    return rows.IsEmpty() ? Value() : std::move(rows.cells[0][0]);
  }

 private:
  friend class Transaction;

  static Value AsParameter(const Value& value) { return value.Copy(); }
  static Value AsParameter(TextView text) { return Value(text); }
  static Value AsParameter(const Text& text) { return Value(TextView(text)); }
  template <class T>
  requires std::constructible_from<Value, const T&> &&(!std::same_as<T, Value>)static Value
      AsParameter(const T& scalar) {
    return Value(scalar);
  }

  void Set(int attribute, std::size_t value);
  std::size_t Get(int attribute);
  Text Tell(unsigned short what);
  void End(bool commit);

  SystemHandle<OdbcEnvironmentKind> environment_;
  SystemHandle<OdbcConnectionKind> connection_;
};

// What happens between its making and Commit is stored whole or not at all. Make a changing statement the first of it:
// a reader that turns into a writer half-way can be refused by SQLite.
class Transaction {
 public:
  // One that only reads reads everything as it was at one moment.
  enum class Kind { kChange, kOneMoment };

  explicit Transaction(Database& database, Kind kind = Kind::kChange);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit();

 private:
  Database& database_;
  std::size_t isolation_;
  bool open_ = true;
};

}  // namespace tavio::development
