#include "development/storage/Database.h"

#include <windows.h>
#include <sql.h>
#include <sqlext.h>

#include <cwchar>
#include <deque>
#include <memory>

#include "foundation/values/Error.h"
#include "foundation/values/Text.h"

namespace tavio::development {
namespace {

[[noreturn]] void Fail(SQLSMALLINT kind, SQLHANDLE handle, const wchar_t* what) {
  SQLWCHAR state[6] = {};
  SQLWCHAR text[1024] = {};
  SQLINTEGER number = 0;
  SQLSMALLINT length = 0;
  const SQLRETURN got = SQLGetDiagRecW(kind, handle, 1, state, &number, text, 1024, &length);
  Text description = L"数据库错误: ";
  description += SQL_SUCCEEDED(got) ? Text(text) + L" (" + state + L")" : Text(what);
  throw Error(E_FAIL, L"DevPlatform.Database", std::move(description));
}

struct StatementKind {
  using Handle = SQLHSTMT;
  static Handle None() noexcept { return nullptr; }
  static void Close(Handle statement) noexcept { SQLFreeHandle(SQL_HANDLE_STMT, statement); }
};

// An ODBC statement with everything bound to it.
class Statement {
 public:
  explicit Statement(SQLHDBC connection) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, connection, handle_.Receive()))) {
      Fail(SQL_HANDLE_DBC, connection, L"SQLAllocHandle");
    }
  }

  void Run(TextView sql, std::span<const Value> values) {
    for (const Value& value : values) Bind(value);
    Text text(sql);
    const SQLRETURN result = SQLExecDirectW(handle_.Get(), text.data(), SQL_NTS);
    if (result != SQL_NO_DATA) Checked(result, L"SQLExecDirect");
  }

  std::int32_t ChangedRows() {
    SQLLEN count = 0;
    Checked(SQLRowCount(handle_.Get(), &count), L"SQLRowCount");
    return static_cast<std::int32_t>(count);
  }

  Rows Fetch() {
    Rows rows;
    SQLSMALLINT count = 0;
    Checked(SQLNumResultCols(handle_.Get(), &count), L"SQLNumResultCols");
    for (SQLSMALLINT i = 1; i <= count; ++i) rows.columns.push_back(Describe(i));
    while (count > 0 && Step()) {
      auto& row = rows.cells.emplace_back();
      for (SQLSMALLINT i = 1; i <= count; ++i)
        row.push_back(Cell(i, rows.columns[static_cast<std::size_t>(i) - 1].kind));
    }
    return rows;
  }

 private:
  struct Bound {
    SQLINTEGER integer = 0;
    double number = 0;
    Text text;
    SQLLEN length = 0;
  };

  void Checked(SQLRETURN result, const wchar_t* what) {
    if (!SQL_SUCCEEDED(result)) Fail(SQL_HANDLE_STMT, handle_.Get(), what);
  }

  void Bind(const Value& value) {
    auto& bound = bound_.emplace_back();  // a deque: what is bound must stay where it is
    switch (value.Type()) {
      case VT_BOOL:
        bound.integer = value.ToBool() ? 1 : 0;
        return Bind(SQL_C_SLONG, SQL_INTEGER, 0, &bound.integer, bound);
      case VT_I2:
      case VT_I4:
        bound.integer = value.ToInt32();
        return Bind(SQL_C_SLONG, SQL_INTEGER, 0, &bound.integer, bound);
      case VT_R4:
      case VT_R8:
        bound.number = value.ToDouble();
        return Bind(SQL_C_DOUBLE, SQL_DOUBLE, 0, &bound.number, bound);
      case VT_EMPTY:
      case VT_NULL:
        bound.length = SQL_NULL_DATA;
        return Bind(SQL_C_WCHAR, SQL_WVARCHAR, 1, bound.text.data(), bound);
      default:
        bound.text = value.ToText();
        bound.length = static_cast<SQLLEN>(bound.text.size() * sizeof(SQLWCHAR));
        return Bind(SQL_C_WCHAR, SQL_WVARCHAR, std::max<std::size_t>(bound.text.size(), 1), bound.text.data(), bound);
    }
  }

  void Bind(SQLSMALLINT held, SQLSMALLINT stored, std::size_t size, void* place, Bound& bound) {
    Checked(SQLBindParameter(handle_.Get(), static_cast<SQLUSMALLINT>(bound_.size()), SQL_PARAM_INPUT, held, stored,
                             static_cast<SQLULEN>(size), 0, place, std::max<SQLLEN>(bound.length, 0), &bound.length),
            L"SQLBindParameter");
  }

  Column Describe(SQLSMALLINT position) {
    SQLWCHAR name[256] = {};
    SQLSMALLINT length = 0, type = 0, digits = 0, nullable = 0;
    SQLULEN size = 0;
    Checked(SQLDescribeColW(handle_.Get(), static_cast<SQLUSMALLINT>(position), name, 256, &length, &type, &size,
                            &digits, &nullable),
            L"SQLDescribeCol");
    return Column{name, KindOf(type)};
  }

  static Column::Kind KindOf(SQLSMALLINT type) noexcept {
    switch (type) {
      case SQL_BIT:
      case SQL_TINYINT:
      case SQL_SMALLINT:
      case SQL_INTEGER:
      case SQL_BIGINT:
        return Column::Kind::kInteger;
      case SQL_REAL:
      case SQL_FLOAT:
      case SQL_DOUBLE:
      case SQL_NUMERIC:
      case SQL_DECIMAL:
        return Column::Kind::kNumber;
      default:
        return Column::Kind::kText;
    }
  }

  bool Step() {
    const SQLRETURN result = SQLFetch(handle_.Get());
    if (result == SQL_NO_DATA) return false;
    Checked(result, L"SQLFetch");
    return true;
  }

  // Read as text whatever the column is: drivers agree on texts, not on sizes of numbers.
  Value Cell(SQLSMALLINT position, Column::Kind kind) {
    Text text;
    for (SQLRETURN result = SQL_SUCCESS_WITH_INFO; result == SQL_SUCCESS_WITH_INFO;) {
      SQLWCHAR piece[1024];
      SQLLEN length = 0;
      result =
          SQLGetData(handle_.Get(), static_cast<SQLUSMALLINT>(position), SQL_C_WCHAR, piece, sizeof piece, &length);
      if (result == SQL_NO_DATA) break;
      Checked(result, L"SQLGetData");
      if (length == SQL_NULL_DATA) return Value::Null();
      text += piece;
    }
    return kind == Column::Kind::kText ? Value(TextView(text)) : Number(text, kind);
  }

  // SQLite keeps whatever was stored, so a number's column may still hold a text.
  static Value Number(const Text& text, Column::Kind kind) {
    wchar_t* end = nullptr;
    const double number = std::wcstod(text.c_str(), &end);
    if (text.empty() || *end) return Value(TextView(text));
    const bool fits = number >= INT32_MIN && number <= INT32_MAX && number == static_cast<std::int32_t>(number);
    return kind == Column::Kind::kInteger && fits ? Value(static_cast<std::int32_t>(number)) : Value(number);
  }

  std::deque<Bound> bound_;
  SystemHandle<StatementKind> handle_;
};

}  // namespace

std::optional<std::size_t> Rows::Find(TextView column) const {
  const Text wanted = ToUpper(column);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (ToUpper(columns[i].name) == wanted) return i;
  }
  return std::nullopt;
}

void OdbcEnvironmentKind::Close(Handle environment) noexcept { SQLFreeHandle(SQL_HANDLE_ENV, environment); }

void OdbcConnectionKind::Close(Handle connection) noexcept {
  SQLDisconnect(connection);
  SQLFreeHandle(SQL_HANDLE_DBC, connection);
}

Database::Database(const Text& connection) {
  SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, environment_.Receive());
  SQLSetEnvAttr(environment_.Get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  SQLAllocHandle(SQL_HANDLE_DBC, environment_.Get(), connection_.Receive());
  Text text = connection;
  const SQLRETURN result =
      SQLDriverConnectW(connection_.Get(), nullptr, text.data(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  if (!SQL_SUCCEEDED(result)) Fail(SQL_HANDLE_DBC, connection_.Get(), L"SQLDriverConnect");
}

std::int32_t Database::Execute(TextView sql, std::span<const Value> values) {
  Statement statement(connection_.Get());
  statement.Run(sql, values);
  return statement.ChangedRows();
}

Rows Database::Query(TextView sql, std::span<const Value> values) {
  Statement statement(connection_.Get());
  statement.Run(sql, values);
  return statement.Fetch();
}

Text Database::Name() {
  const Text database = Tell(SQL_DATABASE_NAME), server = Tell(SQL_SERVER_NAME);
  return Tell(SQL_DBMS_NAME) + L" " + database + (server == database ? Text() : L" (" + server + L")");
}

Text Database::Tell(unsigned short what) {
  SQLWCHAR text[1024] = {};
  SQLSMALLINT length = 0;
  if (!SQL_SUCCEEDED(SQLGetInfoW(connection_.Get(), what, text, sizeof text, &length))) {
    Fail(SQL_HANDLE_DBC, connection_.Get(), L"SQLGetInfo");
  }
  return text;
}

void Database::Set(int attribute, std::size_t value) {
  auto* number = reinterpret_cast<SQLPOINTER>(value);
  if (!SQL_SUCCEEDED(SQLSetConnectAttrW(connection_.Get(), attribute, number, SQL_IS_UINTEGER))) {
    Fail(SQL_HANDLE_DBC, connection_.Get(), L"SQLSetConnectAttr");
  }
}

std::size_t Database::Get(int attribute) {
  SQLULEN value = 0;
  if (!SQL_SUCCEEDED(SQLGetConnectAttrW(connection_.Get(), attribute, &value, sizeof value, nullptr))) {
    Fail(SQL_HANDLE_DBC, connection_.Get(), L"SQLGetConnectAttr");
  }
  return static_cast<std::uint32_t>(value);
}

void Database::End(bool commit) {
  const SQLRETURN result = SQLEndTran(SQL_HANDLE_DBC, connection_.Get(), commit ? SQL_COMMIT : SQL_ROLLBACK);
  if (!SQL_SUCCEEDED(result)) Fail(SQL_HANDLE_DBC, connection_.Get(), L"SQLEndTran");
}

Transaction::Transaction(Database& database, Kind kind)
    : database_(database), isolation_(database.Get(SQL_ATTR_TXN_ISOLATION)) {
  if (kind == Kind::kOneMoment) database_.Set(SQL_ATTR_TXN_ISOLATION, SQL_TXN_REPEATABLE_READ);
  database_.Set(SQL_ATTR_AUTOCOMMIT, SQL_AUTOCOMMIT_OFF);
}

Transaction::~Transaction() {
  try {
    if (open_) database_.End(false);
    database_.Set(SQL_ATTR_AUTOCOMMIT, SQL_AUTOCOMMIT_ON);
    if (database_.Get(SQL_ATTR_TXN_ISOLATION) != isolation_) database_.Set(SQL_ATTR_TXN_ISOLATION, isolation_);
  } catch (...) {  // a lost connection has rolled back already
  }
}

void Transaction::Commit() {
  database_.End(true);
  open_ = false;
}

}  // namespace tavio::development
