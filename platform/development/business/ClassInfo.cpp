#include "development/business/ClassInfo.h"

#include "development/business/BillActionTable.h"
#include "development/business/PredefineTable.h"
#include "development/storage/RecordSet.h"
#include "development/storage/Records.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

[[noreturn]] void Unknown(const wchar_t* what, std::int32_t id) {
  throw Error(E_INVALIDARG, L"TavioMClass.ClassInfo", Text(what) + L" " + std::to_wstring(id) + L" 不存在");
}

// Adds a field's record under its key, and the key with its position to its page.
void AddToTableInfo(const Dictionary& info, const Dictionary& field) {
  const Key page(TextAt(field, L"FPage"_key));
  const Key key(TextAt(field, L"FKey"_key));
  if (!info.Lookup(page)) info.Set(page, Dictionary::New());
  const Dictionary fields = PackageAt(info, page);
  fields.Set(key, Value(fields.Count() + 1));
  info.Set(key, field);
}

}  // namespace

ClassInfo::ClassInfo() {
  AddServed(L"GetBillActions", [this](Arguments& a) { return GetBillActions(a); });
  AddServed(L"getpredefineactions", [this](Arguments&) { return ReadPredefineActions(Store()).AsValue(); });
  AddServed(L"GetBillEnvironments", [this](Arguments&) { return GetBillEnvironments(); });
  AddServed(L"GetClassMenu", [this](Arguments&) { return GetClassMenu(); });
  AddServed(L"GetData", [this](Arguments& a) { return GetData(a); });
  AddServed(L"GetClassType", [this](Arguments& a) { return GetClassType(a); });
  AddServed(L"GetTableInfo", [this](Arguments& a) { return GetTableInfo(a); });
  AddServed(L"GetClassTypeEntry", [this](Arguments& a) { return GetClassTypeEntry(a); });
  AddServed(L"GetBillData", [this](Arguments& a) { return GetBillData(a); });
}

Value ClassInfo::GetBillActions(const Arguments& arguments) {
  return BillActionTable(Store(), arguments.At(1).ToInt32()).Load().AsValue();
}

Value ClassInfo::GetBillEnvironments() {
  static constexpr Field kFields[] = {{L"FID"}, {L"FMask"}, {L"FName"}, {L"FBillType"}};
  return ReadRecords(Store(), kFields, L"FROM t_BillEnvironment ORDER BY FIndex").AsValue();
}

Value ClassInfo::GetClassMenu() {
  static constexpr Field kFields[] = {{L"FCode"}, {L"FName"}, {L"FParent"}, {L"FClassTypeID"}};
  return ReadKeyedRecords(Store(), kFields, L"FCode", L"FROM t_ClassMenu ORDER BY FIndex").AsValue();
}

Value ClassInfo::GetData(const Arguments& arguments) {
  return Value(MakeRecordSet(Store().Query(arguments.At(1).ToText())));
}

Value ClassInfo::GetClassType(const Arguments& arguments) {
  const std::int32_t id = arguments.At(1).ToInt32();
  const Value package = Store().FirstCell(L"SELECT FPackage FROM t_ClassType WHERE FID = ?", id);
  if (package.IsEmpty()) Unknown(L"业务对象", id);
  return FromJson(FromColumn(package));
}

Value ClassInfo::GetTableInfo(const Arguments& arguments) {
  static constexpr Field kFields[] = {{L"FKey"},      {L"FCaption"}, {L"FPage"},       {L"FFieldType"}, {L"FEntryType"},
                                      {L"FNeedSave"}, {L"FVisible"}, {L"FLookUpType"}, {L"FFLD"},       {L"FDSP"}};
  const Value id[] = {Value(arguments.At(1).ToInt32())};
  const Vector fields =
      ReadRecords(Store(), kFields, L"FROM t_ClassTableField WHERE FClassTypeID = ? ORDER BY FIndex", id);
  if (fields.Count() == 0) Unknown(L"业务对象", id[0].ToInt32());
  const Dictionary info = Dictionary::New();
  for (const auto& field : Records(fields)) AddToTableInfo(info, field);
  return info.AsValue();
}

Value ClassInfo::GetClassTypeEntry(const Arguments& arguments) {
  static constexpr Field kFields[] = {{L"FIndex"}, {L"FPage"}, {L"FName"}};
  const Value id[] = {Value(arguments.At(1).ToInt32())};
  return ReadRecords(Store(), kFields, L"FROM t_ClassTypeEntry WHERE FClassTypeID = ? ORDER BY FIndex", id).AsValue();
}

Value ClassInfo::GetBillData(const Arguments& arguments) {
  const std::int32_t bill = arguments.At(2).ToInt32();
  const Value package = Store().FirstCell(L"SELECT FPackage FROM t_Bill WHERE FClassTypeID = ? AND FID = ?",
                                          arguments.At(1).ToInt32(), bill);
  if (package.IsEmpty()) Unknown(L"单据", bill);
  return FromJson(FromColumn(package));
}

}  // namespace tavio::development
