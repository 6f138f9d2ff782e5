#include "development/business/BillActionTable.h"

#include <set>

#include "development/business/PredefineTable.h"
#include "development/storage/Storage.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

constexpr std::int32_t kDeleted = 4;
constexpr char kVersion[] = "FVersion";

[[noreturn]] void Refuse(const Text& description) {
  throw Error(E_FAIL, L"TavioMClass.ClassDefineUpdate", description);
}

std::int32_t Number(const Json& record, const char* key, std::int32_t fallback = 0) {
  const auto found = record.find(key);
  if (found == record.end()) return fallback;
  const Value value = FromJson(*found);
  return value.IsEmpty() || value.IsObject() || value.IsNull() ? fallback : value.ToInt32();
}

}  // namespace

// What a collection asks for, read from its packages before the transaction begins.
struct BillActionTable::Plan {
  std::vector<Json> live;
  std::int32_t version = 0;  // 0: nothing was stored when the collection was made
  bool drops = false;

  explicit Plan(const Dictionary& actions);
  void Take(const Json& action);
};

BillActionTable::Plan::Plan(const Dictionary& actions) {
  std::set<std::string> codes;
  for (const auto& entry : Entries(actions)) {
    Json action = ToJson(entry.Stored());
    if (!action.is_object() || !action.contains("FCode")) Refuse(L"操作数据包缺少操作代码");
    Take(action);
    if (Number(action, "FStatus", 1) & kDeleted) continue;
    if (!codes.insert(action["FCode"].dump()).second) Refuse(L"操作代码重复: " + FromJson(action["FCode"]).ToText());
    action.erase(kVersion);
    action.erase("FCode_Old");
    live.push_back(std::move(action));
  }
}

void BillActionTable::Plan::Take(const Json& action) {
  if (Number(action, "FStatus", 1) & kDeleted) drops = true;
  const std::int32_t its = Number(action, kVersion);
  if (its && version && its != version) Refuse(L"操作集合由不同版本的数据组成,请重新加载后再保存");
  if (its) version = its;
}

Dictionary BillActionTable::Load() {
  // One statement: a save of another process between two would mix its actions with the version before it.
  const Rows rows = database_.Query(
      L"SELECT a.FCode, a.FPackage, v.FVersion FROM t_BillAction a "
      L"INNER JOIN t_BillActionVersion v ON v.FClassTypeID = a.FClassTypeID WHERE a.FClassTypeID = ? ORDER BY a.FIndex",
      classTypeId_);
  const Dictionary actions = Dictionary::New();
  for (const auto& row : rows.cells) {
    const Dictionary action(FromJson(FromColumn(row[1])));
    action.Set(L"FVersion"_key, row[2]);
    actions.Set(Key(row[0].ToText()), action);
  }
  return actions;
}

void BillActionTable::Save(const Dictionary& actions, const Dictionary& classType) {
  Plan plan(actions);
  const Json type = classType ? ToJson(classType) : Json::object();
  Transaction transaction(database_);
  RaiseVersion(plan.version);
  if (plan.live.empty() && plan.drops) plan.live = Defaults(BillType(type));
  Replace(plan.live);
  MakeKnown(type);
  transaction.Commit();
}

void BillActionTable::RaiseVersion(std::int32_t from) {
  const auto raised = database_.Execute(
      L"UPDATE t_BillActionVersion SET FVersion = FVersion + 1 WHERE FClassTypeID = ? AND FVersion = ?", classTypeId_,
      from);
  if (raised > 0) return;
  if (from) Refuse(L"该业务对象的操作已被其他用户修改,请重新加载后再保存");
  ReserveIds(database_, L"BillAction", 0);  // first saves one after another: the later one waits here, and then sees it
  const auto begun = database_.Execute(
      L"INSERT INTO t_BillActionVersion (FClassTypeID, FVersion) SELECT ?, 1 "
      L"WHERE NOT EXISTS (SELECT 1 FROM t_BillActionVersion WHERE FClassTypeID = ?)",
      classTypeId_, classTypeId_);
  if (begun == 0) Refuse(L"该业务对象已有保存过的操作,请重新加载后再保存");
}

void BillActionTable::Replace(std::vector<Json>& actions) {
  database_.Execute(
      L"DELETE FROM t_ObjectAccessType WHERE FActionID IN (SELECT FID FROM t_BillAction WHERE FClassTypeID = ?)",
      classTypeId_);
  database_.Execute(L"DELETE FROM t_BillAction WHERE FClassTypeID = ?", classTypeId_);
  std::int32_t index = 0;
  for (Json& action : actions) {
    const std::int32_t stored = Number(action, "FID");
    action["FID"] = stored ? stored : ReserveIds(database_, L"BillAction");
    action["FStatus"] = 0;
    action["FClassTypeID"] = classTypeId_;
    database_.Execute(L"INSERT INTO t_BillAction (FID, FClassTypeID, FIndex, FCode, FPackage) VALUES (?, ?, ?, ?, ?)",
                      Number(action, "FID"), classTypeId_, ++index, FromJson(action["FCode"]), ToColumn(action));
    NoteRights(action);
  }
}

void BillActionTable::NoteRights(const Json& action) {
  const std::int32_t mask = Number(action, "FRightMask");
  if (mask == 0) return;
  const auto name = action.contains("FName") ? FromJson(action["FName"]) : FromJson(action["FCode"]);
  database_.Execute(
      L"INSERT INTO t_ObjectAccessType (FObjectType, FObjectID, FAccessUse, FName, FActionID) VALUES (?, ?, ?, ?, ?)",
      Number(action, "FObjectType"), Number(action, "FObjectID"), mask, name.ToText(), Number(action, "FID"));
}

void BillActionTable::MakeKnown(const Json& classType) {
  if (Number(classType, "FID") != classTypeId_) return;
  database_.Execute(
      L"INSERT INTO t_ClassType (FID, FBillTypeID, FPackage) SELECT ?, ?, ? "
      L"WHERE NOT EXISTS (SELECT 1 FROM t_ClassType WHERE FID = ?)",
      classTypeId_, Number(classType, "FBillTypeID"), ToColumn(classType), classTypeId_);
}

std::int32_t BillActionTable::BillType(const Json& classType) {
  if (classType.contains("FBillTypeID")) return Number(classType, "FBillTypeID");
  return database_.FirstCell(L"SELECT FBillTypeID FROM t_ClassType WHERE FID = ?", classTypeId_).ToInt32();
}

std::vector<Json> BillActionTable::Defaults(std::int32_t billType) {
  std::vector<Json> defaults;
  const Vector catalogue = ReadPredefineActions(database_);
  for (const auto& entry : Records(catalogue)) {
    Json action = ToJson(entry);
    const bool belongs = billType > 0 && billType < 32 && (Number(action, "FBillType") >> (billType - 1) & 1);
    if (!belongs) continue;
    action.erase("FBillType");
    action.update({{"FID", 0}, {"FIsPredefine", true}, {"FIsFirst", false}, {"Messages", {{"$object", 0}}}});
    defaults.push_back(std::move(action));
  }
  return defaults;
}

}  // namespace tavio::development
