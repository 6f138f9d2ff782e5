#include "development/print/NotePrint.h"

#include <algorithm>

#include "development/print/Pdf.h"
#include "development/storage/Files.h"
#include "development/storage/PackageJson.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/InvokeByName.h"

namespace tavio::development {
namespace {

// What a field shows: of a looked-up record the member that the field names for display, else the one it stores.
Text Shown(const Value& held, const Dictionary& field) {
  if (held.IsNull()) return {};
  if (!held.IsObject()) return held.ToText();
  const Dictionary record(held);
  for (const Text& member : {TextAt(field, L"FDSP"_key), TextAt(field, L"FFLD"_key)}) {
    if (record && !member.empty() && record.Lookup(Key(member))) return TextAt(record, Key(member));
  }
  return {};
}

// Whether a template goes by the name in one of its languages.
bool Bears(const Value& type, const Text& name) {
  if (type.IsNull()) return false;
  const Json json = FromColumn(type);
  const auto bears = [&](const auto& entry) {
    return entry.key().starts_with("FName_") && entry.value() == Json(ToUtf8(name));
  };
  const auto& entries = json.items();
  return std::any_of(entries.begin(), entries.end(), bears);
}

// Of several bills, each with the template of its object, the one whose object bears the name.
const Value& Choose(const Rows& bills, const Text& name) {
  if (bills.Count() == 1) return bills.cells[0][0];
  const auto bears = [&](const auto& bill) { return Bears(bill[1], name); };
  const auto found = std::find_if(bills.cells.begin(), bills.cells.end(), bears);
  if (found == bills.cells.end() || std::any_of(found + 1, bills.cells.end(), bears)) {
    throw Error(E_INVALIDARG, L"TavioClassBillPrint.clsNotePrint", L"多个单据的编号相同,无法按名称确定: " + name);
  }
  return (*found)[0];
}

constexpr std::int32_t kUserField = 7;

bool IsRecord(const Value& value) { return value.HoldsObject() && HasMember(value.ToObject().Get(), L"Lookup"); }

}  // namespace

NotePrint::NotePrint() {
  AddKept(L"dataSrv", dataService_);
  AddKept(L"TableInfo", tableInfo_);
  Add(L"CreatePDFFile", [this](Arguments& a) { return CreatePdfFile(a); });
}

Dictionary NotePrint::HeaderOf(const Text& name, std::int32_t bill) {
  if (IsRecord(dataService_)) return PackageAt(Dictionary(dataService_), L"Page1"_key);
  const Rows bills = Store().Query(
      L"SELECT b.FPackage, c.FPackage FROM t_Bill b LEFT JOIN t_ClassType c ON c.FID = b.FClassTypeID WHERE b.FID = ?",
      bill);
  if (bills.IsEmpty()) return {};
  return PackageAt(Dictionary(FromJson(FromColumn(Choose(bills, name)))), L"Page1"_key);
}

// What a field shows; of a user's ID the user's name.
Text NotePrint::ShownWithUser(const Value& held, const Dictionary& field) {
  if (held.Type() != VT_I4 || NumberAt(field, L"FLookUpType"_key, 0) != kUserField) return Shown(held, field);
  const Value name = Store().FirstCell(L"SELECT FName FROM t_User WHERE FUserID = ?", held);
  return (name.IsEmpty() ? held : name).ToText();
}

std::vector<Text> NotePrint::Lines(const Dictionary& header) {
  const Dictionary info(tableInfo_);
  if (!info) throw Error(E_FAIL, L"TavioClassBillPrint.clsNotePrint", L"请先设置字段信息");
  std::vector<Text> lines;
  const Dictionary fields = PackageAt(info, L"Page1"_key);
  if (!fields) return lines;
  for (const auto& entry : Entries(fields)) {
    const Key key{entry.KeyView()};
    const Dictionary field = PackageAt(info, key);
    if (!field || NumberAt(field, L"FVisible"_key, 0) == 0) continue;
    const Text value = header && header.Lookup(key) ? ShownWithUser(*header.Get(key), field) : Text();
    lines.push_back(TextAt(field, L"FCaption"_key) + L": " + value);
  }
  return lines;
}

Value NotePrint::CreatePdfFile(const Arguments& arguments) {
  RequireProperties(arguments.At(2));
  const Text name = arguments.At(0).ToText();
  const std::int32_t bill = arguments.At(1).ToInt32();
  const std::string document = MakePdf(name, Lines(HeaderOf(name, bill)));
  const Text path = FolderWithin(L"print") + AsFileName(name + L"_" + std::to_wstring(bill)) + L".pdf";
  WriteWhole(path, document);
  arguments.Return(0, Value(TextView(path)));
  return Value(true);
}

}  // namespace tavio::development
