#include "development/storage/RecordSet.h"

#include <memory>

#include "development/storage/PlatformObject.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

constexpr HRESULT kNoRecord = static_cast<HRESULT>(0x800A0BCD);
constexpr HRESULT kNoField = static_cast<HRESULT>(0x800A0CC1);

// The rows and the position of the record set in them, from -1 (before the first) to Count (after the last).
struct Cursor {
  Rows rows;
  std::ptrdiff_t position = 0;

  std::ptrdiff_t Count() const noexcept { return static_cast<std::ptrdiff_t>(rows.Count()); }
  bool IsBefore() const noexcept { return position < 0 || Count() == 0; }
  bool IsAfter() const noexcept { return position >= Count(); }
  Value Cell(std::size_t column) const {
    if (IsBefore() || IsAfter()) throw Error(kNoRecord, L"DevPlatform.RecordSet", L"记录集没有当前记录");
    return rows.cells[static_cast<std::size_t>(position)][column].Copy();
  }
  std::size_t Find(const Value& nameOrIndex) const;
};

std::size_t Cursor::Find(const Value& nameOrIndex) const {
  if (!nameOrIndex.IsText()) {
    const auto index = static_cast<std::size_t>(nameOrIndex.ToInt32());
    if (index < rows.columns.size()) return index;
  } else if (const auto found = rows.Find(nameOrIndex.ToText())) {
    return *found;
  }
  throw Error(kNoField, L"DevPlatform.RecordSet", L"记录集没有字段 " + nameOrIndex.ToText());
}

class FieldObject final : public LateBound {
 public:
  FieldObject(const std::shared_ptr<Cursor>& cursor, std::size_t column) {
    Add(L"Name", [cursor, column](Arguments&) { return Value(TextView(cursor->rows.columns[column].name)); });
    Add(L"Value", [cursor, column](Arguments&) { return cursor->Cell(column); });
    Default(L"Value");
  }
};

class FieldList final : public LateBound {
 public:
  explicit FieldList(const std::shared_ptr<Cursor>& cursor) {
    Add(L"Count", [cursor](Arguments&) { return Value(static_cast<std::int32_t>(cursor->rows.columns.size())); });
    Add(L"Item", [cursor](Arguments& a) { return Value(MakeObject<FieldObject>(cursor, cursor->Find(a.At(0)))); });
    Default(L"Item");
  }
};

class RecordSet final : public LateBound {
 public:
  explicit RecordSet(Rows rows) {
    auto cursor = std::make_shared<Cursor>(Cursor{std::move(rows)});
    Add(L"BOF", [cursor](Arguments&) { return Value(cursor->IsBefore()); });
    Add(L"EOF", [cursor](Arguments&) { return Value(cursor->IsAfter()); });
    Add(L"RecordCount", [cursor](Arguments&) { return Value(static_cast<std::int32_t>(cursor->Count())); });
    Add(L"Fields", [cursor](Arguments& a) { return FieldsOf(cursor, a); });
    Default(L"Fields");
    AddMoves(cursor);
  }

 private:
  static Value FieldsOf(const std::shared_ptr<Cursor>& cursor, const Arguments& arguments) {
    if (arguments.Count() == 0) return Value(MakeObject<FieldList>(cursor));
    return Value(MakeObject<FieldObject>(cursor, cursor->Find(arguments.At(0))));
  }

  static Value MoveTo(Cursor& cursor, std::ptrdiff_t position) {
    cursor.position = position;
    return Value();
  }

  // At an end there is no record to move on from.
  static Value Step(Cursor& cursor, std::ptrdiff_t by) {
    const bool atEnd = by > 0 ? cursor.IsAfter() : cursor.IsBefore();
    if (atEnd) throw Error(kNoRecord, L"DevPlatform.RecordSet", L"记录集没有当前记录");
    return MoveTo(cursor, cursor.position + by);
  }

  void AddMoves(const std::shared_ptr<Cursor>& cursor) {
    Add(L"MoveFirst", [cursor](Arguments&) { return MoveTo(*cursor, 0); });
    Add(L"MoveLast", [cursor](Arguments&) { return MoveTo(*cursor, cursor->Count() - 1); });
    Add(L"MoveNext", [cursor](Arguments&) { return Step(*cursor, 1); });
    Add(L"MovePrevious", [cursor](Arguments&) { return Step(*cursor, -1); });
    Add(L"Close", [cursor](Arguments&) {
      cursor->rows.cells.clear();
      return MoveTo(*cursor, 0);
    });
  }
};

}  // namespace

ComPtr<IDispatch> MakeRecordSet(Rows rows) { return MakeObject<RecordSet>(std::move(rows)); }

}  // namespace tavio::development
